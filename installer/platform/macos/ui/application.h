// The application object on AppKit: the shared NSApplication.
//
// AppKit ends the process itself on terminate, through exit(): `run` does not come back then.
// Main thread only.
#pragma once

#include <memory>

#include "platform/ui/application.h"

namespace platform::macos {

// Fetches the shared NSApplication, making it on the first call.
std::unique_ptr<ui::Application> makeApplication();

}  // namespace platform::macos
