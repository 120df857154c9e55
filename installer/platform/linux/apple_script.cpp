#include "platform/linux/apple_script.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <vector>

#include "platform/linux/apple_script_source.h"
#include "platform/linux/error_number_text.h"

extern char** environ;

namespace platform::linux_backend {
namespace {

constexpr const char* kShell = "/bin/sh";
constexpr const char* kElevationTool = "/usr/bin/pkexec";
// pkexec's own statuses: the user dismissed the prompt or was not authorized (126), or the
// authentication could not take place (127). It then says so starting with this text, or not at all.
constexpr int kElevationDismissed = 126;
constexpr int kElevationFailed = 127;
constexpr std::string_view kElevationToolMessage = "Error executing command as another user";

constexpr std::int64_t kUserCanceledNumber = -128;
constexpr std::int64_t kGeneralErrorNumber = -2700;
constexpr std::int64_t kSignalNumberBase = 128;
constexpr const char* kElevationRefused =
    "The administrator password was not given, so the command was not run.";
constexpr const char* kElevationUnavailable =
    "The command needs administrator rights, but pkexec, which asks for them, is not installed.";
constexpr const char* kNonZeroStatus = "The command exited with a non-zero status.";
constexpr const char* kNulInCommand = "The command holds a NUL character, which a shell cannot run.";

AppleScriptErrorInfo errorInfo(std::string message, std::int64_t number) {
    return {{kAppleScriptErrorMessage, std::move(message)}, {kAppleScriptErrorNumber, number}};
}

struct Finished {
    int status = 0;  // as from waitpid
    std::string standardError;
};

// Runs `argv` with standard input on /dev/null, standard output discarded and standard error
// collected. The error number when it could not be started.
Expected<Finished, int> runCollectingErrors(const std::vector<const char*>& argv) {
    int pipeEnds[2];
    if (pipe2(pipeEnds, O_CLOEXEC) != 0) return Expected<Finished, int>::failure(errno);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDERR_FILENO);
    pid_t child = 0;
    int started = posix_spawn(&child, argv[0], &actions, nullptr, const_cast<char* const*>(argv.data()), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(pipeEnds[1]);
    if (started != 0) {
        close(pipeEnds[0]);
        return Expected<Finished, int>::failure(started);
    }
    Finished finished;
    char buffer[4096];
    for (;;) {
        ssize_t count = read(pipeEnds[0], buffer, sizeof buffer);
        if (count > 0) finished.standardError.append(buffer, static_cast<std::size_t>(count));
        if (count == 0 || (count < 0 && errno != EINTR)) break;
    }
    close(pipeEnds[0]);
    while (waitpid(child, &finished.status, 0) < 0 && errno == EINTR) {}
    return finished;
}

std::string withoutFinalLineBreak(std::string text) {
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

std::optional<AppleScriptErrorInfo> outcome(const Finished& finished, bool elevated) {
    if (WIFSIGNALED(finished.status)) {
        int signal = WTERMSIG(finished.status);
        std::string message = finished.standardError.empty()
                                  ? "The command was ended by signal " + std::to_string(signal) + "."
                                  : withoutFinalLineBreak(finished.standardError);
        return errorInfo(message, kSignalNumberBase + signal);
    }
    int status = WEXITSTATUS(finished.status);
    if (status == 0) return std::nullopt;
    bool fromElevationTool = finished.standardError.empty() ||
                             std::string_view(finished.standardError).starts_with(kElevationToolMessage);
    if (elevated && (status == kElevationDismissed || status == kElevationFailed) && fromElevationTool) {
        return errorInfo(kElevationRefused, kUserCanceledNumber);
    }
    if (finished.standardError.empty()) return errorInfo(kNonZeroStatus, status);
    return errorInfo(withoutFinalLineBreak(finished.standardError), status);
}

class ShellAppleScript final : public AppleScript {
public:
    explicit ShellAppleScript(std::string source) : source_(std::move(source)) {}

    std::optional<AppleScriptErrorInfo> execute() override {
        auto script = parseShellScriptSource(source_);
        if (!script) return errorInfo(script.error().message, kAppleScriptSyntaxErrorNumber);
        const std::string& command = script.value().command;
        if (command.find('\0') != std::string::npos) return errorInfo(kNulInCommand, kGeneralErrorNumber);

        bool elevated = script.value().withAdministratorPrivileges && geteuid() != 0;
        if (elevated && access(kElevationTool, X_OK) != 0) return errorInfo(kElevationUnavailable, kGeneralErrorNumber);
        std::vector<const char*> argv;
        if (elevated) argv.push_back(kElevationTool);
        argv.insert(argv.end(), {kShell, "-c", command.c_str(), nullptr});

        auto finished = runCollectingErrors(argv);
        if (!finished) {
            return errorInfo(std::string("Could not start ") + argv[0] + ": " + errorNumberText(finished.error()) + ".",
                             kGeneralErrorNumber);
        }
        return outcome(finished.value(), elevated);
    }

private:
    std::string source_;
};

}  // namespace

std::unique_ptr<AppleScript> LinuxAppleScriptRunner::scriptWithSource(const std::string& source) {
    if (!isValidUTF8(source)) return nullptr;
    return std::make_unique<ShellAppleScript>(source);
}

}  // namespace platform::linux_backend
