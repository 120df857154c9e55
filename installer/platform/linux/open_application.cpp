#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <thread>

#include "platform/linux/property_list.h"
#include "platform/linux/workspace.h"

extern char** environ;

namespace platform::linux_backend {
namespace {

Error openFailure(const FileURL& url, const std::string& reason) {
    return Error("The application \u201C" + url.lastPathComponent() + "\u201D could not be opened: " +
                 reason);
}

// Starts `executable` as a grandchild in its own session and waits only for the exec to succeed or
// fail. Only async-signal-safe calls run between fork and exec: the process may have threads.
std::optional<int> startDetached(const std::string& executable, const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(executable.c_str()));
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    int report[2];
    if (pipe2(report, O_CLOEXEC) != 0) return errno;
    pid_t child = fork();
    if (child < 0) {
        int error = errno;
        close(report[0]);
        close(report[1]);
        return error;
    }
    if (child == 0) {
        setsid();
        if (fork() != 0) _exit(0);
        // Opened applications start in "/", as they do on macOS: the installer's own working
        // folder may lie on the very volume the app is asked to eject.
        (void)!chdir("/");
        int null = open("/dev/null", O_RDWR);
        if (null >= 0) {
            dup2(null, 0);
            dup2(null, 1);
            dup2(null, 2);
        }
        execve(executable.c_str(), argv.data(), environ);
        int error = errno;
        (void)!write(report[1], &error, sizeof error);
        _exit(127);
    }
    close(report[1]);
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {}
    int error = 0;
    ssize_t count;
    while ((count = read(report[0], &error, sizeof error)) < 0 && errno == EINTR) {}
    close(report[0]);
    if (count == static_cast<ssize_t>(sizeof error)) return error;
    return std::nullopt;
}

}  // namespace

void LinuxWorkspace::openApplication(const FileURL& url, const OpenConfiguration& configuration,
                                     std::function<void(std::optional<Error>)> completion) {
    std::vector<std::string> arguments = configuration.arguments.value_or(std::vector<std::string>{});
    std::thread([url, arguments, completion = std::move(completion)] {
        std::optional<std::string> executableName =
            propertyListString(url.appendingPathComponent("Contents/Info.plist").path(), "CFBundleExecutable");
        if (!executableName || executableName->empty() || executableName->find('/') != std::string::npos) {
            completion(openFailure(url, "its Info.plist names no executable."));
            return;
        }
        std::string executable = url.appendingPathComponent("Contents/MacOS/" + *executableName).path();
        if (std::optional<int> error = startDetached(executable, arguments)) {
            completion(openFailure(url, std::string(std::strerror(*error)) + "."));
            return;
        }
        completion(std::nullopt);
    }).detach();
}

}  // namespace platform::linux_backend
