#include "platform/linux/apple_script/script_source.h"

#include <string_view>

namespace platform::linux_backend {
namespace {

constexpr std::string_view kCommandStart = "do shell script \"";
constexpr std::string_view kPrivilegesClause = " with administrator privileges";
constexpr const char* kNotShellScript =
    "Only a script of the form do shell script \"\u2026\" [with administrator privileges] can be run.";
constexpr const char* kUnterminated = "Syntax error: the string has no closing double quote.";
constexpr const char* kBadEscape =
    "Syntax error: a backslash in a string must be followed by \\, \", n, r or t.";
constexpr const char* kTrailingText =
    "Syntax error: only \u201Cwith administrator privileges\u201D may follow the string.";

using Result = Expected<ShellScript, Error>;

Result malformed(const char* message) { return Result::failure(Error(message)); }

// The character an escape stands for; 0 when the escape is not one AppleScript knows.
char unescaped(char escape) {
    switch (escape) {
        case '\\': return '\\';
        case '"': return '"';
        case 'n': return '\n';
        case 'r': return '\r';
        case 't': return '\t';
        default: return 0;
    }
}

}  // namespace

Result parseShellScriptSource(const std::string& source) {
    if (!std::string_view(source).starts_with(kCommandStart)) return malformed(kNotShellScript);
    ShellScript script;
    std::size_t at = kCommandStart.size();
    for (;; ++at) {
        if (at >= source.size()) return malformed(kUnterminated);
        char c = source[at];
        if (c == '"') break;
        if (c == '\\') {
            if (++at >= source.size()) return malformed(kUnterminated);
            char meant = unescaped(source[at]);
            if (meant == 0) return malformed(kBadEscape);
            c = meant;
        }
        script.command += c;
    }
    std::string_view rest = std::string_view(source).substr(at + 1);
    if (rest == kPrivilegesClause) {
        script.withAdministratorPrivileges = true;
    } else if (!rest.empty()) {
        return malformed(kTrailingText);
    }
    return script;
}

}  // namespace platform::linux_backend
