// The Qt toolkit in this process, on a private X server: what it must do that Qt does not do by
// itself the way the installer's window needs it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QTimer>

#include "platform/linux/ui/widget_view.h"
#include "platform/ui/toolkit.h"
#include "support/virtual_display.h"

namespace {

using namespace platform::ui;
using platform::linux_backend::WidgetView;

// One X server and one QApplication for the whole program, as Qt allows only one.
class QtToolkit : public testing::Test {
protected:
    void SetUp() override {
        if (std::string why = testing_support::VirtualDisplay::unavailableReason(); !why.empty()) GTEST_SKIP() << why;
        static testing_support::VirtualDisplay display;
        ASSERT_TRUE(display.started()) << "Xvfb did not start";
        setenv("DISPLAY", display.name().c_str(), 1);
        setenv("QT_QPA_PLATFORM", "xcb", 1);
        toolkit().sharedApplication();
    }
    static Toolkit& toolkit() { return backendToolkit(); }
    static QWidget* widgetOf(View& view) { return WidgetView::of(view).widget(); }
};

TEST_F(QtToolkit, TheStatusLineShowsAtMostThreeLinesTheLastCutWithAnEllipsis) {
    const std::string sentence = "Kelvo could not be copied to the Applications folder because the disk is full. ";
    for (const std::string& text : {std::string("Kelvo was installed, but could not be launched.\nOpen Kelvo."),
                                     sentence + sentence + sentence + sentence}) {
        auto label = toolkit().labelWithString(text);
        label->setFont({12, FontWeight::Regular});
        label->setLineBreakMode(LineBreakMode::ByWordWrapping);
        label->setMaximumNumberOfLines(3);
        label->setFrame(Rect{24, 44, 412, 44});
        QString shown = static_cast<QLabel*>(widgetOf(*label))->text();
        bool cut = text.starts_with(sentence);
        EXPECT_TRUE(cut ? shown.count('\n') == 2 && shown.endsWith(QChar(0x2026)) : shown.toStdString() == text)
            << shown.toStdString();
        EXPECT_EQ(label->stringValue(), text) << "the whole text is kept";
    }
}

TEST_F(QtToolkit, FramesCountedUpFromTheBottomAreFlippedForQt) {
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

TEST_F(QtToolkit, TheAlertIsApplicationModalAndReturnPressesItsFirstButton) {
    auto alert = toolkit().makeAlert();
    alert->addButtonWithTitle("Quit");
    alert->addButtonWithTitle("Other");
    Qt::WindowModality modality = Qt::NonModal;
    QObject scope;
    QTimer::singleShot(300, &scope, [&] {
        QWidget* shown = QApplication::activeModalWidget();
        modality = shown->windowModality();
        QApplication::postEvent(shown, new QKeyEvent(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier));
    });
    EXPECT_EQ(alert->runModal(), kAlertFirstButtonReturn);
    EXPECT_EQ(modality, Qt::ApplicationModal);
}

}  // namespace
