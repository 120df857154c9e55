#include <gtest/gtest.h>

#include <cerrno>

#include "support/installer_test_access.h"
#include "support/scripted_processes.h"

namespace {

using engine::Installer;
using engine::InstallerTestAccess;
using engine::ProcessIdentifiers;
using testing_support::ScriptedProcess;
using testing_support::ScriptedSystem;

ScriptedProcess process(std::int32_t pid, std::optional<double> exitTime) {
    ScriptedProcess scripted;
    scripted.pid = pid;
    scripted.exitTime = exitTime;
    return scripted;
}

// Probes of process 5 and pauses, alternating, `pauses` times, then one last probe.
std::vector<std::string> pollOf5(int pauses) {
    std::vector<std::string> events;
    for (int i = 0; i < pauses; ++i) {
        events.push_back("kill 5 0");
        events.push_back("sleep 0.1");
    }
    events.push_back("kill 5 0");
    return events;
}

TEST(WaitForProcessesToExit, PollsFromOnceAtOnceToOnceAfterTheDeadline) {
    const struct {
        const char* name;
        std::optional<double> exitTime;  // of process 5
        int signalError;
        double timeout;
        bool allExited;
        int pauses;
    } rows[] = {
        {"gone already: first test at once, no pause", 0.0, 0, 2.0, true, 0},
        {"never exits, 2 s", std::nullopt, 0, 2.0, false, 20},
        {"never exits, 1 s", std::nullopt, 0, 1.0, false, 10},
        {"EPERM counts as running", std::nullopt, EPERM, 1.0, false, 10},
        {"exits during the wait", 0.35, 0, 2.0, true, 4},
        {"exits at the deadline: the last test sees it", 1.0, 0, 1.0, true, 10},
        {"deadline between polls: one interval longer", std::nullopt, 0, 0.25, false, 3},
        {"zero timeout: the single last test", std::nullopt, 0, 0.0, false, 0},
        {"negative timeout: the single last test", std::nullopt, 0, -1.0, false, 0},
        {"zero timeout, gone", 0.0, 0, 0.0, true, 0},
    };
    for (const auto& row : rows) {
        ScriptedSystem scripted;
        scripted.processes = {process(5, row.exitTime)};
        scripted.processes[0].signalError = row.signalError;
        platform::ScopedServices scope(scripted.services());
        bool allExited = InstallerTestAccess::waitForProcessesToExit(Installer({"installer"}), {5}, row.timeout);
        EXPECT_EQ(allExited, row.allExited) << row.name;
        EXPECT_EQ(scripted.events(), pollOf5(row.pauses)) << row.name;
    }
}

TEST(WaitForProcessesToExit, EmptyListIsDoneAtOnce) {
    ScriptedSystem scripted;
    platform::ScopedServices scope(scripted.services());
    EXPECT_TRUE(InstallerTestAccess::waitForProcessesToExit(Installer({"installer"}), {}, 2.0));
    EXPECT_TRUE(scripted.events().empty());
}

TEST(WaitForProcessesToExit, TestsTheListInOrderUpToTheFirstProcessStillThere) {
    ScriptedSystem scripted;
    scripted.processes = {process(3, 0.0), process(4, 0.15), process(9, std::nullopt)};
    platform::ScopedServices scope(scripted.services());
    EXPECT_FALSE(InstallerTestAccess::waitForProcessesToExit(Installer({"installer"}), {3, 4, 9}, 0.2));
    EXPECT_EQ(scripted.events(), (std::vector<std::string>{"kill 3 0", "kill 4 0", "sleep 0.1", "kill 3 0",
                                                           "kill 4 0", "sleep 0.1", "kill 3 0", "kill 4 0",
                                                           "kill 9 0"}));
}

}  // namespace
