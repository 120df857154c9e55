// The application object on AppKit: the shared NSApplication.
//
// AppKit ends the process itself once a terminate is agreed to: `run` does not come back then, and
// the process exits from within terminate (or from within the reply that agrees to a terminate left
// pending). Main thread only.
#pragma once

#include <memory>

#include "platform/ui/application.h"

namespace platform::macos {

// Fetches the shared NSApplication, making it on the first call.
std::unique_ptr<ui::Application> makeApplication();

}  // namespace platform::macos
