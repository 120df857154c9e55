// The Linux toolkit in this process, on a private X server, for its tests: one X server and one
// QApplication for the whole test program, as Qt allows only one.
#pragma once

#include <gtest/gtest.h>

#include <QWidget>

#include <cstdlib>
#include <string>

#include "platform/linux/ui/view.h"
#include "platform/ui/toolkit.h"
#include "support/virtual_display.h"

namespace testing_support {

class OnADisplay : public testing::Test {
protected:
    void SetUp() override {
        if (std::string why = VirtualDisplay::unavailableReason(); !why.empty()) GTEST_SKIP() << why;
        static VirtualDisplay display;
        ASSERT_TRUE(display.started()) << "Xvfb did not start";
        setenv("DISPLAY", display.name().c_str(), 1);
        setenv("QT_QPA_PLATFORM", "xcb", 1);
        toolkit().sharedApplication();
    }
    static platform::ui::Toolkit& toolkit() { return platform::ui::backendToolkit(); }
    static QWidget* widgetOf(platform::ui::View& view) { return platform::linux_backend::WidgetView::of(view).widget(); }
};

}  // namespace testing_support
