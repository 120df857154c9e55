#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

#include "support/installer_test_access.h"
#include "support/scripted_processes.h"

namespace {

using engine::Installer;
using engine::InstallerTestAccess;
using testing_support::ScriptedProcess;
using testing_support::ScriptedSystem;
using testing_support::toolResult;
using Events = std::vector<std::string>;

const std::string kListing = "applications";
const std::string kTool = "run /usr/bin/pgrep -x -u 501 Kelvo";

ScriptedProcess copy(std::int32_t pid) {
    ScriptedProcess process;
    process.pid = pid;
    return process;
}

// A copy that ignores polite requests.
ScriptedProcess stubborn(std::int32_t pid) {
    ScriptedProcess process = copy(pid);
    process.quitsWhenAsked = false;
    return process;
}

// A copy that nothing ends (a zombie, say).
ScriptedProcess unstoppable(std::int32_t pid) {
    ScriptedProcess process = stubborn(pid);
    process.quitsWhenForced = false;
    return process;
}

class StopRunningInstances : public ::testing::Test {
protected:
    // Runs the step; the error's message, or "" on success.
    std::string stop() {
        platform::ScopedServices scope(system.services());
        auto result = InstallerTestAccess::stopRunningInstances(Installer({"installer"}));
        return result ? "" : result.error().localizedDescription();
    }

