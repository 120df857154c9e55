// Frames counted up from the bottom-left corner, as AppKit counts, turned into Qt's from the top.
#include "platform/linux/ui/geometry_conversion.h"

#include <gtest/gtest.h>

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

}  // namespace
