#include <array>

#include "engine/installer.h"
#include "engine/product_identity.h"
#include "platform/services.h"

namespace engine {
namespace {

// The lines of the privileged command that stop Kelvo: listed, asked to quit, listed again,
// killed, and listed a last time. `%NAME%` stands for the shell-quoted process name.
constexpr std::array<std::string_view, 12> kStopLines = {
    R"(pids=$(/usr/bin/pgrep -x -u "$uid" %NAME% 2>&1))",
    R"(status=$?)",
    R"(if [ "$status" -gt 1 ]; then echo "$pids" >&2; exit "$status"; fi)",
    R"(if [ "$status" -eq 0 ]; then /bin/kill -TERM $pids 2>/dev/null || true; /bin/sleep 2; fi)",
    R"(pids=$(/usr/bin/pgrep -x -u "$uid" %NAME% 2>&1))",
    R"(status=$?)",
    R"(if [ "$status" -gt 1 ]; then echo "$pids" >&2; exit "$status"; fi)",
    R"(if [ "$status" -eq 0 ]; then /bin/kill -KILL $pids 2>/dev/null || true; /bin/sleep 1; fi)",
    R"(/usr/bin/pgrep -x -u "$uid" %NAME% >/dev/null 2>&1)",
    R"(status=$?)",
    R"(if [ "$status" -eq 0 ]; then echo "Kelvo is still running. Quit it and try again." >&2; exit 1; fi)",
    R"(if [ "$status" -gt 1 ]; then echo "Could not verify that Kelvo stopped." >&2; exit "$status"; fi)",
};
constexpr std::string_view kNamePlaceholder = "%NAME%";
constexpr std::string_view kUserLineStart = "uid=";
constexpr std::string_view kRemoveStart = "rm -rf ";
constexpr std::string_view kCopyBetween = " && /usr/bin/ditto --rsrc ";
constexpr std::string_view kLineSeparator = "; ";
constexpr std::string_view kScriptStart = "do shell script \"";
constexpr std::string_view kScriptEnd = "\" with administrator privileges";

std::string replacedAll(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// The command as the contents of an AppleScript string literal: backslashes first, then quotes.
std::string appleScriptEscaped(const std::string& command) {
    return replacedAll(replacedAll(command, "\\", "\\\\"), "\"", "\\\"");
}

}  // namespace

std::string Installer::shellQuoted(const std::string& text) {
    return "'" + replacedAll(text, "'", "'\\''") + "'";
}

std::string Installer::privilegedInstallCommand(const std::string& sourcePath,
                                                const std::string& destinationPath,
                                                std::uint32_t effectiveUserId) {
    std::string quotedName = shellQuoted(kTargetExecutableName);
    std::string command = std::string(kUserLineStart) + shellQuoted(std::to_string(effectiveUserId));
    for (std::string_view line : kStopLines) {
        command += kLineSeparator;
        command += replacedAll(std::string(line), kNamePlaceholder, quotedName);
    }
    command += kLineSeparator;
    command += std::string(kRemoveStart) + shellQuoted(destinationPath) + std::string(kCopyBetween) +
               shellQuoted(sourcePath) + " " + shellQuoted(destinationPath);
    return command;
}

platform::Expected<void, InstallError> Installer::runPrivilegedInstall(
    const std::string& sourcePath, const std::string& destinationPath,
    const platform::Error& plainCopyError) const {
    using Result = platform::Expected<void, InstallError>;
    // Read only now: the plain copy has failed, and the command stops this user's copies of Kelvo.
    std::uint32_t effectiveUserId = platform::processInfo().effectiveUserId();
    std::string command = privilegedInstallCommand(sourcePath, destinationPath, effectiveUserId);
    std::string source = std::string(kScriptStart) + appleScriptEscaped(command) + std::string(kScriptEnd);

    auto script = platform::appleScript().scriptWithSource(source);
    if (!script) return Result::failure(InstallError::copyFailed(plainCopyError.localizedDescription()));

    auto ran = script.value()->execute();
    if (ran) return {};

    const platform::Error::Info& errorInfo = ran.error().info();
    auto message = errorInfo.find(platform::kAppleScriptErrorMessage);
    if (message != errorInfo.end()) {
        if (const std::string* text = std::get_if<std::string>(&message->second)) {
            return Result::failure(InstallError::copyFailed(*text));
        }
    }
    return Result::failure(InstallError::copyFailed(plainCopyError.localizedDescription()));
}

}  // namespace engine
