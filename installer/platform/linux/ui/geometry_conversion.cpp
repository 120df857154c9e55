#include "platform/linux/ui/geometry_conversion.h"

#include <cmath>

#include "platform/ui/window.h"

namespace platform::linux_backend {
namespace {

int points(double value) { return static_cast<int>(std::lround(value)); }

}  // namespace

QRect qtRectInParent(const ui::Rect& frame, double parentHeight) {
    return QRect(points(frame.x), points(parentHeight - frame.y - frame.height), points(frame.width),
                 points(frame.height));
}

Qt::WindowFlags windowFlagsForStyleMask(unsigned styleMask) {
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint;
    if (styleMask & ui::WindowStyleMaskTitled) flags |= Qt::WindowTitleHint;
    if (styleMask & ui::WindowStyleMaskClosable) flags |= Qt::WindowCloseButtonHint;
    return flags;
}

}  // namespace platform::linux_backend
