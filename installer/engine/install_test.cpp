// install() on the scripted machine: which steps run, in which order, and what it fails with.
#include <gtest/gtest.h>

#include "engine/installer.h"
#include "platform/testing/scripted_system.h"

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

}  // namespace
