// The one kind of AppleScript the Linux runner takes, read as AppleScript reads it.
#include "platform/linux/apple_script/script_source.h"

#include <gtest/gtest.h>

namespace {

using platform::linux_backend::parseShellScriptSource;

TEST(ScriptSource, OnlyADoShellScriptWithAStringLiteralIsTaken) {
    const std::string kMalformed = "Only a script of the form do shell script \"\u2026\" [with administrator privileges] can be run.";
    const struct {
        std::string source;
        std::string outcome;  // "[privileged] command", or the syntax error
    } rows[] = {
        {R"(do shell script "ls -l")", "ls -l"},
        {R"(do shell script "rm -rf '/A b'" with administrator privileges)", "privileged rm -rf '/A b'"},
        {R"(do shell script "a\\b \"c\" d\ne\rf\tg")", "a\\b \"c\" d\ne\rf\tg"},
        {"do shell script \"two\nlines\"", "two\nlines"},
        {R"(do shell script "")", ""},
        {R"(do shell script "x\q")", "Syntax error: a backslash in a string must be followed by \\, \", n, r or t."},
        {R"(do shell script "x\)", "Syntax error: the string has no closing double quote."},
        {R"(do shell script "x)", "Syntax error: the string has no closing double quote."},
        {R"(do shell script "x"  with administrator privileges)",
         "Syntax error: only \u201Cwith administrator privileges\u201D may follow the string."},
        {R"(do shell script "x" with administrator privileges and more)",
         "Syntax error: only \u201Cwith administrator privileges\u201D may follow the string."},
        {R"(Do shell script "x")", kMalformed},
        {R"( do shell script "x")", kMalformed},
        {R"(do shell script x)", kMalformed},
    };
    for (const auto& row : rows) {
        auto script = parseShellScriptSource(row.source);
        std::string outcome = !script ? script.error().localizedDescription()
                                      : (script.value().withAdministratorPrivileges ? "privileged " : "") + script.value().command;
        EXPECT_EQ(outcome, row.outcome) << row.source;
    }
}

}  // namespace
