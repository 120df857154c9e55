#include "platform/linux/child_processes.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/descriptor.h"

extern char** environ;

namespace platform::linux_backend {
namespace {

using posix::Descriptor;

constexpr std::size_t kReadChunk = 64 * 1024;
constexpr int kFirstUninheritedDescriptor = 3;

Error startFailure(const std::string& executable, int error) {
    return Error("The program " + quoted(executable) + " could not be started: " +
                 errorNumberText(error) + ".");
}

// A pipe whose two ends close themselves on exec; the child gets its write end through dup2,
// which clears that flag on the copy only.
struct Pipe {
    Descriptor read;
    Descriptor write;

    int open() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) return errno;
        read = Descriptor(ends[0]);
        write = Descriptor(ends[1]);
        return 0;
    }
};

// Reads both pipes until both are at end of file, whichever the child writes to first.
void drain(Pipe& output, Pipe& error, std::string& outputText, std::string& errorText) {
    char buffer[kReadChunk];
    pollfd watched[2] = {{output.read.get(), POLLIN, 0}, {error.read.get(), POLLIN, 0}};
    std::string* texts[2] = {&outputText, &errorText};
    int open = 2;
    while (open > 0) {
        if (poll(watched, 2, -1) < 0) {
            if (errno == EINTR) continue;
            return;
        }
        for (int i = 0; i < 2; ++i) {
            if (watched[i].fd < 0 || watched[i].revents == 0) continue;
            ssize_t count = read(watched[i].fd, buffer, sizeof buffer);
            if (count > 0) {
                texts[i]->append(buffer, static_cast<std::size_t>(count));
            } else if (count == 0 || errno != EINTR) {
                watched[i].fd = -1;  // poll ignores negative descriptors
                --open;
            }
        }
    }
}

std::int32_t terminationStatusOf(int status) {
    if (WIFSIGNALED(status)) return WTERMSIG(status);
    return WEXITSTATUS(status);
}

// Every signal handled the default way and none blocked, whatever the installer was started with:
// pgrep and the shell of the privileged command must be able to stop and to be stopped.
int setDefaultSignalHandling(posix_spawnattr_t& attributes) {
    sigset_t all, none;
    sigfillset(&all);
    sigemptyset(&none);
    int failed = posix_spawnattr_setsigdefault(&attributes, &all);
    if (!failed) failed = posix_spawnattr_setsigmask(&attributes, &none);
    if (!failed) failed = posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    return failed;
}

int spawn(pid_t& child, const std::string& executable, const std::vector<std::string>& arguments,
          const Pipe& output, const Pipe& error) {
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(executable.c_str()));
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    posix_spawnattr_t attributes;
    if (int failed = posix_spawnattr_init(&attributes)) return failed;
    posix_spawn_file_actions_t actions;
    int failed = posix_spawn_file_actions_init(&actions);
    if (failed) {
        posix_spawnattr_destroy(&attributes);
        return failed;
    }
    failed = setDefaultSignalHandling(attributes);
    if (!failed) failed = posix_spawn_file_actions_adddup2(&actions, output.write.get(), STDOUT_FILENO);
    if (!failed) failed = posix_spawn_file_actions_adddup2(&actions, error.write.get(), STDERR_FILENO);
    if (!failed) failed = posix_spawn_file_actions_addclosefrom_np(&actions, kFirstUninheritedDescriptor);
    // glibc reports a failed exec as posix_spawn's own result, so a missing or unrunnable program
    // is an error here rather than a child that exits with 127.
    if (!failed) failed = posix_spawn(&child, executable.c_str(), &actions, &attributes, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    return failed;
}

}  // namespace

Expected<ChildProcessResult, Error> LinuxChildProcesses::run(const std::string& executable,
                                                             const std::vector<std::string>& arguments) {
    using Result = Expected<ChildProcessResult, Error>;
    Pipe output;
    Pipe error;
    if (int failed = output.open()) return Result::failure(startFailure(executable, failed));
    if (int failed = error.open()) return Result::failure(startFailure(executable, failed));

    pid_t child = -1;
    if (int failed = spawn(child, executable, arguments, output, error)) {
        return Result::failure(startFailure(executable, failed));
    }
    // Our copies of the write ends must go, or the reads below would never see end of file.
    output.write = Descriptor();
    error.write = Descriptor();

    ChildProcessResult result;
    drain(output, error, result.standardOutput, result.standardError);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {}
    result.terminationStatus = terminationStatusOf(status);
    result.endedBySignal = WIFSIGNALED(status);
    return result;
}

}  // namespace platform::linux_backend
