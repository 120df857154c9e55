#include <gtest/gtest.h>

#include "support/delegate_run.h"

namespace {

using namespace testing_support;
using platform::ui::TerminateReply;

const std::string kLaunching = "Launching Kelvo\u2026 It will eject this installer disk for you.";

struct Ending {
    const char* row;
    std::vector<std::string> arguments;
    std::optional<engine::InstallError> installError;
    std::optional<platform::Error> launchError;  // used when the launch runs
    bool launches;
    std::string status;
    std::optional<double> delay;           // the delayed termination, when there is one
    std::optional<std::string> alertText;  // the alert's informative text, when there is one
};

const std::string kMissing = engine::InstallError::embeddedAppMissing().localizedDescription();
const std::string kLaunchFailed =
    engine::InstallError::launchFailed("The file could not be opened.").localizedDescription();

const Ending kEndings[] = {
    {"finishing after launch", {}, {}, {}, true, kLaunching, 1.0, {}},
    {"finishing after skip", {"--no-launch"}, {}, {}, false,
     "Installed to /Applications/Kelvo.app (launch skipped).", 1.5, {}},
    {"finishing after skip with --dest", {"--dest", "/Users/me/Apps", "--no-launch"}, {}, {}, false,
     "Installed to /Users/me/Apps/Kelvo.app (launch skipped).", 1.5, {}},
    {"install failed", {}, engine::InstallError::embeddedAppMissing(), {}, false, kMissing, {}, kMissing},
    {"launch failed", {}, {}, platform::Error("The file could not be opened."), true, kLaunchFailed, {},
     kLaunchFailed},
};

TEST(InstallRunEndings, EachOutcomeShowsItsTextStopsTheBarAndEndsAsItShould) {
    for (const Ending& ending : kEndings) {
        SCOPED_TRACE(ending.row);
        auto outcome = ending.installError ? InstallOutcome::failure(*ending.installError) : InstallOutcome();
        DelegateRun run(ending.arguments, outcome);
        run.launchAndInstall();

        EXPECT_EQ(run.log.count("engine.launchInstalledApp"), ending.launches ? 1 : 0);
        if (ending.launches) {
            EXPECT_EQ(run.status().text, kLaunching) << "while launching";
            EXPECT_TRUE(run.bar().animating) << "while launching";
            EXPECT_FALSE(run.toolkit.application.terminated);
            run.launchCompletion(ending.launchError);
        }

        EXPECT_EQ(run.status().text, ending.status);
        EXPECT_FALSE(run.bar().animating);
        if (ending.delay) {
            ASSERT_EQ(run.dispatch.delayed().size(), 1u);
            EXPECT_EQ(run.dispatch.delayed()[0].seconds, *ending.delay);
            EXPECT_LT(run.log.indexOf("progress 1.stopAnimation"),
                      run.log.indexOf("dispatch.mainAsyncAfter " + std::to_string(*ending.delay)));
            EXPECT_FALSE(run.toolkit.application.terminated) << "ended before the delay";
            run.dispatch.runDelayedTasks();
            EXPECT_TRUE(run.toolkit.application.terminated);
            EXPECT_TRUE(run.toolkit.alerts.empty());
        }
        if (ending.alertText) {
            ASSERT_EQ(run.toolkit.alerts.size(), 1u);
            const ScriptedAlert& alert = *run.toolkit.alerts[0];
            EXPECT_EQ(alert.messageText, "Installation Problem");
            EXPECT_EQ(alert.informativeText, *ending.alertText);
            EXPECT_EQ(alert.informativeText, run.status().text);
            EXPECT_EQ(alert.style, platform::ui::AlertStyle::Warning);
            EXPECT_EQ(alert.buttons, std::vector<std::string>{"Quit"});
            EXPECT_TRUE(run.dispatch.delayed().empty());
            EXPECT_TRUE(run.toolkit.application.terminated) << "not ended after the alert";
            EXPECT_LT(run.log.indexOf("alert.runModal"), run.log.indexOf("app.terminate reply=1"));
        }
        EXPECT_EQ(run.log.offMainEntries().size(), 2u) << "only install and its hand-back run off main";
    }
}

TEST(InstallRunEndings, ClosingTheWindowDuringTheInstallEndsOnlyOnceTheInstallReturns) {
    for (bool succeeds : {true, false}) {
        SCOPED_TRACE(succeeds ? "install succeeds" : "install fails");
        DelegateRun run({}, succeeds ? InstallOutcome()
                                     : InstallOutcome::failure(engine::InstallError::embeddedAppMissing()));
        run.delegate->applicationDidFinishLaunching();
        run.toolkit.application.terminate();  // what closing the last window leads to
        EXPECT_EQ(run.log.indexOf("app.terminate reply=2"), run.log.entries().size() - 1);
        EXPECT_FALSE(run.toolkit.application.terminated) << "ended with the copy half done";

        run.dispatch.runBackgroundTasks();
        run.dispatch.runMainTasks();
        EXPECT_TRUE(run.toolkit.application.terminated);
        EXPECT_EQ(run.log.count("app.replyToApplicationShouldTerminate true"), 1);
        EXPECT_EQ(run.log.count("engine.launchInstalledApp"), 0) << "launched after the user quit";
        EXPECT_TRUE(run.toolkit.alerts.empty()) << "alert after the user quit";
        EXPECT_EQ(run.status().text, "Copying Kelvo to your Applications folder\u2026");
    }
}

TEST(InstallRunEndings, ClosingTheWindowOnceTheInstallHasReturnedEndsAtOnce) {
    DelegateRun run;
    run.launchAndInstall();
    ASSERT_EQ(run.log.count("engine.launchInstalledApp"), 1);
    run.toolkit.application.terminate();
    EXPECT_TRUE(run.toolkit.application.terminated);
    EXPECT_EQ(run.log.count("app.terminate reply=1"), 1);
}

}  // namespace
