// Alerts on AppKit: an NSAlert, run application-modally.
#pragma once

#include <memory>

#include "platform/ui/alert.h"

namespace platform::macos {

// A warning alert with no text and no button yet.
std::shared_ptr<ui::Alert> makeAlert();

}  // namespace platform::macos
