// The Qt toolkit and the Qt dispatch queues in this process, on a private X server.
#include <gtest/gtest.h>

#include <QApplication>
#include <QEventLoop>
#include <QFontMetrics>
#include <QLabel>
#include <QTimer>

#include <chrono>
#include <future>
#include <thread>

#include "platform/linux/dispatch.h"
#include "platform/linux/ui/qt_label.h"
#include "platform/linux/ui/qt_window.h"
#include "platform/linux/ui/widget_view.h"
#include "platform/ui/toolkit.h"
#include "support/virtual_display.h"

namespace {

using namespace testing_support;
using platform::linux_backend::WidgetView;
using platform::ui::Rect;
using Clock = std::chrono::steady_clock;

// One X server and one QApplication for the whole program, as Qt allows only one.
class QtToolkitTest : public testing::Test {
protected:
    void SetUp() override {
        std::string reason = VirtualDisplay::unavailableReason();
        if (!reason.empty()) GTEST_SKIP() << reason;
        static VirtualDisplay display;
        ASSERT_TRUE(display.started()) << "Xvfb did not start";
        setenv("DISPLAY", display.name().c_str(), 1);
        setenv("QT_QPA_PLATFORM", "xcb", 1);
        platform::ui::backendToolkit().sharedApplication();
    }

    platform::ui::Toolkit& toolkit() { return platform::ui::backendToolkit(); }

