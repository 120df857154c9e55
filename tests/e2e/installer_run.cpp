#include "installer_run.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "support/launch_records.h"
#include "support/temp_folder.h"

extern char** environ;

namespace e2e {
namespace {

constexpr auto kPollInterval = std::chrono::milliseconds(10);
constexpr double kKelvoStopTimeout = 5.0;

// Run by /bin/sh inside the new mount namespace: a scratch /Volumes, so that nothing is mounted in
// the machine's own folders, with the image mounted in it; then the installer in this process.
constexpr const char* kFromDiskImageScript = R"(set -e
image=$1 volume=$2; shift 2
mount -t tmpfs -o mode=0755,size=1m volumes /Volumes
mkdir "/Volumes/$volume"
mount -o loop,ro "$image" "/Volumes/$volume"
exec "/Volumes/$volume/Install Kelvo.app/Contents/MacOS/Install Kelvo" "$@"
)";

pid_t spawn(const std::vector<std::string>& command, const std::string& display, const std::string& log) {
    std::vector<std::string> environment;
    for (char** entry = environ; *entry; ++entry) {
        if (std::string(*entry).rfind("DISPLAY=", 0) != 0) environment.emplace_back(*entry);
    }
    environment.push_back("DISPLAY=" + display);
    std::vector<char*> argv, envp;
    for (const std::string& word : command) argv.push_back(const_cast<char*>(word.c_str()));
    for (const std::string& entry : environment) envp.push_back(const_cast<char*>(entry.c_str()));
    argv.push_back(nullptr);
    envp.push_back(nullptr);
    pid_t pid = fork();
    if (pid == 0) {
        int output = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
        dup2(output, 1);
        dup2(output, 2);
        execve(argv[0], argv.data(), envp.data());
        _exit(127);
    }
    return pid;
}

bool reapWithin(pid_t pid, double timeoutSeconds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(timeoutSeconds);
    while (std::chrono::steady_clock::now() < deadline) {
        pid_t reaped = waitpid(pid, nullptr, WNOHANG);
        // ECHILD while the process still exists: it has not been re-parented to us yet.
        if (reaped == pid || (reaped < 0 && errno == ECHILD && kill(pid, 0) != 0)) return true;
        std::this_thread::sleep_for(kPollInterval);
    }
    return false;
}

}  // namespace

double monotonicNow() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

bool becomeSubreaper() { return prctl(PR_SET_CHILD_SUBREAPER, 1) == 0; }

InstallerRun InstallerRun::fromDiskImage(const std::string& image, const std::string& volume,
                                         const std::string& display, const std::vector<std::string>& arguments,
                                         const std::string& log) {
    std::vector<std::string> command{"/usr/bin/unshare", "-m", "--propagation", "private", "/bin/sh",
                                     "-c", kFromDiskImageScript, "sh", image, volume};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return InstallerRun(spawn(command, display, log));
}

InstallerRun InstallerRun::fromBundle(const std::string& bundle, const std::string& display,
                                      const std::vector<std::string>& arguments, const std::string& log) {
    std::vector<std::string> command{bundle + "/Contents/MacOS/Install Kelvo"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return InstallerRun(spawn(command, display, log));
}

InstallerRun::InstallerRun(InstallerRun&& other) noexcept
    : pid_(other.pid_), ended_(other.ended_), exitStatus_(other.exitStatus_), endedAt_(other.endedAt_) {
    other.pid_ = -1;
}

InstallerRun::~InstallerRun() {
    if (pid_ <= 0 || ended_) return;
    kill(pid_, SIGKILL);
    while (waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {}
}

std::optional<double> InstallerRun::waitForExit(double timeoutSeconds) {
    const double deadline = monotonicNow() + timeoutSeconds;
    while (pid_ > 0 && !ended_) {
        int status = 0;
        if (waitpid(pid_, &status, WNOHANG) == pid_) {
            ended_ = true;
            endedAt_ = monotonicNow();
            exitStatus_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            break;
        }
        if (monotonicNow() >= deadline) return std::nullopt;
        std::this_thread::sleep_for(kPollInterval);
    }
    if (!ended_) return std::nullopt;
    return endedAt_;
}

void stopRecordedKelvos(const std::string& record) {
    for (const auto& started : testing_support::eventsNamed(testing_support::readLaunchEvents(record), "started")) {
        pid_t pid = started.pid();
        if (pid <= 0) continue;
        kill(pid, SIGTERM);
        if (!reapWithin(pid, kKelvoStopTimeout)) {
            kill(pid, SIGKILL);
            reapWithin(pid, kKelvoStopTimeout);
        }
    }
}

bool isMountedFor(pid_t pid, const std::string& mountPoint) {
    // Mount points in mountinfo have their spaces written as \040.
    std::string escaped;
    for (char c : mountPoint) escaped += c == ' ' ? std::string("\\040") : std::string(1, c);
    std::string table = testing_support::readFile("/proc/" + std::to_string(pid) + "/mountinfo");
    return table.find(" " + escaped + " ") != std::string::npos;
}

}  // namespace e2e
