// Progress indicators on AppKit: an NSProgressIndicator.
#pragma once

#include <memory>

#include "platform/ui/progress_indicator.h"

namespace platform::macos {

// A determinate bar with an empty frame.
std::shared_ptr<ui::ProgressIndicator> makeProgressIndicator();

}  // namespace platform::macos
