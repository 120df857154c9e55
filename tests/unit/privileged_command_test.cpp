// The privileged command and its AppleScript source, compared whole with the texts they must be.
#include <gtest/gtest.h>

#include "engine/installer.h"
#include "platform/services.h"
#include "support/install_event_log.h"
#include "support/installer_test_access.h"
#include "support/no_running_kelvo.h"
#include "support/scripted_apple_script.h"

namespace {

using engine::InstallerTestAccess;
using testing_support::InstallEventLog;
using testing_support::ScriptedAppleScriptRunner;
using testing_support::ScriptedUserProcessInfo;

constexpr const char* kExampleSource = "/Volumes/Disk/Setup.app/Contents/Resources/Kelvo.app";
constexpr const char* kExampleDestination = "/Applications/Kelvo.app";

// The command for user 501 installing the example source into /Applications.
const std::string kExampleCommand =
    R"cmd(uid='501'; pids=$(/usr/bin/pgrep -x -u "$uid" 'Kelvo' 2>&1); status=$?; if [ "$status" -gt 1 ]; then echo "$pids" >&2; exit "$status"; fi; if [ "$status" -eq 0 ]; then /bin/kill -TERM $pids 2>/dev/null || true; /bin/sleep 2; fi; pids=$(/usr/bin/pgrep -x -u "$uid" 'Kelvo' 2>&1); status=$?; if [ "$status" -gt 1 ]; then echo "$pids" >&2; exit "$status"; fi; if [ "$status" -eq 0 ]; then /bin/kill -KILL $pids 2>/dev/null || true; /bin/sleep 1; fi; /usr/bin/pgrep -x -u "$uid" 'Kelvo' >/dev/null 2>&1; status=$?; if [ "$status" -eq 0 ]; then echo "Kelvo is still running. Quit it and try again." >&2; exit 1; fi; if [ "$status" -gt 1 ]; then echo "Could not verify that Kelvo stopped." >&2; exit "$status"; fi; rm -rf '/Applications/Kelvo.app' && /usr/bin/ditto --rsrc '/Volumes/Disk/Setup.app/Contents/Resources/Kelvo.app' '/Applications/Kelvo.app')cmd";

// The same command as an AppleScript with administrator privileges.
const std::string kExampleScript =
    R"cmd(do shell script "uid='501'; pids=$(/usr/bin/pgrep -x -u \"$uid\" 'Kelvo' 2>&1); status=$?; if [ \"$status\" -gt 1 ]; then echo \"$pids\" >&2; exit \"$status\"; fi; if [ \"$status\" -eq 0 ]; then /bin/kill -TERM $pids 2>/dev/null || true; /bin/sleep 2; fi; pids=$(/usr/bin/pgrep -x -u \"$uid\" 'Kelvo' 2>&1); status=$?; if [ \"$status\" -gt 1 ]; then echo \"$pids\" >&2; exit \"$status\"; fi; if [ \"$status\" -eq 0 ]; then /bin/kill -KILL $pids 2>/dev/null || true; /bin/sleep 1; fi; /usr/bin/pgrep -x -u \"$uid\" 'Kelvo' >/dev/null 2>&1; status=$?; if [ \"$status\" -eq 0 ]; then echo \"Kelvo is still running. Quit it and try again.\" >&2; exit 1; fi; if [ \"$status\" -gt 1 ]; then echo \"Could not verify that Kelvo stopped.\" >&2; exit \"$status\"; fi; rm -rf '/Applications/Kelvo.app' && /usr/bin/ditto --rsrc '/Volumes/Disk/Setup.app/Contents/Resources/Kelvo.app' '/Applications/Kelvo.app'" with administrator privileges)cmd";

// The AppleScript source runPrivilegedInstall hands to the runner for these paths and user.
std::string scriptSourceFor(const std::string& source, const std::string& destination, std::uint32_t userId) {
    InstallEventLog log;
    ScriptedAppleScriptRunner runner(log);
    ScriptedUserProcessInfo processInfo(log);
    processInfo.userId = userId;
    platform::ScopedServices scope({.processInfo = &processInfo, .appleScript = &runner});
    (void)InstallerTestAccess::runPrivilegedInstall(engine::Installer({"x"}), source, destination,
                                                    platform::Error("plain copy failed"));
    return runner.sources.at(0);
}

TEST(PrivilegedCommand, WorkedExampleIsTheWholeExpectedCommand) {
    std::string command = InstallerTestAccess::privilegedInstallCommand(kExampleSource, kExampleDestination, 501);
    EXPECT_EQ(command, kExampleCommand);
    EXPECT_EQ(command.size(), 847u);
}

TEST(PrivilegedCommand, WorkedExampleScriptIsTheWholeExpectedSource) {
    std::string script = scriptSourceFor(kExampleSource, kExampleDestination, 501);
    EXPECT_EQ(script, kExampleScript);
    EXPECT_EQ(script.size(), 927u);
}

TEST(PrivilegedCommand, ShellQuotingWrapsInSingleQuotesAndEscapesOnlySingleQuotes) {
    const struct {
        std::string text;
        std::string quoted;
    } rows[] = {
        {"Kelvo", "'Kelvo'"},
        {"501", "'501'"},
        {"", "''"},
        {"/tmp/a'b/Kelvo.app", R"('/tmp/a'\''b/Kelvo.app')"},
        {"''", R"(''\'''\''')"},
        {R"(a"b\c $x `y` *)", R"('a"b\c $x `y` *')"},
        {"line\nfeed", "'line\nfeed'"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(InstallerTestAccess::shellQuoted(row.text), row.quoted) << "row: " << row.text;
    }
}

TEST(PrivilegedCommand, SingleQuoteInDestinationBeforeAndAfterAppleScriptEscaping) {
    std::string command = InstallerTestAccess::privilegedInstallCommand("/src/Kelvo.app", "/tmp/a'b/Kelvo.app", 501);
    const std::string quotedDestination = R"('/tmp/a'\''b/Kelvo.app')";
    EXPECT_TRUE(command.ends_with("; rm -rf " + quotedDestination + " && /usr/bin/ditto --rsrc '/src/Kelvo.app' " +
                                  quotedDestination))
        << command;

    std::string script = scriptSourceFor("/src/Kelvo.app", "/tmp/a'b/Kelvo.app", 501);
    const std::string escapedDestination = R"('/tmp/a'\\''b/Kelvo.app')";
    EXPECT_TRUE(script.ends_with("; rm -rf " + escapedDestination + " && /usr/bin/ditto --rsrc '/src/Kelvo.app' " +
                                 escapedDestination + "\" with administrator privileges"))
        << script;
}

TEST(PrivilegedCommand, DoubleQuotesAndBackslashesInPathsAreEscapedForAppleScript) {
    std::string script = scriptSourceFor(R"(/s"q\b/Kelvo.app)", R"(/d\"x/Kelvo.app)", 501);
    EXPECT_NE(script.find(R"(rm -rf '/d\\\"x/Kelvo.app' && /usr/bin/ditto --rsrc '/s\"q\\b/Kelvo.app' '/d\\\"x/Kelvo.app')"),
              std::string::npos)
        << script;
}

TEST(PrivilegedCommand, EffectiveUserIdIsWrittenInDecimalInsideSingleQuotes) {
    const struct {
        std::uint32_t userId;
        std::string firstLine;
    } rows[] = {
        {0, "uid='0'; "},
        {501, "uid='501'; "},
        {4294967295u, "uid='4294967295'; "},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(InstallerTestAccess::privilegedInstallCommand("/s", "/d", row.userId).starts_with(row.firstLine))
            << "user " << row.userId;
        EXPECT_TRUE(scriptSourceFor("/s", "/d", row.userId).starts_with("do shell script \"" + row.firstLine))
            << "user " << row.userId;
    }
}

}  // namespace
