// Foundation as the installer's macOS code sees it: declarations of the macOS 12 API it uses.
#pragma once

#include <dispatch/dispatch.h>

#include <Foundation/NSObjCRuntime.h>
#include <Foundation/NSObject.h>
#include <Foundation/NSString.h>
#include <Foundation/NSArray.h>
#include <Foundation/NSDictionary.h>
#include <Foundation/NSValue.h>
#include <Foundation/NSData.h>
#include <Foundation/NSGeometry.h>
#include <Foundation/NSURL.h>
#include <Foundation/NSError.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSThread.h>
#include <Foundation/NSNotification.h>
#include <Foundation/NSProcessInfo.h>
#include <Foundation/NSBundle.h>
#include <Foundation/NSFileManager.h>
#include <Foundation/NSTask.h>
#include <Foundation/NSAppleScript.h>
