// The installer's window, and closing it during the install, on a real X display, through the shipped entry, delegate,
// Qt toolkit and Qt dispatch (the engine's two operations played by the probe program).
#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QColor>
#include <QImage>

#include <chrono>
#include <filesystem>
#include <thread>

#include "support/command.h"
#include "support/virtual_display.h"
#include "support/x11_windows.h"

namespace {

using namespace testing_support;
using Clock = std::chrono::steady_clock;

constexpr const char* kTitle = "Install Kelvo";

// The probe running on `display`, its output read line by line with the time each line came.
class Probe {
public:
    Probe(const std::string& display, std::vector<std::string> arguments) {
        int out[2];
        if (pipe2(out, O_CLOEXEC) != 0) return;
        arguments.insert(arguments.begin(), INSTALLER_WINDOW_PROBE);
        pid_ = fork();
        if (pid_ == 0) {
            dup2(out[1], 1);
            setenv("DISPLAY", display.c_str(), 1);
            setenv("QT_QPA_PLATFORM", "xcb", 1);
            std::vector<char*> argv;
            for (std::string& argument : arguments) argv.push_back(argument.data());
            argv.push_back(nullptr);
            execv(argv[0], argv.data());
            _exit(127);
        }
        close(out[1]);
        output_ = out[0];
    }

    ~Probe() {
        if (pid_ > 0 && !exited_) kill(pid_, SIGKILL);
        waitForExit(10);
        if (output_ >= 0) close(output_);
    }

    // Waits for the line starting with `event`; the time it came, or none after `timeout` seconds.
    std::optional<Clock::time_point> waitForLine(const std::string& event, double timeout) {
        auto deadline = Clock::now() + std::chrono::duration<double>(timeout);
        while (true) {
            for (auto& [line, when] : lines_) {
                if (line.rfind(event, 0) == 0) return when;
            }
            int left = static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count());
            if (left <= 0 || !readLine(left)) return std::nullopt;
        }
    }

    // Waits for the process to end; its exit status, or none if it did not end in time.
    std::optional<int> waitForExit(double timeout) {
        auto deadline = Clock::now() + std::chrono::duration<double>(timeout);
        while (pid_ > 0 && !exited_) {
            int status = 0;
            if (waitpid(pid_, &status, WNOHANG) == pid_) {
                exited_ = true;
                status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
                break;
            }
            if (Clock::now() > deadline) return std::nullopt;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return status_;
    }

private:
    bool readLine(int timeoutMilliseconds) {
        pollfd ready{output_, POLLIN, 0};
        if (poll(&ready, 1, timeoutMilliseconds) <= 0) return false;
        char c;
        while (read(output_, &c, 1) == 1) {
            if (c == '\n') {
                lines_.push_back({pending_, Clock::now()});
                pending_.clear();
                return true;
            }
            pending_ += c;
        }
        return false;
    }

    pid_t pid_ = -1;
    int output_ = -1;
    bool exited_ = false;
    std::optional<int> status_;
    std::string pending_;
    std::vector<std::pair<std::string, Clock::time_point>> lines_;
};

class InstallerWindow : public testing::Test {
protected:
    void SetUp() override {
        std::string reason = VirtualDisplay::unavailableReason();
        if (!reason.empty()) GTEST_SKIP() << reason;
        display_ = std::make_unique<VirtualDisplay>();
        ASSERT_TRUE(display_->started()) << "Xvfb did not start";
        windows_ = std::make_unique<X11Windows>(display_->name());
        ASSERT_TRUE(windows_->connected());
    }

    std::unique_ptr<VirtualDisplay> display_;
    std::unique_ptr<X11Windows> windows_;
};

// The screenshot cut down to the window's content area.
QImage windowImage(const std::string& display, const WindowGeometry& geometry, const std::string& path) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    runCommand("import -display " + display + " -window root " + shellWord(path + ".screen.png"));
    QImage screen(QString::fromStdString(path + ".screen.png"));
    QImage window = screen.copy(geometry.x, geometry.y, geometry.width, geometry.height);
    window.save(QString::fromStdString(path));
    return window;
}

// How many pixels of `area` differ clearly from `background`.
int markedPixels(const QImage& image, QRect area, QColor background) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            QColor pixel = image.pixelColor(x, y);
            int difference = std::abs(pixel.red() - background.red()) + std::abs(pixel.green() - background.green()) +
                             std::abs(pixel.blue() - background.blue());
            if (difference > 60) ++count;
        }
    }
    return count;
}

TEST_F(InstallerWindow, TheShownWindowHasItsSizePlaceAndLayout) {
    Probe probe(display_->name(), {"--install-seconds", "60"});
    auto window = windows_->waitForWindow(kTitle, 10);
    ASSERT_TRUE(window) << "no window titled " << kTitle;
    WindowGeometry geometry = windows_->geometry(*window);
    EXPECT_EQ(geometry.width, 460);
    EXPECT_EQ(geometry.height, 220);
    EXPECT_EQ(geometry.x, (1280 - 460) / 2) << "not centred horizontally";
    EXPECT_LT(geometry.y, (800 - 220) / 2) << "not above the vertical centre";

    std::this_thread::sleep_for(std::chrono::milliseconds(600));  // let it paint
    QImage image = windowImage(display_->name(), geometry, buildFolder() + "/screenshots/installer_window.png");
    ASSERT_EQ(image.size(), QSize(460, 220));
    QColor background = image.pixelColor(3, 3);

    // Qt rectangles (y down) of the pieces laid out y-up from the bottom-left.
    EXPECT_GT(markedPixels(image, QRect(200, 100, 60, 22), background), 30) << "no title text in the middle";
    EXPECT_EQ(markedPixels(image, QRect(20, 98, 60, 26), background), 0) << "title not centred";
    EXPECT_GT(markedPixels(image, QRect(24, 132, 412, 16), background), 30) << "no status text";
    EXPECT_GT(markedPixels(image, QRect(60, 180, 340, 20), background), 100) << "no bar where it belongs";
    EXPECT_EQ(markedPixels(image, QRect(0, 202, 460, 18), background), 0) << "something below the bar";
    EXPECT_EQ(markedPixels(image, QRect(0, 180, 55, 20), background), 0) << "bar wider than its frame";
    QColor icon = image.pixelColor(198 + 55, 24 + 55);
    EXPECT_GT(icon.blue(), icon.red() + 60) << "no blue icon at the top";
}

TEST_F(InstallerWindow, ClosingTheWindowDuringTheInstallEndsWhenTheInstallReturns) {
    Probe probe(display_->name(), {"--install-seconds", "2"});
    auto window = windows_->waitForWindow(kTitle, 10);
    ASSERT_TRUE(window);
    auto closed = Clock::now();
    windows_->requestClose(*window);
    auto returned = probe.waitForLine("install-returned", 10);
    ASSERT_TRUE(returned);
    auto exited = probe.waitForLine("exit", 5);
    ASSERT_TRUE(exited) << "did not end after the install returned";
    EXPECT_GT(std::chrono::duration<double>(*exited - closed).count(), 1.0) << "ended before the install returned";
    EXPECT_LT(std::chrono::duration<double>(*exited - *returned).count(), 0.5);
    EXPECT_EQ(probe.waitForExit(5), 0);
}

}  // namespace
