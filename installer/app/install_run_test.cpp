// The one install run of the application and each way it ends, on the scripted machine and toolkit.
#include <gtest/gtest.h>

#include "scripted_app_run.h"

namespace {

using namespace testing_support;

const std::string kLaunching = "Launching Kelvo\u2026 It will eject this installer disk for you.";
const std::string kOpen = "open /Applications/Kelvo.app [--eject-installer-volume /Volumes/Kelvo] activated";
const std::string kStarted = "bar start, window shown, activated, background";

TEST(InstallerApp, EndsAfterADelayOnSuccessAndThroughTheAlertOnFailure) {
    const std::string missing = engine::InstallError::embeddedAppMissing().localizedDescription();
    const std::string launchFailed = "Kelvo was installed, but could not be launched automatically.\nDenied.\n"
                                     "Open Kelvo from your Applications folder to finish setup.";
    const struct {
        const char* name;
        void (*setUp)(ScriptedSystem&);
        std::vector<std::string> arguments;
        std::optional<std::string> launchError;
        std::string events;
    } rows[] = {
        {"launched", [](ScriptedSystem&) {}, {}, std::nullopt,
         kStarted + ", text " + kLaunching + ", " + kOpen + ", main, bar stop, after 1, terminate"},
        {"launched from a local folder", [](ScriptedSystem& s) { s.bundle = "/Users/me/Install Kelvo.app"; },
         {"--dest", "/Users/me/Apps"}, std::nullopt,
         kStarted + ", text " + kLaunching +
             ", open /Users/me/Apps/Kelvo.app activated, main, bar stop, after 1, terminate"},
        {"launch skipped", [](ScriptedSystem&) {}, {"--dest", "/Users/me/Apps", "--no-launch"}, std::nullopt,
         kStarted + ", text Installed to /Users/me/Apps/Kelvo.app (launch skipped)., bar stop, after 1.5, terminate"},
        {"install failed", [](ScriptedSystem& s) { s.paths.clear(); }, {}, std::nullopt,
         kStarted + ", bar stop, text " + missing + ", alert Installation Problem: " + missing +
             " (warning) [Quit], terminate"},
        {"launch failed", [](ScriptedSystem&) {}, {}, "Denied.",
         kStarted + ", text " + kLaunching + ", " + kOpen + ", main, bar stop, text " + launchFailed +
             ", alert Installation Problem: " + launchFailed + " (warning) [Quit], terminate"},
    };
    for (const auto& row : rows) {
        AppRun run;
        row.setUp(run.system);
        run.start(row.arguments);
        run.install();
        if (run.system.openHandler) {
            using Opened = platform::Expected<void, platform::Error>;
            run.system.openHandler(row.launchError ? Opened::failure(platform::Error(*row.launchError)) : Opened());
            run.system.runMainTasks();
        }
        EXPECT_EQ(run.events(), row.events) << row.name;
    }
}

}  // namespace
