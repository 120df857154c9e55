// The installer's one window as the application builds it on the scripted toolkit.
#include <gtest/gtest.h>

#include "scripted_app_run.h"

namespace {

using namespace testing_support;
using platform::ui::Rect;

const std::string kCopying = "Copying Kelvo to your Applications folder\u2026";
const std::string kLaunching = "Launching Kelvo\u2026 It will eject this installer disk for you.";

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

}  // namespace
