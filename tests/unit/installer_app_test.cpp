// The installer application on the scripted machine and toolkit: its window, the one install run
// and each way it ends. The test plays the event loop: it runs the queues' tasks by hand.
#include <gtest/gtest.h>

#include "installer_app_delegate.h"
#include "support/scripted_toolkit.h"

namespace {

using namespace testing_support;
using platform::ui::Rect;

const std::string kCopying = "Copying Kelvo to your Applications folder\u2026";
const std::string kLaunching = "Launching Kelvo\u2026 It will eject this installer disk for you.";
const std::string kOpen = "open /Applications/Kelvo.app [--eject-installer-volume /Volumes/Kelvo] activated";
const std::string kStarted = "bar start, window shown, activated, background";

struct AppRun {
    // The platform has finished launching the installer started with `arguments`.
    void start(const std::vector<std::string>& arguments = {}) {
        system.commandLine.insert(system.commandLine.end(), arguments.begin(), arguments.end());
        delegate = std::make_shared<installer_app::InstallerAppDelegate>();
        toolkit.setDelegate(delegate.get());
        delegate->applicationDidFinishLaunching();
    }
    // install() runs in the background and hands its outcome to the main queue.
    void install() { system.runBackgroundTasks(); system.runMainTasks(); }
    // What the application did, without the steps of install() itself.
    std::string events() const { return system.events("background: "); }

    ScriptedSystem system;
    ScriptedToolkit toolkit{system};
    platform::ScopedServices services{system.services()};
    platform::ui::ScopedToolkit toolkitScope{toolkit};
    std::shared_ptr<installer_app::InstallerAppDelegate> delegate;
};

TEST(InstallerApp, BuildsItsFixedWindow) {
    using namespace platform::ui;
    AppRun run;
    run.start();
    const ScriptedToolkit& made = run.toolkit;
    EXPECT_EQ(made.window, "0,0 460x220 style 3 backing 2, title Install Kelvo, kept, centered");
    const auto& content = dynamic_cast<const ScriptedViewOf<View>&>(*made.contentView);
    ASSERT_EQ(content.subviews.size(), 4u);  // from the back: the icon, the title, the status line, the bar
    const auto& icon = dynamic_cast<const ScriptedImageView&>(*content.subviews[0]);
    const auto& title = dynamic_cast<const ScriptedLabel&>(*content.subviews[1]);
    const auto& status = dynamic_cast<const ScriptedLabel&>(*content.subviews[2]);
    const auto& bar = dynamic_cast<const ScriptedBar&>(*content.subviews[3]);
    EXPECT_EQ((std::vector{content.frame(), icon.frame(), title.frame(), status.frame(), bar.frame()}),
              (std::vector<Rect>{{0, 0, 460, 220}, {198, 132, 64, 64}, {20, 96, 420, 26}, {24, 44, 412, 44}, {60, 20, 340, 20}}));
    EXPECT_EQ(std::tuple(icon.image, icon.scaling), std::tuple(made.icon, ImageScaling::ProportionallyUpOrDown));
    EXPECT_EQ(std::tuple(title.text, title.font.size, title.font.weight, title.alignment),
              std::tuple("Installing Kelvo", 18, FontWeight::Semibold, TextAlignment::Center));
    EXPECT_EQ(std::tuple(status.text, status.font.size, status.font.weight, status.color, status.alignment,
                         status.lineBreakMode, status.maximumLines),
              std::tuple(kCopying, 12, FontWeight::Regular, Color::secondaryLabelColor, TextAlignment::Center,
                         LineBreakMode::ByWordWrapping, 3));
    EXPECT_EQ(std::tuple(bar.style, bar.indeterminate), std::tuple(ProgressIndicatorStyle::Bar, true));
    run.install();
    EXPECT_EQ(status.text, kLaunching) << "the status line shown is the one the install reports in";
}

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
