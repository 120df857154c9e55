// Reading the one kind of AppleScript the installer runs: `do shell script`.
//
// Accepted, byte for byte, and nothing else (no other blanks, line breaks or parameters):
//     do shell script "<literal>"
//     do shell script "<literal>" with administrator privileges
// Inside the literal a backslash starts one of these escapes, as in AppleScript:
//     \\ backslash   \" double quote   \n line feed   \r carriage return   \t tab
// Any other character after a backslash, a backslash at the very end, or a missing closing
// quote makes the source malformed. Every other byte, line breaks included, stands for itself.
#pragma once

#include <cstdint>
#include <string>

#include "platform/error.h"

namespace platform::linux_backend {

struct ShellScript {
    std::string command;  // the unescaped literal
    bool withAdministratorPrivileges = false;
};

// AppleScript's number for a syntax error, reported with every malformed source.
inline constexpr std::int64_t kAppleScriptSyntaxErrorNumber = -2740;

// The script `source` holds; a malformed one fails with a sentence saying why.
Expected<ShellScript, Error> parseShellScriptSource(const std::string& source);

}  // namespace platform::linux_backend
