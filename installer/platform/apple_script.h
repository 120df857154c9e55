// Running AppleScript source, the way the installer asks for administrator rights.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace platform {

// The key of the human-readable message in a script's error information.
inline constexpr const char* kAppleScriptErrorMessage = "NSAppleScriptErrorMessage";
// The key of the error number in a script's error information.
inline constexpr const char* kAppleScriptErrorNumber = "NSAppleScriptErrorNumber";

// What a failed script reports: entries by key, each a text or a number.
using AppleScriptErrorInfo = std::map<std::string, std::variant<std::string, std::int64_t>>;

class AppleScript {
public:
    virtual ~AppleScript() = default;

    // Runs the script and blocks until it has finished (an administrator prompt included). None
    // when it succeeded; otherwise the error information, which always holds at least one entry.
    virtual std::optional<AppleScriptErrorInfo> execute() = 0;
};

class AppleScriptRunner {
public:
    virtual ~AppleScriptRunner() = default;

    // A script made from `source`, or none when the source cannot be taken at all.
    virtual std::unique_ptr<AppleScript> scriptWithSource(const std::string& source) = 0;
};

}  // namespace platform
