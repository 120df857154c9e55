// install() on the scripted machine: which steps run, in which order, and what it fails with; and
// the privileged command of its fallback as the AppleScript source it is run as.
#include <gtest/gtest.h>

#include "engine/installer.h"
#include "support/scripted_system.h"

namespace {

using testing_support::ScriptedSystem;

const std::string kCopyLead = "Could not copy Kelvo to the Applications folder.\n";
const std::string kIncomplete = kCopyLead + "The copy appeared to succeed but the app is incomplete.";
const std::string kStart =
    "exists /R/Kelvo.app, lock /Applications/Kelvo.app, applications 0, exists /Applications/Kelvo.app";
const std::string kCopy = kStart + ", copy /R/Kelvo.app /Applications/Kelvo.app";
const std::string kEnd = ", exists /Applications/Kelvo.app/Contents/Info.plist, unlock /Applications/Kelvo.app";
const std::string kRemove = kStart + ", remove /Applications/Kelvo.app";
const std::string kDamaged = std::string("This installer is damaged: the embedded Kelvo app is missing. Please "
                                         "re-download the disk image from ") + engine::kProductWebAddress + ".";

void copyFails(ScriptedSystem& s) { s.copyError = "Permission denied."; }

TEST(Install, StopsKelvoReplacesTheBundleFallsBackAndChecksTheCopy) {
    using platform::kAppleScriptErrorMessage;
    const struct {
        const char* name;
        void (*setUp)(ScriptedSystem&);
        std::string events, error;
    } rows[] = {
        {"fresh install", [](ScriptedSystem&) {}, kCopy + kEnd, ""},
        {"old copy replaced", [](ScriptedSystem& s) { s.paths.insert("/Applications/Kelvo.app"); },
         kRemove + ", copy /R/Kelvo.app /Applications/Kelvo.app" + kEnd, ""},
        {"removal fails: fallback, no copy",
         [](ScriptedSystem& s) { s.paths.insert("/Applications/Kelvo.app"); s.removalError = "Busy."; },
         kRemove + ", script, execute" + kEnd, ""},
        {"copy fails: fallback", copyFails, kCopy + ", script, execute" + kEnd, ""},
        {"embedded app missing", [](ScriptedSystem& s) { s.paths.clear(); }, "exists /R/Kelvo.app", kDamaged},
        {"no resources folder", [](ScriptedSystem& s) { s.resources = std::nullopt; }, "", kDamaged},
        {"process check fails",
         [](ScriptedSystem& s) { s.toolAnswers = {platform::ChildProcessResult{2, "", "pgrep: no /proc\n"}}; },
         "exists /R/Kelvo.app, lock /Applications/Kelvo.app, applications 0, unlock /Applications/Kelvo.app",
         "Could not check for running Kelvo processes.\npgrep: no /proc"},
        {"Kelvo cannot be stopped: the old copy stays",
         [](ScriptedSystem& s) { s.processes = {{.pid = 7, .application = false, .quitsAfter = {}, .quitsWhenForced = false}}; },
         "exists /R/Kelvo.app, lock /Applications/Kelvo.app, applications 0, lookup 7, kill 7 15, applications 2, "
         "lookup 7, kill 7 9, applications 3, unlock /Applications/Kelvo.app",
         "Could not close the running Kelvo process (PID 7). Quit Kelvo and try again."},
        {"incomplete copy", [](ScriptedSystem& s) { s.copiesAreComplete = false; }, kCopy + kEnd, kIncomplete},
        {"incomplete after the fallback", [](ScriptedSystem& s) { copyFails(s); s.copiesAreComplete = false; },
         kCopy + ", script, execute" + kEnd, kIncomplete},
        {"script refused", [](ScriptedSystem& s) { copyFails(s); s.refusesScripts = true; },
         kCopy + ", script, unlock /Applications/Kelvo.app", kCopyLead + "Permission denied."},
        {"script fails with a message",
         [](ScriptedSystem& s) {
             copyFails(s);
             s.scriptError = {{{kAppleScriptErrorMessage, "Kelvo is still running."}}};
         },
         kCopy + ", script, execute, unlock /Applications/Kelvo.app", kCopyLead + "Kelvo is still running."},
        {"script fails with an empty message",
         [](ScriptedSystem& s) { copyFails(s); s.scriptError = {{{kAppleScriptErrorMessage, ""}}}; },
         kCopy + ", script, execute, unlock /Applications/Kelvo.app", kCopyLead},
        {"script fails without a message",
         [](ScriptedSystem& s) { copyFails(s); s.scriptError = {{{platform::kAppleScriptErrorNumber, -128}}}; },
         kCopy + ", script, execute, unlock /Applications/Kelvo.app", kCopyLead + "Permission denied."},
        {"script fails with a message that is no text",
         [](ScriptedSystem& s) { copyFails(s); s.scriptError = {{{kAppleScriptErrorMessage, 5}}}; },
         kCopy + ", script, execute, unlock /Applications/Kelvo.app", kCopyLead + "Permission denied."},
    };
    for (const auto& row : rows) {
        ScriptedSystem system;
        system.resources = "/R";
        system.paths = {"/R/Kelvo.app", "/R/Kelvo.app/Contents/Info.plist"};
        row.setUp(system);
        platform::ScopedServices scope(system.services());
        {
            auto result = engine::Installer({"x"}).install();
            EXPECT_EQ(result ? "" : result.error().localizedDescription(), row.error) << row.name;
        }
        EXPECT_EQ(system.events("run"), row.events) << row.name;
    }
}

// The command for user 501 installing from /Volumes/Disk/Setup.app into /Applications.
const std::string kExampleScript =
    R"cmd(do shell script "uid='501'; pids=$(/usr/bin/pgrep -x -u \"$uid\" 'Kelvo' 2>&1); status=$?; if [ \"$status\" -gt 1 ]; then echo \"$pids\" >&2; exit \"$status\"; fi; if [ \"$status\" -eq 0 ]; then /bin/kill -TERM $pids 2>/dev/null || true; /bin/sleep 2; fi; pids=$(/usr/bin/pgrep -x -u \"$uid\" 'Kelvo' 2>&1); status=$?; if [ \"$status\" -gt 1 ]; then echo \"$pids\" >&2; exit \"$status\"; fi; if [ \"$status\" -eq 0 ]; then /bin/kill -KILL $pids 2>/dev/null || true; /bin/sleep 1; fi; /usr/bin/pgrep -x -u \"$uid\" 'Kelvo' >/dev/null 2>&1; status=$?; if [ \"$status\" -eq 0 ]; then echo \"Kelvo is still running. Quit it and try again.\" >&2; exit 1; fi; if [ \"$status\" -gt 1 ]; then echo \"Could not verify that Kelvo stopped.\" >&2; exit \"$status\"; fi; rm -rf '/Applications/Kelvo.app' && /usr/bin/ditto --rsrc '/Volumes/Disk/Setup.app/Contents/Resources/Kelvo.app' '/Applications/Kelvo.app'" with administrator privileges)cmd";

// The AppleScript source the fallback runs for these paths.
std::string scriptFor(const std::string& resources, const std::string& destinationFolder) {
    ScriptedSystem system;
    system.resources = resources;
    system.paths = {resources + "/Kelvo.app"};
    copyFails(system);
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
