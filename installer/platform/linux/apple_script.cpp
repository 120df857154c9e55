#include "platform/linux/apple_script.h"

#include <unistd.h>

#include <string_view>
#include <vector>

#include "platform/linux/apple_script_source.h"
#include "platform/posix/child_processes.h"

namespace platform::linux_backend {
namespace {

constexpr const char* kShell = "/bin/sh";
constexpr const char* kElevationTool = "/usr/bin/pkexec";
// pkexec's status when the person asked for the password dismissed the request, which it then
// reports starting with these words. Every other failure of its own (not authorized, no
// authentication agent, no polkit) ends with 127 and its own words, read like the command's.
constexpr int kElevationDismissed = 126;
constexpr std::string_view kElevationToolMessage = "Error executing command as another user";

constexpr std::int64_t kUserCanceledNumber = -128;
constexpr std::int64_t kGeneralErrorNumber = -2700;
constexpr std::int64_t kSignalNumberBase = 128;
constexpr const char* kElevationDismissedMessage =
    "The administrator password was not given, so the command was not run.";
constexpr const char* kNonZeroStatus = "The command exited with a non-zero status.";
constexpr const char* kNulInCommand = "The command holds a NUL character, which a shell cannot run.";

AppleScriptErrorInfo errorInfo(std::string message, std::int64_t number) {
    return {{kAppleScriptErrorMessage, std::move(message)}, {kAppleScriptErrorNumber, number}};
}

AppleScriptErrorInfo numberOnly(std::int64_t number) { return {{kAppleScriptErrorNumber, number}}; }

std::string withoutFinalLineBreak(std::string text) {
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

std::optional<AppleScriptErrorInfo> outcome(const ChildProcessResult& finished, bool elevated) {
    if (finished.endedBySignal) {
        int signal = finished.terminationStatus;
        std::string message = finished.standardError.empty()
                                  ? "The command was ended by signal " + std::to_string(signal) + "."
                                  : withoutFinalLineBreak(finished.standardError);
        return errorInfo(message, kSignalNumberBase + signal);
    }
    int status = finished.terminationStatus;
    if (status == 0) return std::nullopt;
    if (elevated && status == kElevationDismissed &&
        std::string_view(finished.standardError).starts_with(kElevationToolMessage)) {
        return errorInfo(kElevationDismissedMessage, kUserCanceledNumber);
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
        // No way to become administrator: no message, so that the caller's own reason stands.
        if (elevated && access(kElevationTool, X_OK) != 0) return numberOnly(kGeneralErrorNumber);
        std::vector<std::string> arguments = {"-c", command};
        if (elevated) arguments.insert(arguments.begin(), kShell);

        auto finished = posix::PosixChildProcesses().run(elevated ? kElevationTool : kShell, arguments);
        if (!finished) return errorInfo(finished.error().localizedDescription(), kGeneralErrorNumber);
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
