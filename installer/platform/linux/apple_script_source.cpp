#include "platform/linux/apple_script_source.h"

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

using Result = Expected<ShellScript, ScriptSyntaxError>;

Result malformed(const char* message) { return Result::failure(ScriptSyntaxError{message}); }

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

bool isValidUTF8(const std::string& text) {
    for (std::size_t at = 0; at < text.size();) {
        unsigned char lead = static_cast<unsigned char>(text[at]);
        std::size_t length = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3 : (lead >> 3) == 0x1E ? 4 : 0;
        if (length == 0 || at + length > text.size()) return false;
        char32_t value = length == 1 ? lead : lead & (0x7F >> length);
        for (std::size_t i = 1; i < length; ++i) {
            unsigned char next = static_cast<unsigned char>(text[at + i]);
            if ((next & 0xC0) != 0x80) return false;
            value = (value << 6) | (next & 0x3F);
        }
        static constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
        if (value < kSmallest[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return false;
        at += length;
    }
    return true;
}

}  // namespace platform::linux_backend