    // Runs the event loop until `done` or `seconds` have passed.
    static void runEventsUntil(const std::function<bool()>& done, double seconds = 5) {
        auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
        while (!done() && Clock::now() < deadline) {
            QApplication::processEvents(QEventLoop::AllEvents, 10);
        }
    }
};

TEST_F(QtToolkitTest, TheStatusLineShowsAtMostThreeLinesAndEndsACutOneWithAnEllipsis) {
    struct Row { const char* name; std::string text; int lines; bool cut; };
    std::string sentence = "Kelvo could not be copied to the Applications folder because the disk is full. ";
    const Row rows[] = {
        {"short", "Copying Kelvo to your Applications folder\u2026", 1, false},
        {"line feed", "Kelvo was installed but could not be opened.\nThe file could not be found.", 2, false},
        {"long", sentence + sentence + sentence + sentence + sentence, 3, true},
    };
    for (const Row& row : rows) {
        auto label = toolkit().labelWithString(row.text);
        label->setFont({12, platform::ui::FontWeight::Regular});
        label->setLineBreakMode(platform::ui::LineBreakMode::ByWordWrapping);
        label->setMaximumNumberOfLines(3);
        label->setFrame(Rect{24, 44, 412, 44});
        auto* qtLabel = static_cast<QLabel*>(WidgetView::of(*label).widget());
        QStringList shown = qtLabel->text().split('\n');

        EXPECT_EQ(shown.size(), row.lines) << row.name << ": " << qtLabel->text().toStdString();
        if (row.cut) {
            EXPECT_TRUE(shown.back().endsWith(QChar(0x2026))) << row.name;
        } else {
            EXPECT_EQ(qtLabel->text().toStdString(), row.text) << row.name << ": shown whole";
        }
        for (const QString& line : shown) {
            EXPECT_LE(QFontMetrics(qtLabel->font()).horizontalAdvance(line), 412) << row.name;
        }
        EXPECT_EQ(label->stringValue(), row.text) << row.name << ": the whole text is kept";
    }
}

TEST_F(QtToolkitTest, FramesCountingUpFromTheBottomBecomeQtFramesCountingDown) {
    struct Row { Rect frame; QRect qt; };
    const Row rows[] = {
        {{198, 132, 64, 64}, QRect(198, 24, 64, 64)},
        {{20, 96, 420, 26}, QRect(20, 98, 420, 26)},
        {{24, 44, 412, 44}, QRect(24, 132, 412, 44)},
        {{60, 20, 340, 20}, QRect(60, 180, 340, 20)},
    };
    auto content = toolkit().makeView(Rect{0, 0, 460, 220});
    for (const Row& row : rows) {
        auto view = toolkit().makeView(row.frame);
        content->addSubview(view);
        EXPECT_EQ(WidgetView::of(*view).widget()->geometry(), row.qt)
            << row.frame.x << "," << row.frame.y << "," << row.frame.width << "," << row.frame.height;
    }
}

TEST_F(QtToolkitTest, ATitledClosableWindowHasOnlyACloseButtonAndAFixedSize) {
    auto window = toolkit().makeWindow(Rect{0, 0, 460, 220},
                                       platform::ui::WindowStyleMaskTitled | platform::ui::WindowStyleMaskClosable,
                                       platform::ui::BackingStoreType::Buffered, false);
    window->setTitle("Install Kelvo");
    window->center();
    window->makeKeyAndOrderFront();
    QWidget* widget = static_cast<platform::linux_backend::QtWindow&>(*window).widget();
    Qt::WindowFlags flags = widget->windowFlags();
    EXPECT_TRUE(flags & Qt::WindowTitleHint);
    EXPECT_TRUE(flags & Qt::WindowCloseButtonHint);
    EXPECT_FALSE(flags & Qt::WindowMinimizeButtonHint);
    EXPECT_FALSE(flags & Qt::WindowMaximizeButtonHint);
    EXPECT_EQ(widget->minimumSize(), QSize(460, 220));
    EXPECT_EQ(widget->maximumSize(), QSize(460, 220));
    EXPECT_TRUE(widget->isVisible());
    EXPECT_EQ(widget->windowTitle(), "Install Kelvo");
}

TEST_F(QtToolkitTest, MainQueueTasksRunOnTheMainThreadInSubmissionOrder) {
    platform::linux_backend::LinuxDispatch dispatch;
    std::vector<int> order;
    bool offMain = false;
    auto mainThread = std::this_thread::get_id();
    constexpr int kTasks = 200;
    std::thread submitter([&] {
        for (int index = 0; index < kTasks; ++index) {
            dispatch.mainAsync([&, index] {
                offMain |= std::this_thread::get_id() != mainThread;
                order.push_back(index);
            });
        }
    });
    submitter.join();
    runEventsUntil([&] { return order.size() == kTasks; });
    ASSERT_EQ(order.size(), static_cast<std::size_t>(kTasks));
    for (int index = 0; index < kTasks; ++index) ASSERT_EQ(order[index], index);
    EXPECT_FALSE(offMain);
}

TEST_F(QtToolkitTest, DelayedTasksKeepTheDeadlineTakenAtSubmission) {
    platform::linux_backend::LinuxDispatch dispatch;
    std::optional<Clock::time_point> ran;
    auto submitted = Clock::now();
    std::thread([&] { dispatch.mainAsyncAfter(std::chrono::duration<double>(0.3), [&] { ran = Clock::now(); }); }).join();
    std::this_thread::sleep_for(std::chrono::milliseconds(200));  // the main thread is busy meanwhile
    runEventsUntil([&] { return ran.has_value(); });
    ASSERT_TRUE(ran);
    double seconds = std::chrono::duration<double>(*ran - submitted).count();
    EXPECT_GE(seconds, 0.3);
    EXPECT_LT(seconds, 0.45) << "the deadline was taken when the main thread got to it";
}

TEST_F(QtToolkitTest, TheGlobalQueueRunsOnAnotherThreadAndReturnsAtOnce) {
    platform::linux_backend::LinuxDispatch dispatch;
    std::promise<std::thread::id> where;
    std::promise<void> release;
    dispatch.globalUserInitiatedAsync([&] {
        release.get_future().wait();
        where.set_value(std::this_thread::get_id());
    });
    release.set_value();  // reached only because the call did not wait for the task
    EXPECT_NE(where.get_future().get(), std::this_thread::get_id());
}

}  // namespace
