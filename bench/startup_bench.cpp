// How long the installer takes from process start to its window on screen, on a private X server.
//   startup_bench [PROGRAM] [RUNS]
// Starts PROGRAM (the built "Install Kelvo" by default, with a destination in a scratch folder and
// no launch, so it changes nothing) RUNS times and, for each, waits for the X server to report its
// window titled "Install Kelvo" mapped. Prints every run and the median; the goal is 300 ms.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <poll.h>

#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "support/virtual_display.h"

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kWindowTitle = "Install Kelvo";
constexpr int kDefaultRuns = 9;
constexpr int kTimeoutMilliseconds = 10000;
constexpr double kGoalMilliseconds = 300;

std::uint32_t atom(xcb_connection_t* connection, const char* name) {
    xcb_intern_atom_reply_t* reply =
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, std::strlen(name), name), nullptr);
    std::uint32_t value = reply ? reply->atom : 0;
    std::free(reply);
    return value;
}

std::string windowTitle(xcb_connection_t* connection, xcb_window_t window) {
    xcb_get_property_reply_t* reply = xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, window, atom(connection, "_NET_WM_NAME"),
                                     atom(connection, "UTF8_STRING"), 0, 256), nullptr);
    if (reply == nullptr) return {};
    std::string title(static_cast<const char*>(xcb_get_property_value(reply)), xcb_get_property_value_length(reply));
    std::free(reply);
    return title;
}

// Waits for the window of that title to be mapped; false on time-out.
bool waitForWindowMapped(xcb_connection_t* connection) {
    auto deadline = Clock::now() + std::chrono::milliseconds(kTimeoutMilliseconds);
    pollfd ready{xcb_get_file_descriptor(connection), POLLIN, 0};
    while (Clock::now() < deadline) {
        while (xcb_generic_event_t* event = xcb_poll_for_event(connection)) {
            bool mapped = (event->response_type & 0x7f) == XCB_MAP_NOTIFY;
            xcb_window_t window = reinterpret_cast<xcb_map_notify_event_t*>(event)->window;
            std::free(event);
            if (mapped && windowTitle(connection, window) == kWindowTitle) return true;
        }
        poll(&ready, 1, 10);
    }
    return false;
}

// Milliseconds from starting `program` to its window mapped; none when it never showed.
std::optional<double> measureOnce(xcb_connection_t* connection, const std::string& program,
                                  const std::string& display) {
    std::string scratch = "/tmp/startup_bench_destination";
    std::vector<std::string> arguments{program, "--dest", scratch, "--no-launch"};
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    setenv("DISPLAY", display.c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);

    auto start = Clock::now();
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    posix_spawn_file_actions_addopen(&quiet, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&quiet, 2, "/dev/null", O_WRONLY, 0);
    pid_t child = -1;
    int failed = posix_spawn(&child, program.c_str(), &quiet, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&quiet);
    if (failed != 0) return std::nullopt;
    bool shown = waitForWindowMapped(connection);
    auto shownAt = Clock::now();
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    if (!shown) return std::nullopt;
    return std::chrono::duration<double, std::milli>(shownAt - start).count();
}

}  // namespace

int main(int argc, char** argv) {
    std::string program = argc > 1 ? argv[1] : INSTALLER_PROGRAM;
    int runs = argc > 2 ? std::atoi(argv[2]) : kDefaultRuns;
    std::string reason = testing_support::VirtualDisplay::unavailableReason();
    if (!reason.empty()) {
        std::printf("startup_bench: skipped: %s\n", reason.c_str());
        return 0;
    }
    testing_support::VirtualDisplay display;
    xcb_connection_t* connection = xcb_connect(display.name().c_str(), nullptr);
    if (!display.started() || xcb_connection_has_error(connection)) {
        std::fprintf(stderr, "startup_bench: no X server\n");
        return 1;
    }
    xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection);

    measureOnce(connection, program, display.name());  // warm the file cache; not counted
    std::vector<double> times;
    for (int run = 1; run <= runs; ++run) {
        std::optional<double> time = measureOnce(connection, program, display.name());
        if (!time) {
            std::fprintf(stderr, "startup_bench: run %d: no window within %d ms\n", run, kTimeoutMilliseconds);
            return 1;
        }
        std::printf("run %d: %.1f ms\n", run, *time);
        times.push_back(*time);
    }
    std::sort(times.begin(), times.end());
    double median = times[times.size() / 2];
    std::printf("startup to window shown: median %.1f ms over %d runs (goal %.0f ms: %s)\n", median, runs,
                kGoalMilliseconds, median <= kGoalMilliseconds ? "met" : "missed");
    xcb_disconnect(connection);
    return 0;
}
