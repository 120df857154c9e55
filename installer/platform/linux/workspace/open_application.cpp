#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

#include "platform/linux/property_list.h"
#include "platform/posix/descriptor.h"
#include "platform/linux/workspace.h"

extern char** environ;

namespace platform::linux_backend {
namespace {

// How far to look for open descriptors when their number is not limited.
constexpr int kDescriptorsWithoutLimit = 1 << 16;

Expected<void, Error> openFailure(const FileURL& url, const std::string& reason) {
    return Expected<void, Error>::failure(
        Error("The application " + quoted(url.lastPathComponent()) + " could not be opened: " + reason));
}

// Ends this child after sending the parent the error number that stopped the start.
[[noreturn]] void reportFailure(int report, int error) {
    (void)!write(report, &error, sizeof error);
    _exit(127);
}

// Marks every descriptor from `first` on to be closed by exec: one call on kernels that have
// close_range, one per possible descriptor on older ones.
void closeOnExecFrom(int first) {
    if (close_range(static_cast<unsigned>(first), ~0U, CLOSE_RANGE_CLOEXEC) == 0) return;
    rlimit limit{};
    int end = getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY
                  ? static_cast<int>(limit.rlim_cur) : kDescriptorsWithoutLimit;
    for (int fd = first; fd < end; ++fd) fcntl(fd, F_SETFD, FD_CLOEXEC);
}

// The app gets standard input, output and error on /dev/null and no other descriptor of the
// installer's: one open on the installer's disk image would keep Kelvo from ejecting it. The
// others are closed by the exec itself, so `report` stays usable until then.
void keepOnlyStandardStreams() {
    int null = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (int stream = 0; stream <= 2 && null >= 0; ++stream) {
        if (stream == null) {
            fcntl(stream, F_SETFD, 0);
        } else {
            dup2(null, stream);
        }
    }
    closeOnExecFrom(3);
}

// Every signal handled the default way and none blocked, as an app the system launches starts: an
// installer started under nohup, or with a signal blocked, must not pass that on to Kelvo, which the
// next install could then no longer ask to quit.
void defaultSignalHandling() {
    struct sigaction byDefault {};
    byDefault.sa_handler = SIG_DFL;
    sigemptyset(&byDefault.sa_mask);
    for (int signal = 1; signal < NSIG; ++signal) sigaction(signal, &byDefault, nullptr);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

// The grandchild's part: in a session of its own, in "/", with only the standard streams and the
// default signal handling, the program replaces it. Only async-signal-safe calls: the installer may
// have threads.
[[noreturn]] void becomeApplication(const std::string& executable, char* const* argv, int report) {
    // Opened applications start in "/", as they do on macOS: the installer's own working
    // folder may lie on the very volume the app is asked to eject.
    (void)!chdir("/");
    keepOnlyStandardStreams();
    defaultSignalHandling();
    execve(executable.c_str(), argv, environ);
    reportFailure(report, errno);
}

// Starts `executable` as a grandchild in its own session and waits only for the exec to succeed or
// fail; a failure carries the error number that stopped it.
Expected<void, Error> startDetached(const std::string& executable, const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(executable.c_str()));
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return errorNumberFailure(errno);
    posix::Descriptor fromChild(ends[0]), toParent(ends[1]);
    pid_t child = fork();
    if (child < 0) return errorNumberFailure(errno);
    if (child == 0) {
        // Above the standard streams, which the grandchild replaces.
        int report = toParent.get() > 2 ? toParent.get() : fcntl(toParent.get(), F_DUPFD_CLOEXEC, 3);
        setsid();
        pid_t grandchild = fork();
        if (grandchild < 0) reportFailure(report, errno);
        if (grandchild > 0) _exit(0);
        becomeApplication(executable, argv.data(), report);
    }
    toParent = posix::Descriptor();
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {}
    int error = 0;
    ssize_t count;
    while ((count = read(fromChild.get(), &error, sizeof error)) < 0 && errno == EINTR) {}
    if (count == static_cast<ssize_t>(sizeof error)) return errorNumberFailure(error);
    return {};
}

}  // namespace

void LinuxWorkspace::openApplication(const FileURL& url, const OpenConfiguration& configuration,
                                     OpenCompletion completion) {
    std::vector<std::string> arguments = configuration.arguments.value_or(std::vector<std::string>{});
    std::thread([url, arguments, completion = std::move(completion)] {
        std::optional<std::string> executableName =
            propertyListString(url.appendingPathComponent("Contents/Info.plist").path(), "CFBundleExecutable");
        if (!executableName || executableName->empty() || executableName->find('/') != std::string::npos) {
            completion(openFailure(url, "its Info.plist names no executable."));
            return;
        }
        std::string executable = url.appendingPathComponent("Contents/MacOS/" + *executableName).path();
        if (auto started = startDetached(executable, arguments); !started) {
            completion(openFailure(url, started.error().localizedDescription() + "."));
            return;
        }
        completion({});
    }).detach();
}

}  // namespace platform::linux_backend
