#include "platform/linux/workspace/running_application.h"

#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <future>
#include <system_error>
#include <thread>

#include "platform/linux/bundle_layout.h"
#include "platform/linux/workspace/proc_entries.h"
#include "platform/linux/property_list.h"

namespace platform::linux_backend {
namespace {

constexpr const char* kBundleIdentifierKey = "CFBundleIdentifier";
// How long a scan waits for one bundle's Info.plist. A local file takes milliseconds; a bundle on
// a network mount whose server has stopped answering would take for ever.
constexpr std::chrono::milliseconds kInfoPlistReadLimit{500};

// Called through syscall(2): the C library's own declarations of these two lack C linkage in
// this release, so C++ code cannot link against them.
int openProcess(std::int32_t pid) { return static_cast<int>(syscall(SYS_pidfd_open, pid, 0)); }
int signalProcess(int process, int signal) {
    return static_cast<int>(syscall(SYS_pidfd_send_signal, process, signal, nullptr, 0));
}

bool isZombieOrDead(char state) { return state == 'Z' || state == 'X'; }

// A read from a stalled mount waits in the kernel, and nothing can cut it short: it runs on a thread
// of its own, which is left behind when it takes too long and ends whenever the mount answers.
// Neither a late answer nor a thread that cannot be started holds up the scan: both mean none.
std::optional<std::string> bundleIdentifierWithinLimit(const std::string& bundlePath) {
    std::packaged_task<std::optional<std::string>()> read([infoPlist = bundlePath + "/Contents/Info.plist"] {
        return propertyListString(infoPlist, kBundleIdentifierKey);
    });
    std::future<std::optional<std::string>> identifier = read.get_future();
    try {
        std::thread(std::move(read)).detach();
    } catch (const std::system_error&) {
        return std::nullopt;
    }
    if (identifier.wait_for(kInfoPlistReadLimit) != std::future_status::ready) return std::nullopt;
    return identifier.get();
}

std::optional<std::string> bundleIdentifierOf(const std::string& bundlePath, BundleIdentifierCache& cache) {
    auto known = cache.find(bundlePath);
    if (known != cache.end()) return known->second;
    std::optional<std::string> identifier = bundleIdentifierWithinLimit(bundlePath);
    cache.emplace(bundlePath, identifier);
    return identifier;
}

}  // namespace

LinuxRunningApplication::LinuxRunningApplication(std::int32_t pid, std::uint64_t startTime,
                                                 std::string executablePath,
                                                 std::optional<std::string> bundleIdentifier)
    : pid_(pid),
      startTime_(startTime),
      executablePath_(std::move(executablePath)),
      bundleIdentifier_(std::move(bundleIdentifier)) {}

bool LinuxRunningApplication::isTerminated() const {
    std::optional<ProcessState> state = readProcessState(pid_);
    return !state || state->startTime != startTime_ || isZombieOrDead(state->state);
}

std::optional<FileURL> LinuxRunningApplication::executableURL() const {
    return FileURL::fileURLWithPath(executablePath_);
}

bool LinuxRunningApplication::terminate() { return sendSignal(SIGTERM); }

bool LinuxRunningApplication::forceTerminate() { return sendSignal(SIGKILL); }

// A pidfd pins the process that holds the identifier when it is opened; checking the start time
// after opening it proves that this is still the process the handle was made for, so the signal
// cannot reach a newcomer that took over the identifier.
bool LinuxRunningApplication::sendSignal(int signal) const {
    int process = openProcess(pid_);
    if (process < 0) return false;
    std::optional<ProcessState> state = readProcessState(pid_);
    bool delivered = state && state->startTime == startTime_ &&
                     signalProcess(process, signal) == 0;
    close(process);
    return delivered;
}

std::shared_ptr<RunningApplication> inspectRunningApplication(std::int32_t pid, std::uint32_t userId,
                                                              BundleIdentifierCache& cache) {
    // Cheapest test first: most processes are not in a bundle and cost one readlink.
    std::optional<std::string> executable = readExecutablePath(pid);
    if (!executable) return nullptr;
    std::optional<std::string> bundle = bundlePathForExecutable(*executable);
    if (!bundle) return nullptr;
    std::optional<ProcessOwner> owner = readProcessOwner(pid);
    if (!owner || owner->threadGroup != pid || owner->realUserId != userId) return nullptr;
    std::optional<ProcessState> state = readProcessState(pid);
    if (!state || isZombieOrDead(state->state)) return nullptr;
    return std::make_shared<LinuxRunningApplication>(pid, state->startTime, std::move(*executable),
                                                     bundleIdentifierOf(*bundle, cache));
}

}  // namespace platform::linux_backend
