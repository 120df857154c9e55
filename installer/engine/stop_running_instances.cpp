// Stopping running copies of Kelvo: ask, wait, force, wait, and give up if any are left.
#include <cerrno>

#include "engine/installer.h"
#include "platform/services.h"

namespace engine {
namespace {

using Seconds = platform::Clock::Seconds;

constexpr double kFirstWait = 2.0;    // seconds after asking the copies to quit
constexpr double kSecondWait = 1.0;   // seconds after forcing them
constexpr Seconds kPollInterval{0.1};

// Signal numbers, the same on every platform the installer runs on.
constexpr int kTerminateSignal = 15;  // SIGTERM
constexpr int kKillSignal = 9;        // SIGKILL
constexpr int kProbeSignal = 0;       // delivers nothing; tests that the process exists

// Only "no such process" means a process has gone: a process of another user (EPERM) is there.
bool hasExited(std::int32_t pid) {
    auto probe = platform::processSignals().kill(pid, kProbeSignal);
    return !probe && probe.error().errorNumber() == ESRCH;
}

bool allHaveExited(const ProcessIdentifiers& pids) {
    for (std::int32_t pid : pids) {
        if (!hasExited(pid)) return false;
    }
    return true;
}

void askToQuit(const ProcessIdentifiers& pids) {
    for (std::int32_t pid : pids) {
        auto application = platform::workspace().runningApplicationWithProcessIdentifier(pid);
        if (application && application->terminate()) continue;
        (void)platform::processSignals().kill(pid, kTerminateSignal);  // the next listing decides
    }
}

void forceToQuit(const ProcessIdentifiers& pids) {
    for (std::int32_t pid : pids) {
        if (auto application = platform::workspace().runningApplicationWithProcessIdentifier(pid)) {
            application->forceTerminate();
        }
        if (hasExited(pid)) continue;
        (void)platform::processSignals().kill(pid, kKillSignal);
    }
}

}  // namespace

platform::Expected<void, InstallError> Installer::stopRunningInstances() const {
    using Result = platform::Expected<void, InstallError>;

    auto first = runningKelvoProcessIdentifiers();
    if (!first) return Result::failure(std::move(first).error());
    if (first.value().empty()) return {};
    askToQuit(first.value());
    waitForProcessesToExit(first.value(), kFirstWait);

    auto second = runningKelvoProcessIdentifiers();
    if (!second) return Result::failure(std::move(second).error());
    if (second.value().empty()) return {};
    forceToQuit(second.value());
    waitForProcessesToExit(second.value(), kSecondWait);

    auto third = runningKelvoProcessIdentifiers();
    if (!third) return Result::failure(std::move(third).error());
    if (third.value().empty()) return {};
    return Result::failure(InstallError::runningKelvoProcesses(std::move(third).value()));
}

bool Installer::waitForProcessesToExit(const ProcessIdentifiers& pids, double timeout) const {
    platform::Clock& clock = platform::clock();
    const auto deadline =
        clock.now() + std::chrono::duration_cast<std::chrono::system_clock::duration>(Seconds(timeout));
    if (clock.now() < deadline) {
        for (;;) {
            if (allHaveExited(pids)) return true;
            clock.sleepFor(kPollInterval);
            if (!(clock.now() < deadline)) break;
        }
    }
    return allHaveExited(pids);
}

}  // namespace engine
