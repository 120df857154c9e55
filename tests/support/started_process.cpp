#include "support/started_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>

#include "support/command.h"

extern char** environ;

namespace testing_support {

StartedProcess::StartedProcess(const std::string& program, const std::vector<std::string>& arguments) {
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int failed = posix_spawn(&child, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) return;
    pid_ = child;
    reaper_ = std::thread([this] {
        int status = 0;
        while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {}
        status_ = status;
        exited_ = true;
    });
}

StartedProcess::~StartedProcess() {
    if (pid_ == 0) return;
    if (!exited_) kill(pid_, SIGKILL);
    reaper_.join();
}

std::optional<int> StartedProcess::waitForExit(std::chrono::duration<double> timeout) const {
    for (auto deadline = std::chrono::steady_clock::now() + timeout; !exited_ && std::chrono::steady_clock::now() < deadline;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return exited_ ? std::optional(status_.load()) : std::nullopt;
}

std::string standInKelvoExecutable() { return buildFolder() + "/kelvo/Kelvo.app/Contents/MacOS/Kelvo"; }

}  // namespace testing_support
