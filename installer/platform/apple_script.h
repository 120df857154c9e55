// Running AppleScript source, the way the installer asks for administrator rights.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/error.h"
#include "platform/expected.h"

namespace platform {

// The keys of a failed script's error information (`Error::info`): its human-readable message and
// its error number.
inline constexpr const char* kAppleScriptErrorMessage = "NSAppleScriptErrorMessage";
inline constexpr const char* kAppleScriptErrorNumber = "NSAppleScriptErrorNumber";

// AppleScript's number for a failure it gives no number of its own (errOSAGeneralError).
inline constexpr std::int64_t kAppleScriptGeneralErrorNumber = -2700;

class AppleScript {
public:
    virtual ~AppleScript() = default;

    // Runs the script and blocks until it has finished (an administrator prompt included). A
    // failure's information holds at least its number.
    virtual Expected<void, Error> execute() = 0;
};

class AppleScriptRunner {
public:
    virtual ~AppleScriptRunner() = default;

    // A script made from `source`; a failure when the source cannot be taken at all.
    virtual Expected<std::unique_ptr<AppleScript>, Error> scriptWithSource(const std::string& source) = 0;
};

}  // namespace platform
