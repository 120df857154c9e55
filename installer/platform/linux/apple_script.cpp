#include "platform/linux/apple_script.h"

#include <unistd.h>

#include <string_view>
#include <vector>

#include "platform/linux/apple_script/script_source.h"
#include "platform/linux/child_processes.h"
#include "platform/utf8.h"

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
constexpr std::int64_t kSignalNumberBase = 128;
constexpr const char* kElevationDismissedMessage =
    "The administrator password was not given, so the command was not run.";
constexpr const char* kNonZeroStatus = "The command exited with a non-zero status.";
constexpr const char* kNulInCommand = "The command holds a NUL character, which a shell cannot run.";

using Result = Expected<void, Error>;

// A failure whose information holds `message` and `number`.
Result scriptFailure(const std::string& message, std::int64_t number) {
    return Result::failure(Error(message, {{kAppleScriptErrorMessage, message}, {kAppleScriptErrorNumber, number}}));
}

// A failure whose information holds only `number`.
Result numberOnly(std::int64_t number) {
    return Result::failure(Error("AppleScript error " + std::to_string(number) + ".", {{kAppleScriptErrorNumber, number}}));
}

std::string withoutFinalLineBreak(std::string text) {
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

Result outcome(const ChildProcessResult& finished, bool elevated) {
    if (finished.endedBySignal) {
        int signal = finished.terminationStatus;
        std::string message = finished.standardError.empty()
                                  ? "The command was ended by signal " + std::to_string(signal) + "."
                                  : withoutFinalLineBreak(finished.standardError);
        return scriptFailure(message, kSignalNumberBase + signal);
    }
    int status = finished.terminationStatus;
    if (status == 0) return {};
    if (elevated && status == kElevationDismissed &&
        std::string_view(finished.standardError).starts_with(kElevationToolMessage)) {
        return scriptFailure(kElevationDismissedMessage, kUserCanceledNumber);
    }
    if (finished.standardError.empty()) return scriptFailure(kNonZeroStatus, status);
    return scriptFailure(withoutFinalLineBreak(finished.standardError), status);
}

class ShellAppleScript final : public AppleScript {
public:
    explicit ShellAppleScript(std::string source) : source_(std::move(source)) {}

    Result execute() override {
        auto script = parseShellScriptSource(source_);
        if (!script) return scriptFailure(script.error().localizedDescription(), kAppleScriptSyntaxErrorNumber);
        const std::string& command = script.value().command;
        if (command.find('\0') != std::string::npos) return scriptFailure(kNulInCommand, kAppleScriptGeneralErrorNumber);

        bool elevated = script.value().withAdministratorPrivileges && geteuid() != 0;
        // No way to become administrator: no message, so that the caller's own reason stands.
        if (elevated && access(kElevationTool, X_OK) != 0) return numberOnly(kAppleScriptGeneralErrorNumber);
        std::vector<std::string> arguments = {"-c", command};
        if (elevated) arguments.insert(arguments.begin(), kShell);

        auto finished = LinuxChildProcesses().run(elevated ? kElevationTool : kShell, arguments);
        if (!finished) return scriptFailure(finished.error().localizedDescription(), kAppleScriptGeneralErrorNumber);
        return outcome(finished.value(), elevated);
    }

private:
    std::string source_;
};

}  // namespace

Expected<std::unique_ptr<AppleScript>, Error> LinuxAppleScriptRunner::scriptWithSource(const std::string& source) {
    using Made = Expected<std::unique_ptr<AppleScript>, Error>;
    if (!utf8::isValid(source)) return Made::failure(Error("The script is not valid UTF-8."));
    return Made(std::make_unique<ShellAppleScript>(source));
}

}  // namespace platform::linux_backend
