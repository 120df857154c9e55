// Stopping the running copies of Kelvo, on the scripted machine and its scripted time: which
// copies are asked, forced and waited for, when, and what is left to report.
#include <gtest/gtest.h>

#include <cerrno>

#include "engine/installer_test_access.h"
#include "platform/testing/scripted_system.h"

namespace {

using testing_support::ScriptedProcess;
using testing_support::ScriptedSystem;

const std::string kLead = "Could not check for running Kelvo processes.\n";
const ScriptedSystem::ToolAnswer kListing5 = platform::ChildProcessResult{0, "5\n"};
const ScriptedSystem::ToolAnswer kFailing = platform::ChildProcessResult{2, "", "pgrep: out of memory\n"};

// A copy that nothing ends (a zombie, say).
ScriptedProcess unstoppable(std::int32_t pid, bool application = false) {
    return {.pid = pid, .application = application, .quitsAfter = std::nullopt, .quitsWhenForced = false};
}

// Each row sets up the machine, then checks what the step did (pgrep runs left out; each listing
// shows the scripted time it was made at) and what it failed with.
TEST(StopRunningInstances, AsksWaitsForcesWaitsAndGivesUpOnWhatIsLeft) {
    const struct {
        const char* name;
        void (*setUp)(ScriptedSystem&);
        std::string events, error;
    } rows[] = {
        {"nothing running", [](ScriptedSystem&) {}, "applications 0", ""},
        {"quit when asked", [](ScriptedSystem& s) { s.processes = {{.pid = 12}, {.pid = 7}}; },
         "applications 0, lookup 7, terminate 7, lookup 12, terminate 12, applications 0", ""},
        {"slow to quit", [](ScriptedSystem& s) { s.processes = {{.pid = 7, .quitsAfter = 0.45}}; },
         "applications 0, lookup 7, terminate 7, applications 0.5", ""},
        {"signalled when no request can be made",
         [](ScriptedSystem& s) {
             s.processes = {{.pid = 3, .application = false}, {.pid = 4, .refusesTerminate = true}, {.pid = 5}};
         },
         "applications 0, lookup 3, kill 3 15, lookup 4, terminate 4, kill 4 15, lookup 5, terminate 5, "
         "applications 0",
         ""},
        {"forced", [](ScriptedSystem& s) { s.processes = {{.pid = 7, .quitsAfter = std::nullopt}}; },
         "applications 0, lookup 7, terminate 7, applications 2, lookup 7, forceTerminate 7, applications 2", ""},
        {"unstoppable",
         [](ScriptedSystem& s) { s.processes = {unstoppable(30), unstoppable(12, true)}; },
         "applications 0, lookup 12, terminate 12, lookup 30, kill 30 15, applications 2, lookup 12, "
         "forceTerminate 12, kill 12 9, lookup 30, kill 30 9, applications 3",
         "Could not close the running Kelvo processes (PIDs 12, 30). Quit Kelvo and try again."},
        {"another user's",
         [](ScriptedSystem& s) { s.processes = {{.pid = 8, .application = false, .signalError = EPERM}}; },
         "applications 0, lookup 8, kill 8 15, applications 2, lookup 8, kill 8 9, applications 3",
         "Could not close the running Kelvo process (PID 8). Quit Kelvo and try again."},
        {"started during the first wait",
         [](ScriptedSystem& s) {
             s.processes = {{.pid = 5, .quitsAfter = 1.0}, {.pid = 9, .quitsAfter = std::nullopt, .startTime = 0.5}};
         },
         "applications 0, lookup 5, terminate 5, applications 1, lookup 9, forceTerminate 9, applications 1", ""},
        {"started during the second wait",
         [](ScriptedSystem& s) {
             s.processes = {unstoppable(5), unstoppable(6)};
             s.processes[0].exitTime = 2.5;
             s.processes[1].startTime = 2.5;
         },
         "applications 0, lookup 5, kill 5 15, applications 2, lookup 5, kill 5 9, applications 2.5",
         "Could not close the running Kelvo process (PID 6). Quit Kelvo and try again."},
        {"third listing fails",
         [](ScriptedSystem& s) { s.processes = {unstoppable(5)}; s.toolAnswers = {kListing5, kListing5, kFailing}; },
         "applications 0, lookup 5, kill 5 15, applications 2, lookup 5, kill 5 9, applications 3",
         kLead + "pgrep: out of memory"},
    };
    for (const auto& row : rows) {
        ScriptedSystem system;
        row.setUp(system);
        platform::ScopedServices scope(system.services());
        auto result = engine::InstallerTestAccess::stopRunningInstances(engine::Installer({"x"}));
        EXPECT_EQ(system.events("run"), row.events) << row.name;
        EXPECT_EQ(result ? "" : result.error().localizedDescription(), row.error) << row.name;
    }
}

}  // namespace
