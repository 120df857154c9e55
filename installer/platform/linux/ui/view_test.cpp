// Views of the Linux toolkit placed in their parents: frames counted up from the bottom, as
// AppKit counts, flipped for Qt.
#include <gtest/gtest.h>

#include "platform/linux/ui/qt_test_display.h"

namespace {

using namespace platform::ui;
using ViewOnADisplay = testing_support::OnADisplay;

TEST_F(ViewOnADisplay, FramesCountedUpFromTheBottomAreFlippedForQt) {
    auto content = toolkit().makeView(Rect{0, 0, 460, 220});
    const struct {
        Rect frame;
        QRect qt;
    } rows[] = {{{198, 132, 64, 64}, QRect(198, 24, 64, 64)}, {{60, 20, 340, 20}, QRect(60, 180, 340, 20)}};
    for (const auto& row : rows) {
        auto view = toolkit().makeView(row.frame);
        content->addSubview(view);
        EXPECT_EQ(widgetOf(*view)->geometry(), row.qt) << row.frame.y;
    }
}

}  // namespace
