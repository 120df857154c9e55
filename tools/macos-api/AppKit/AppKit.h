// AppKit as the installer's macOS code sees it: declarations of the macOS 12 API it uses.
#pragma once

#include <Foundation/Foundation.h>
#include <AppKit/AppKitDefines.h>
#include <AppKit/NSView.h>
#include <AppKit/NSWindow.h>
#include <AppKit/NSFont.h>
#include <AppKit/NSColor.h>
#include <AppKit/NSCell.h>
#include <AppKit/NSControl.h>
#include <AppKit/NSImage.h>
#include <AppKit/NSProgressIndicator.h>
#include <AppKit/NSApplication.h>
#include <AppKit/NSAlert.h>
#include <AppKit/NSWorkspace.h>