    ScriptedSystem system;
};

TEST_F(StopRunningInstances, NoCopyMeansOneListingAndNothingElse) {
    EXPECT_EQ(stop(), "");
    EXPECT_EQ(system.events(), (Events{kListing, kTool}));
}

TEST_F(StopRunningInstances, CopiesThatQuitWhenAskedAreListedTwiceAndNeverForced) {
    system.processes = {copy(12), copy(7)};
    EXPECT_EQ(stop(), "");
    EXPECT_EQ(system.decisions(),
              (Events{kListing, kTool, "lookup 7", "terminate 7", "lookup 12", "terminate 12", kListing, kTool}));
    // Both had gone at the wait's first test: no pause at all.
    EXPECT_EQ(system.secondsElapsed(), 0.0);
}

TEST_F(StopRunningInstances, FirstWaitPollsUntilTheCopiesHaveGone) {
    ScriptedProcess slow = copy(7);
    slow.quitDelay = 0.45;
    system.processes = {slow};
    EXPECT_EQ(stop(), "");
    EXPECT_EQ(system.countOf("sleep 0.1"), 5u);
    EXPECT_DOUBLE_EQ(system.secondsElapsed(), 0.5);
    EXPECT_EQ(system.countOf(kListing), 2u);
}

TEST_F(StopRunningInstances, PolitePassSignalsOnlyWhenNoRequestCouldBeMade) {
    ScriptedProcess withoutApplication = copy(3);
    withoutApplication.application = false;
    ScriptedProcess refusing = copy(4);
    refusing.terminateAccepted = false;
    system.processes = {withoutApplication, refusing, copy(5)};
    EXPECT_EQ(stop(), "");
    EXPECT_EQ(system.decisions(), (Events{kListing, kTool, "lookup 3", "kill 3 15", "lookup 4", "terminate 4",
                                          "kill 4 15", "lookup 5", "terminate 5", kListing, kTool}));
}

TEST_F(StopRunningInstances, ForcedPassSkipsTheKillWhenTheProbeFindsTheCopyGone) {
    system.processes = {stubborn(7)};
    EXPECT_EQ(stop(), "");
    EXPECT_EQ(system.decisions(), (Events{kListing, kTool, "lookup 7", "terminate 7", kListing, kTool, "lookup 7",
                                          "forceTerminate 7", kListing, kTool}));
    // After forceTerminate: the probe that finds it gone, then the second wait's first test.
    const Events& events = system.events();
    auto forced = std::find(events.begin(), events.end(), "forceTerminate 7");
    EXPECT_EQ(Events(forced + 1, events.end()), (Events{"kill 7 0", "kill 7 0", kListing, kTool}));
    EXPECT_DOUBLE_EQ(system.secondsElapsed(), 2.0);
}

TEST_F(StopRunningInstances, ForcedPassKillsWhatForceTerminateLeftAndReportsTheThirdListing) {
    ScriptedProcess withoutApplication = unstoppable(30);
    withoutApplication.application = false;
    system.processes = {unstoppable(12), withoutApplication};
    EXPECT_EQ(stop(), "Could not close the running Kelvo processes (PIDs 12, 30). Quit Kelvo and try again.");
    EXPECT_EQ(system.decisions(),
              (Events{kListing, kTool, "lookup 12", "terminate 12", "lookup 30", "kill 30 15", kListing, kTool,
                      "lookup 12", "forceTerminate 12", "kill 12 9", "lookup 30", "kill 30 9", kListing, kTool}));
    // Each wait ran to its deadline, and no longer.
    EXPECT_DOUBLE_EQ(system.secondsElapsed(), 3.0);
    EXPECT_EQ(system.countOf("sleep 0.1"), 30u);
}

TEST_F(StopRunningInstances, ProbeFailingWithEPERMCountsAsRunning) {
    ScriptedProcess otherUser = copy(8);
    otherUser.application = false;
    otherUser.signalError = EPERM;
    system.processes = {otherUser};
    EXPECT_EQ(stop(), "Could not close the running Kelvo process (PID 8). Quit Kelvo and try again.");
    EXPECT_EQ(system.decisions(), (Events{kListing, kTool, "lookup 8", "kill 8 15", kListing, kTool, "lookup 8",
                                          "kill 8 9", kListing, kTool}));
    EXPECT_DOUBLE_EQ(system.secondsElapsed(), 3.0);
}

TEST_F(StopRunningInstances, CopyStartedDuringTheFirstWaitIsForcedWithoutBeingAsked) {
    ScriptedProcess slow = copy(5);
    slow.quitDelay = 1.0;
    system.processes = {slow};
    system.at(0.5, [this] { system.processes.push_back(stubborn(9)); });
    EXPECT_EQ(stop(), "");
    EXPECT_EQ(system.decisions(), (Events{kListing, kTool, "lookup 5", "terminate 5", kListing, kTool, "lookup 9",
                                          "forceTerminate 9", kListing, kTool}));
}

TEST_F(StopRunningInstances, CopyStartedDuringTheSecondWaitIsReportedAlone) {
    system.processes = {unstoppable(5)};
    // The unstoppable copy ends by itself halfway through the second wait, as a new one starts.
    system.at(2.5, [this] {
        system.processes[0].exitTime = 2.5;
        system.processes.push_back(unstoppable(6));
    });
    EXPECT_EQ(stop(), "Could not close the running Kelvo process (PID 6). Quit Kelvo and try again.");
    EXPECT_EQ(system.countOf("lookup 6"), 0u);
}

TEST_F(StopRunningInstances, FailedListingEndsTheStepAndSignalsStaySent) {
    const struct {
        const char* name;
        std::size_t failingListing;  // 0 for the first
        Events decisions;
    } rows[] = {
        {"first listing", 0, {kListing, kTool}},
        {"second listing", 1, {kListing, kTool, "lookup 5", "kill 5 15", kListing, kTool}},
        {"third listing", 2,
         {kListing, kTool, "lookup 5", "kill 5 15", kListing, kTool, "lookup 5", "kill 5 9", kListing, kTool}},
    };
    for (const auto& row : rows) {
        ScriptedSystem scripted;
        ScriptedProcess process = unstoppable(5);
        process.application = false;
        scripted.processes = {process};
        for (std::size_t i = 0; i < row.failingListing; ++i) scripted.toolAnswers.push_back(toolResult(0, "5\n"));
        scripted.toolAnswers.push_back(toolResult(2, "", " pgrep: out of memory\n"));
        platform::ScopedServices scope(scripted.services());
        auto result = InstallerTestAccess::stopRunningInstances(Installer({"installer"}));
        ASSERT_FALSE(result) << row.name;
        EXPECT_EQ(result.error().localizedDescription(),
                  "Could not check for running Kelvo processes.\npgrep: out of memory")
            << row.name;
        EXPECT_EQ(scripted.decisions(), row.decisions) << row.name;
    }
}

}  // namespace
