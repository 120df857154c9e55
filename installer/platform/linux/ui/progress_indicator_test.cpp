// The Linux toolkit's progress bar: indeterminate and animating it is Qt's busy bar, which moves for
// the whole install; a plain range would sit empty and still.
#include <gtest/gtest.h>

#include <QProgressBar>

#include "platform/linux/ui/qt_test_display.h"

namespace {

using namespace platform::ui;
using ProgressBar = testing_support::OnADisplay;

TEST_F(ProgressBar, AnIndeterminateBarIsBusyWhileItAnimates) {
    auto bar = toolkit().makeProgressIndicator();
    auto* qt = static_cast<QProgressBar*>(widgetOf(*bar));
    bar->setStyle(ProgressIndicatorStyle::Bar);
    bar->setIndeterminate(true);
    bar->startAnimation();
    EXPECT_EQ(std::pair(qt->minimum(), qt->maximum()), std::pair(0, 0)) << "busy while it animates";
    bar->stopAnimation();
    EXPECT_EQ(std::pair(qt->value(), qt->maximum() > 0), std::pair(0, true)) << "empty and still once stopped";
}

}  // namespace
