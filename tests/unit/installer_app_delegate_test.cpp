#include <gtest/gtest.h>

#include "support/delegate_run.h"

namespace {

using namespace testing_support;

const std::string kInitialStatus = "Copying Kelvo to your Applications folder\u2026";

TEST(InstallerAppDelegate, ConstructionMakesTheStatusLineAndBarButNoWindow) {
    DelegateRun run;
    EXPECT_EQ(run.log.entries(), (std::vector<std::string>{
        "make label 1", "label 1.setFrame 0,0,0,0", "labelWithString " + kInitialStatus,
        "make progress 1", "progress 1.setFrame 0,0,0,0"}));
    EXPECT_EQ(run.toolkit.window, nullptr);
    EXPECT_TRUE(run.delegate->applicationShouldTerminateAfterLastWindowClosed(run.toolkit.application));
}

TEST(InstallerAppDelegate, ShowsTheWindowThenActivatesThenStartsTheInstallInTheBackground) {
    DelegateRun run;
    run.delegate->applicationDidFinishLaunching();
    long shown = run.log.indexOf("window.makeKeyAndOrderFront");
    long activated = run.log.indexOf("app.activateIgnoringOtherApps true");
    long queued = run.log.indexOf("dispatch.globalUserInitiatedAsync");
    ASSERT_GE(shown, 0);
    EXPECT_LT(shown, activated);
    EXPECT_LT(activated, queued);
    EXPECT_EQ(run.log.count("engine.install dest=/Applications"), 0) << "install ran on the main thread";

    run.dispatch.runBackgroundTasks();
    run.dispatch.runMainTasks();
    EXPECT_EQ(run.log.offMainEntries(), (std::vector<std::string>{
        "engine.install dest=/Applications", "dispatch.mainAsync"}));
    EXPECT_EQ(run.log.count("dispatch.globalUserInitiatedAsync"), 1);
    EXPECT_EQ(run.log.count("engine.install dest=/Applications"), 1);
}

TEST(InstallerAppDelegate, TheInstallRunsOnceWhateverItsOutcome) {
    for (bool succeeds : {true, false}) {
        DelegateRun run({}, succeeds ? InstallOutcome()
                                     : InstallOutcome::failure(engine::InstallError::embeddedAppMissing()));
        run.launchAndInstall();
        if (run.launchCompletion) run.launchCompletion(std::nullopt);
        run.dispatch.runMainTasks();
        run.dispatch.runDelayedTasks();
        EXPECT_EQ(run.log.count("engine.install dest=/Applications"), 1) << "succeeds=" << succeeds;
        EXPECT_EQ(run.dispatch.waitingBackgroundTasks(), 0u) << "succeeds=" << succeeds;
    }
}

TEST(InstallerAppDelegate, TheStatusStaysWhileTheInstallRuns) {
    DelegateRun run({"--dest", "/tmp/elsewhere"});
    run.delegate->applicationDidFinishLaunching();
    EXPECT_EQ(run.status().text, kInitialStatus);
    EXPECT_TRUE(run.bar().animating);
    EXPECT_FALSE(run.toolkit.application.terminated);
}

}  // namespace
