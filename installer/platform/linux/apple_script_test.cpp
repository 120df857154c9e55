// The real AppleScript runner: real /bin/sh, real exit statuses and error output, and real pkexec
// asking a polkit of the test's own.
#include <gtest/gtest.h>

#include <sys/mount.h>
#include <unistd.h>

#include "platform/services.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/other_user.h"

namespace {

using namespace testing_support;

// AppleScript escaping of `command`, written out here apart from the engine's.
std::string scriptFor(const std::string& command, bool privileged = false) {
    std::string escaped;
    for (char c : command) escaped += (c == '\\' || c == '"') ? std::string("\\") + c : std::string(1, c);
    return "do shell script \"" + escaped + "\"" + (privileged ? " with administrator privileges" : "");
}

// "success", or the number and the message, if any, of the failure of the script made of `source`.
std::string outcomeOf(const std::string& source) {
    auto script = platform::appleScript().scriptWithSource(source);
    if (!script) return "the source was not taken";
    auto ran = script.value()->execute();
    if (ran) return "success";
    const platform::Error::Info& failure = ran.error().info();
    std::string text = std::to_string(std::get<std::int64_t>(failure.at(platform::kAppleScriptErrorNumber)));
    auto message = failure.find(platform::kAppleScriptErrorMessage);
    return message == failure.end() ? text : text + ": " + std::get<std::string>(message->second);
}

TEST(AppleScriptRunner, ShellCommandsEndAsTheShellSays) {
    const struct {
        std::string source, outcome;
    } rows[] = {
        {scriptFor("echo lots of output; true"), "success"},
        {scriptFor("printf 'it\\n\\nbroke\\n' >&2; exit 3"), "3: it\n\nbroke"},
        {scriptFor("exit 7"), "7: The command exited with a non-zero status."},
        {scriptFor("kill -KILL $$"), "137: The command was ended by signal 9."},
        {"do shell script \"unterminated", "-2740: Syntax error: the string has no closing double quote."},
        {std::string("do shell script \"a\0b\"", 21), "-2700: The command holds a NUL character, which a shell cannot run."},
        {"do shell script \"\xff\"", "the source was not taken"},
    };
    for (const auto& row : rows) EXPECT_EQ(outcomeOf(row.source), row.outcome) << row.source;
}

// The polkit of the test's own: `arguments` as private_polkit.sh takes them.
CommandResult privatePolkit(const std::string& arguments) {
    return runCommand(shellWord(KELVO_SOURCE_FOLDER "/tests/support/private_polkit.sh") + " " + arguments + " 2>&1");
}

class Elevation : public testing::Test {
protected:
    void SetUp() override {
        if (auto why = ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
        if (access(kPkexec, X_OK) != 0) GTEST_SKIP() << kPkexec << " is not installed";
    }
    static constexpr const char* kPkexec = "/usr/bin/pkexec";
};

// With no way to become administrator at all the runner adds no message of its own, so the user
// reads the caller's reason (the plain copy's "Permission denied", say) instead.
TEST_F(Elevation, ThatCannotHappenHasNoMessage) {
    ASSERT_EQ(mount("/dev/null", kPkexec, nullptr, MS_BIND, nullptr), 0) << "cannot hide pkexec";
    EXPECT_EQ(asOrdinaryUser(kNobody, [] { return outcomeOf(scriptFor("true", true)); }), "-2700");
}

// pkexec for real, asking a polkit that answers as an administrator would, or that asks for the
// password of a person who cancels, without anybody there: refusal and dismissal must read
// differently.
TEST_F(Elevation, EndsAsPolkitAnswers) {
    const std::pair<std::string, std::string> rows[] = {
        {"YES", "success"},
        {"NO", "127: Error executing command as another user: Not authorized"},
        {"AUTH_ADMIN", "-128: The administrator password was not given, so the command was not run."},
    };
    for (const auto& [answer, outcomeStart] : rows) {
        CommandResult polkit = privatePolkit("start nobody " + answer);
        if (polkit.exitStatus != 0) GTEST_SKIP() << "polkit cannot run here: " << polkit.output;
        const std::string dismissingAgent = shellWord(buildFolder() + "/tests/support/dismissing_polkit_agent");
        std::string outcome = asOrdinaryUser(
            kNobody, [] { return outcomeOf(scriptFor("test \"$(id -u)\" = 0", true)); },
            [&](pid_t child) {
                if (answer != "AUTH_ADMIN") return;
                EXPECT_EQ(privatePolkit("dismiss " + std::to_string(child) + " " + dismissingAgent).exitStatus, 0);
            });
        EXPECT_TRUE(outcome.starts_with(outcomeStart)) << answer << ": " << outcome;
    }
}

}  // namespace
