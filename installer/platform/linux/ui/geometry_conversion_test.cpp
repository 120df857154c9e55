// Frames counted up from the bottom-left corner, as AppKit counts, turned into Qt's from the top,
// and the title bar a style mask asks for.
#include "platform/linux/ui/geometry_conversion.h"

#include <gtest/gtest.h>

#include "platform/ui/window.h"

namespace {

using namespace platform::ui;
using namespace platform::linux_backend;

TEST(GeometryConversion, FramesAreFlippedAgainstTheirParentsHeight) {
    const struct {
        Rect frame;
        double parentHeight;
        QRect qt;
    } rows[] = {
        {{198, 132, 64, 64}, 220, QRect(198, 24, 64, 64)},
        {{60, 20, 340, 20}, 220, QRect(60, 180, 340, 20)},
        {{0, 0, 460, 220}, 220, QRect(0, 0, 460, 220)},
        {{10.4, 10.6, 20.5, 19.5}, 100, QRect(10, 70, 21, 20)},  // rounded to whole points
    };
    for (const auto& row : rows) EXPECT_EQ(qtRectInParent(row.frame, row.parentHeight), row.qt) << row.frame.y;
}

TEST(GeometryConversion, TheTitleBarHasTheButtonsTheStyleMaskAsksForAndNoOther) {
    const Qt::WindowFlags base = Qt::Window | Qt::CustomizeWindowHint;
    EXPECT_EQ(windowFlagsForStyleMask(WindowStyleMaskTitled | WindowStyleMaskClosable),
              base | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    EXPECT_EQ(windowFlagsForStyleMask(WindowStyleMaskTitled), base | Qt::WindowTitleHint);
}

}  // namespace
