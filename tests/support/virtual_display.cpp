#include "support/virtual_display.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/command.h"

namespace testing_support {
namespace {

constexpr const char* kServer = "/usr/bin/Xvfb";
constexpr const char* kWindowTool = "/usr/bin/xdotool";
constexpr int kStartTimeoutMilliseconds = 10000;

// The display number Xvfb writes to `fd` once it is ready; empty on failure or time-out.
std::string readDisplayNumber(int fd) {
    std::string number;
    pollfd ready{fd, POLLIN, 0};
    for (char c; poll(&ready, 1, kStartTimeoutMilliseconds) > 0 && read(fd, &c, 1) == 1;) {
        if (c == '\n') return number;
        number += c;
    }
    return {};
}

}  // namespace

std::string VirtualDisplay::unavailableReason() {
    for (const char* program : {kServer, kWindowTool}) {
        if (access(program, X_OK) != 0) return std::string(program) + " is not installed";
    }
    return {};
}

VirtualDisplay::VirtualDisplay() {
    int ready[2];
    if (!unavailableReason().empty() || pipe2(ready, O_CLOEXEC) != 0) return;
    server_ = fork();
    if (server_ == 0) {
        dup2(ready[1], 3);  // the copy is not closed on exec
        int null = open("/dev/null", O_RDWR);
        dup2(null, 1);
        dup2(null, 2);
        execl(kServer, kServer, "-displayfd", "3", "-screen", "0", "1280x800x24", "-nolisten", "tcp", nullptr);
        _exit(127);
    }
    close(ready[1]);
    std::string number = server_ > 0 ? readDisplayNumber(ready[0]) : "";
    close(ready[0]);
    if (!number.empty()) name_ = ":" + number;
}

VirtualDisplay::~VirtualDisplay() {
    if (server_ <= 0) return;
    kill(server_, SIGTERM);
    waitpid(server_, nullptr, 0);
}

std::string VirtualDisplay::waitForWindow(const std::string& title, int seconds) const {
    std::string found = runCommand("DISPLAY=" + name_ + " timeout " + std::to_string(seconds) + " " + kWindowTool +
                                   " search --sync --onlyvisible --name " + shellWord("^" + title + "$") +
                                   " 2>/dev/null | head -n 1").output;
    return found.substr(0, found.find('\n'));
}

bool VirtualDisplay::pressKey(const std::string& window, const std::string& key) const {
    return runCommand("DISPLAY=" + name_ + " " + kWindowTool + " windowfocus --sync " + window +
                      " key --clearmodifiers " + shellWord(key)).exitStatus == 0;
}

}  // namespace testing_support
