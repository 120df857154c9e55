// The real AppleScript runner: real /bin/sh, real exit statuses and standard error, and real pkexec
// asking a polkit of the test's own.
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "platform/linux/apple_script.h"
#include "support/command.h"
#include "support/private_mounts.h"
#include "support/private_polkit.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;
using platform::AppleScriptErrorInfo;

constexpr const char* kPkexec = "/usr/bin/pkexec";

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

// "success", or the number and the message, if any, of a failure.
std::string described(const std::optional<AppleScriptErrorInfo>& outcome) {
    if (!outcome) return "success";
    std::string text = std::to_string(std::get<std::int64_t>(outcome->at(platform::kAppleScriptErrorNumber)));
    auto message = outcome->find(platform::kAppleScriptErrorMessage);
    return message == outcome->end() ? text : text + ": " + std::get<std::string>(message->second);
}

// What a script reports when an ordinary user runs it: "success", or its number and message. Root
// runs it in a child that has given up its rights, in a session of its own so that there is no
// terminal to ask on; `beforeRun` gets that child's identifier before the script starts.
std::string outcomeAsOrdinaryUser(const std::string& source, const std::function<void(pid_t)>& beforeRun = {}) {
    constexpr uid_t kNobody = 65534;
    int report[2], go[2];
    if (pipe(report) != 0 || pipe(go) != 0) return "no pipe";
    pid_t child = fork();
    if (child == 0) {
        char start;
        bool ordinary = setsid() > 0 && setgroups(0, nullptr) == 0 && setresgid(kNobody, kNobody, kNobody) == 0 &&
                        setresuid(kNobody, kNobody, kNobody) == 0 && read(go[0], &start, 1) == 1;
        std::string text = ordinary ? described(run(source)) : "no ordinary user";
        (void)!write(report[1], text.data(), text.size());
        _exit(0);
    }
    close(report[1]);
    close(go[0]);
    if (beforeRun) beforeRun(child);
    (void)!write(go[1], "g", 1);
    close(go[1]);
    std::string text;
    char buffer[512];
    for (ssize_t count; (count = read(report[0], buffer, sizeof buffer)) > 0;) text.append(buffer, count);
    close(report[0]);
    waitpid(child, nullptr, 0);
    return text;
}

// With no way to become administrator at all the runner adds no message of its own, so the user
// reads the caller's reason (the plain copy's "Permission denied", say) instead.
TEST(AppleScriptRunner, ElevationThatCannotHappenHasNoMessage) {
    if (auto why = enterPrivateMountNamespace()) GTEST_SKIP() << *why;
    bool installed = access(kPkexec, F_OK) == 0;
    bool hidden = installed && mount("/dev/null", kPkexec, nullptr, MS_BIND, nullptr) == 0;
    ASSERT_EQ(hidden, installed) << "cannot hide pkexec";
    EXPECT_EQ(outcomeAsOrdinaryUser(scriptFor("true", true)), "-2700");
    if (hidden) umount2(kPkexec, MNT_DETACH);
}

// pkexec for real, asking a polkit that answers as an administrator would, or as a person would who
// cancels, without anybody there: refusal and dismissal must read differently.
TEST(AppleScriptRunner, ElevationAsPolkitAnswersIt) {
    if (auto why = enterPrivateMountNamespace()) GTEST_SKIP() << *why;
    if (access(kPkexec, X_OK) != 0) GTEST_SKIP() << "pkexec is not installed";
    const struct {
        const char* answer;
        bool dismissedByAgent;
        const char* outcomeStart;
    } rows[] = {
        {"YES", false, "success"},
        {"NO", false, "127: Error executing command as another user: Not authorized"},
        {"AUTH_ADMIN", false, "127: Error creating textual authentication agent"},
        {"AUTH_ADMIN", true, "-128: The administrator password was not given, so the command was not run."},
    };
    for (const auto& row : rows) {
        PrivatePolkit polkit("nobody", row.answer);
        if (polkit.failure()) GTEST_SKIP() << "polkit cannot run here: " << *polkit.failure();
        std::string outcome = outcomeAsOrdinaryUser(scriptFor("test \"$(id -u)\" = 0", true), [&](pid_t child) {
            EXPECT_TRUE(!row.dismissedByAgent || polkit.dismissRequestsFor(child)) << "no agent";
        });
        EXPECT_TRUE(outcome.starts_with(row.outcomeStart)) << row.answer << ": " << outcome;
    }
}

}  // namespace
