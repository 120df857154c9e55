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

#include "platform/expected.h"

namespace platform::linux_backend {

struct ShellScript {
    std::string command;  // the unescaped literal
    bool withAdministratorPrivileges = false;
};

struct ScriptSyntaxError {
    std::string message;  // a readable sentence
};

// AppleScript's number for a syntax error, reported with every malformed source.
inline constexpr std::int64_t kAppleScriptSyntaxErrorNumber = -2740;

Expected<ShellScript, ScriptSyntaxError> parseShellScriptSource(const std::string& source);

// True when `text` is well-formed UTF-8 (no overlong forms, surrogates or values past U+10FFFF).
bool isValidUTF8(const std::string& text);

}  // namespace platform::linux_backend
