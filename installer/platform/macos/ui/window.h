// Windows on AppKit: an NSWindow made with the content rectangle, the style mask (bit for bit by
// name), the backing and the deferral it is given.
//
// A new window belongs to its wrapper, whatever AppKit's own default. With
// setReleasedWhenClosed(true) it belongs to AppKit's closing instead, which frees it: once closed,
// such a window is gone and only the wrapper's destruction remains. Main thread only.
#pragma once

#include <memory>

#include "platform/ui/window.h"

namespace platform::macos {

std::shared_ptr<ui::Window> makeWindow(const ui::Rect& contentRect, unsigned styleMask,
                                       ui::BackingStoreType backing, bool defer);

}  // namespace platform::macos
