#include "support/virtual_display.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <poll.h>

namespace testing_support {
namespace {

constexpr const char* kServer = "/usr/bin/Xvfb";
constexpr int kStartTimeoutMilliseconds = 10000;

// Reads the display number Xvfb writes to `fd` once it is ready; empty on failure or time-out.
std::string readDisplayNumber(int fd) {
    std::string number;
    pollfd ready{fd, POLLIN, 0};
    while (poll(&ready, 1, kStartTimeoutMilliseconds) > 0) {
        char c;
        if (read(fd, &c, 1) != 1) break;
        if (c == '\n') return number;
        number += c;
    }
    return {};
}

}  // namespace

std::string VirtualDisplay::unavailableReason() {
    if (access(kServer, X_OK) != 0) return std::string(kServer) + " is not installed (package xvfb)";
    return {};
}

VirtualDisplay::VirtualDisplay() {
    if (!unavailableReason().empty()) return;
    int ready[2];
    if (pipe2(ready, O_CLOEXEC) != 0) return;
    server_ = fork();
    if (server_ == 0) {
        dup2(ready[1], 3);  // dup2 clears close-on-exec on the copy
        int null = open("/dev/null", O_RDWR);
        dup2(null, 1);
        dup2(null, 2);
        execl(kServer, kServer, "-displayfd", "3", "-screen", "0", "1280x800x24", "-nolisten", "tcp",
              "-noreset", static_cast<char*>(nullptr));
        _exit(127);
    }
    close(ready[1]);
    std::string number = server_ > 0 ? readDisplayNumber(ready[0]) : std::string();
    close(ready[0]);
    if (!number.empty()) name_ = ":" + number;
}

VirtualDisplay::~VirtualDisplay() {
    if (server_ <= 0) return;
    kill(server_, SIGTERM);
    waitpid(server_, nullptr, 0);
}

}  // namespace testing_support
