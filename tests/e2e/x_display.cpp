#include "x_display.h"

#include <chrono>
#include <thread>
#include <string>

#include "support/command.h"

namespace e2e {
namespace {

constexpr auto kWindowPollInterval = std::chrono::milliseconds(100);

}  // namespace

std::string XDisplay::run(const std::string& command, int* exitStatus) const {
    auto result = testing_support::runCommand("export DISPLAY=" + name() + "; { " + command + "; } 2>/dev/null");
    if (exitStatus) *exitStatus = result.exitStatus;
    return result.output;
}

std::string XDisplay::waitForWindow(const std::string& title, WindowKind kind, double timeoutSeconds,
                                    const std::function<bool()>& worthWaiting) const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(timeoutSeconds);
    const std::string isDialog = "xprop -id $w _NET_WM_WINDOW_TYPE | grep -q _NET_WM_WINDOW_TYPE_DIALOG";
    const std::string search = "for w in $(xdotool search --onlyvisible --name " +
                               testing_support::shellWord("^" + title + "$") + "); do " + isDialog +
                               (kind == WindowKind::Dialog ? " && " : " || ") + "echo $w; done | head -n 1";
    for (;;) {
        std::string output = run(search);
        while (!output.empty() && output.back() == '\n') output.pop_back();
        if (!output.empty() || std::chrono::steady_clock::now() >= deadline || !worthWaiting()) return output;
        std::this_thread::sleep_for(kWindowPollInterval);
    }
}

std::string XDisplay::visibleWindowTitles() const {
    return run("xdotool search --onlyvisible --name . getwindowname %@");
}

bool XDisplay::pressKey(const std::string& window, const std::string& key) const {
    int status = -1;
    run("xdotool windowfocus --sync " + window + " key --clearmodifiers " + testing_support::shellWord(key), &status);
    return status == 0;
}

bool XDisplay::requestClose(const std::string& window) const {
    int status = -1;
    run(testing_support::shellWord(WINDOW_CLOSE_REQUEST) + " " + window, &status);
    return status == 0;
}

bool XDisplay::screenshot(const std::string& path) const {
    int status = -1;
    run("timeout 20 import -window root " + testing_support::shellWord(path), &status);
    return status == 0;
}

}  // namespace e2e
