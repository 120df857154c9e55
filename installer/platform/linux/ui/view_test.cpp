// Views of the Linux toolkit placed in their parents: frames counted up from the bottom, as
// AppKit counts, flipped for Qt.
#include <gtest/gtest.h>

#include "platform/linux/ui/qt_test_display.h"

namespace {

using namespace platform::ui;
using ViewOnADisplay = testing_support::OnADisplay;

// The conversion itself is geometry_conversion_test.cpp's; here, that a view is placed against its
// parent's height.
TEST_F(ViewOnADisplay, FramesCountedUpFromTheBottomAreFlippedForQt) {
    auto content = toolkit().makeView(Rect{0, 0, 460, 220});
    auto view = toolkit().makeView(Rect{60, 20, 340, 20});
    content->addSubview(view);
    EXPECT_EQ(widgetOf(*view)->geometry(), QRect(60, 180, 340, 20));
}

}  // namespace
