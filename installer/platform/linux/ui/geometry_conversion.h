// From the toolkit-neutral frames (y up from the bottom-left) to Qt's (y down from the top-left),
// and from window style masks to Qt window flags.
#pragma once

#include <QRect>
#include <Qt>

#include "platform/ui/geometry.h"

namespace platform::linux_backend {

// `frame`, given in a parent `parentHeight` points high, as a Qt rectangle in that parent.
QRect qtRectInParent(const ui::Rect& frame, double parentHeight);

// The top-level window flags for a style mask: a title bar with exactly the buttons the mask asks
// for, and no minimise or maximise button.
Qt::WindowFlags windowFlagsForStyleMask(unsigned styleMask);

}  // namespace platform::linux_backend
