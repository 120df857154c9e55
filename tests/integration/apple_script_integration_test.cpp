// The real AppleScript runner: real /bin/sh, real exit statuses and standard error.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/apple_script.h"
#include "support/command.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;
using platform::AppleScriptErrorInfo;

// AppleScript escaping of `command`, written out here independently of the engine.
std::string scriptFor(const std::string& command, bool privileged = false) {
    std::string escaped;
    for (char c : command) {
        if (c == '\\' || c == '"') escaped += '\\';
        escaped += c;
    }
    return "do shell script \"" + escaped + "\"" + (privileged ? " with administrator privileges" : "");
}

std::optional<AppleScriptErrorInfo> run(const std::string& source) {
    platform::linux_backend::LinuxAppleScriptRunner runner;
    auto script = runner.scriptWithSource(source);
    if (!script) return AppleScriptErrorInfo{{"test", std::string("no script")}};
    return script->execute();
}

AppleScriptErrorInfo failure(const std::string& message, std::int64_t number) {
    return {{platform::kAppleScriptErrorMessage, message}, {platform::kAppleScriptErrorNumber, number}};
}

TEST(AppleScriptRunner, OutcomesOfShellCommands) {
    const struct {
        const char* name;
        std::string source;
        std::optional<AppleScriptErrorInfo> outcome;
    } rows[] = {
        {"success, output ignored", scriptFor("echo lots of output; true"), std::nullopt},
        {"success as administrator (root)", scriptFor("test \"$(id -u)\" = 0", true), std::nullopt},
        {"status and error text", scriptFor("echo 'it broke' >&2; exit 3"), failure("it broke", 3)},
        {"only the final line break goes", scriptFor("printf 'one\\n\\ntwo\\n\\n' >&2; exit 1"), failure("one\n\ntwo\n", 1)},
        {"no error text", scriptFor("exit 7"), failure("The command exited with a non-zero status.", 7)},
        {"the shell's own failure", scriptFor("/no/such/program"), failure("/bin/sh: 1: /no/such/program: not found", 127)},
        {"ended by a signal", scriptFor("kill -KILL $$"), failure("The command was ended by signal 9.", 137)},
        {"malformed", "do shell script \"unterminated",
         failure("Syntax error: the string has no closing double quote.", -2740)},
        {"NUL in the command", std::string("do shell script \"a\0b\"", 21),
         failure("The command holds a NUL character, which a shell cannot run.", -2700)},
    };
    for (const auto& row : rows) EXPECT_EQ(run(row.source), row.outcome) << row.name;
}

TEST(AppleScriptRunner, SourceThatIsNotUtf8CannotBeTaken) {
    platform::linux_backend::LinuxAppleScriptRunner runner;
    EXPECT_EQ(runner.scriptWithSource("do shell script \"\xff\""), nullptr);
    EXPECT_NE(runner.scriptWithSource("do shell script \"K\u00e9lvo\""), nullptr);
}

// What the shell receives is exactly the command that was escaped, awkward characters and all.
TEST(AppleScriptRunner, TheShellGetsExactlyTheEscapedCommand) {
    TempFolder folder;
    const std::string texts[] = {
        R"(back\slash)", R"(double"quote)", "single'quote", "$HOME `id` $(id)", "line\nfeed", "tab\t",
        "K\u00e9lvo \u2026", R"(\\"\'"\)", "-leading", "carriage\rreturn",
    };
    for (const std::string& text : texts) {
        std::string out = folder / "out";
        ASSERT_EQ(run(scriptFor("printf '%s' " + shellWord(text) + " > " + shellWord(out))), std::nullopt) << text;
        EXPECT_EQ(readFile(out), text);
    }
}

TEST(AppleScriptRunner, ElevationWithoutPkexecIsExplained) {
    if (geteuid() != 0) GTEST_SKIP() << "needs root to become an ordinary user for the check";
    if (access("/usr/bin/pkexec", X_OK) == 0) GTEST_SKIP() << "pkexec is installed and would show a prompt";
    int report[2];
    ASSERT_EQ(pipe(report), 0);
    pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        close(report[0]);
        if (setgid(65534) != 0 || setuid(65534) != 0) _exit(2);
        auto outcome = run(scriptFor("true", true));
        std::string message = outcome ? std::get<std::string>(outcome->at(platform::kAppleScriptErrorMessage)) : "";
        (void)!write(report[1], message.data(), message.size());
        _exit(0);
    }
    close(report[1]);
    std::string message;
    char buffer[512];
    ssize_t count;
    while ((count = read(report[0], buffer, sizeof buffer)) > 0) message.append(buffer, static_cast<std::size_t>(count));
    close(report[0]);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(message, "The command needs administrator rights, but pkexec, which asks for them, is not installed.");
}

}  // namespace
