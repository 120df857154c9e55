// The privileged command of the fallback, as the AppleScript source install() runs it with.
#include <gtest/gtest.h>

#include "engine/installer.h"
#include "platform/testing/scripted_system.h"

namespace {

using testing_support::ScriptedSystem;

// The command for user 501 installing from /Volumes/Disk/Setup.app into /Applications.
const std::string kExampleScript =
    R"cmd(do shell script "uid='501'; pids=$(/usr/bin/pgrep -x -u \"$uid\" 'Kelvo' 2>&1); status=$?; if [ \"$status\" -gt 1 ]; then echo \"$pids\" >&2; exit \"$status\"; fi; if [ \"$status\" -eq 0 ]; then /bin/kill -TERM $pids 2>/dev/null || true; /bin/sleep 2; fi; pids=$(/usr/bin/pgrep -x -u \"$uid\" 'Kelvo' 2>&1); status=$?; if [ \"$status\" -gt 1 ]; then echo \"$pids\" >&2; exit \"$status\"; fi; if [ \"$status\" -eq 0 ]; then /bin/kill -KILL $pids 2>/dev/null || true; /bin/sleep 1; fi; /usr/bin/pgrep -x -u \"$uid\" 'Kelvo' >/dev/null 2>&1; status=$?; if [ \"$status\" -eq 0 ]; then echo \"Kelvo is still running. Quit it and try again.\" >&2; exit 1; fi; if [ \"$status\" -gt 1 ]; then echo \"Could not verify that Kelvo stopped.\" >&2; exit \"$status\"; fi; rm -rf '/Applications/Kelvo.app' && /usr/bin/ditto --rsrc '/Volumes/Disk/Setup.app/Contents/Resources/Kelvo.app' '/Applications/Kelvo.app'" with administrator privileges)cmd";

// The AppleScript source the fallback runs for these paths.
std::string scriptFor(const std::string& resources, const std::string& destinationFolder) {
    ScriptedSystem system;
    system.resources = resources;
    system.paths = {resources + "/Kelvo.app"};
    system.copyError = "Permission denied.";
    platform::ScopedServices scope(system.services());
    (void)engine::Installer({"x", "--dest", destinationFolder}).install();
    return system.scriptSources.at(0);
}

TEST(PrivilegedCommand, WorkedExampleIsTheWholeExpectedScript) {
    EXPECT_EQ(scriptFor("/Volumes/Disk/Setup.app/Contents/Resources", "/Applications"), kExampleScript);
}

// Shell quoting first (a single quote becomes '\''), then AppleScript escaping (backslashes
// doubled, then double quotes escaped).
TEST(PrivilegedCommand, PathsAreQuotedForTheShellThenEscapedForAppleScript) {
    const struct {
        std::string resources, destinationFolder, ending;
    } rows[] = {
        {"/s", "/tmp/a'b",
         R"(; rm -rf '/tmp/a'\\''b/Kelvo.app' && /usr/bin/ditto --rsrc '/s/Kelvo.app' '/tmp/a'\\''b/Kelvo.app'")"},
        {R"(/s"q\b)", R"(/d\"x)",
         R"(; rm -rf '/d\\\"x/Kelvo.app' && /usr/bin/ditto --rsrc '/s\"q\\b/Kelvo.app' '/d\\\"x/Kelvo.app'")"},
    };
    for (const auto& row : rows) {
        std::string script = scriptFor(row.resources, row.destinationFolder);
        EXPECT_TRUE(script.ends_with(row.ending + " with administrator privileges")) << script;
    }
}

}  // namespace
