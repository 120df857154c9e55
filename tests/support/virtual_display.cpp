#include "support/virtual_display.h"

#include <X11/Xlib.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "support/command.h"

namespace testing_support {
namespace {

constexpr const char* kServer = "/usr/bin/Xvfb";
constexpr const char* kWindowTool = "/usr/bin/xdotool";

}  // namespace

std::string VirtualDisplay::unavailableReason() {
    for (const char* program : {kServer, kWindowTool}) {
        if (access(program, X_OK) != 0) return std::string(program) + " is not installed";
    }
    return {};
}

VirtualDisplay::VirtualDisplay() {
    if (!unavailableReason().empty()) return;
    // Xvfb picks a free display and writes its number once it takes clients.
    std::string number = ready_ / "display";
    server_ = std::atoi(runCommand(std::string(kServer) + " -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>" +
                                   shellWord(number) + " >/dev/null 2>&1 & echo $!").output.c_str());
    for (int tries = 0; tries < 500 && readFile(number).find('\n') == std::string::npos; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    std::string written = readFile(number);
    if (written.find('\n') != std::string::npos) name_ = ":" + written.substr(0, written.find('\n'));
}

VirtualDisplay::~VirtualDisplay() {
    if (server_ > 0) kill(server_, SIGTERM);
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

bool VirtualDisplay::closeWindow(const std::string& window) const {
    Display* display = XOpenDisplay(name_.c_str());
    if (display == nullptr) return false;
    XEvent close{};
    close.xclient.type = ClientMessage;
    close.xclient.window = std::stoul(window);
    close.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    close.xclient.format = 32;
    close.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    close.xclient.data.l[1] = CurrentTime;
    bool sent = XSendEvent(display, close.xclient.window, False, NoEventMask, &close) != 0;
    XCloseDisplay(display);
    return sent;
}

}  // namespace testing_support
