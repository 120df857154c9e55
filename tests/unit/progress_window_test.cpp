#include <gtest/gtest.h>

#include "support/delegate_run.h"

namespace {

using namespace testing_support;
using platform::ui::Rect;

class ProgressWindow : public testing::Test {
protected:
    void SetUp() override { run.delegate->applicationDidFinishLaunching(); }

    ScriptedView& content() { return dynamic_cast<ScriptedView&>(*run.toolkit.window->contentView); }

    DelegateRun run;
};

TEST_F(ProgressWindow, IsAFixedTitledClosableWindowOf460By220) {
    EXPECT_GE(run.log.indexOf("makeWindow 0,0,460,220 style=3 backing=2 defer=false"), 0);
    EXPECT_EQ(run.toolkit.window->title, "Install Kelvo");
    EXPECT_EQ(run.toolkit.window->releasedWhenClosed, false);
    EXPECT_LT(run.log.indexOf("window.center"), run.log.indexOf("window.setContentView view 1"));
    EXPECT_LT(run.log.indexOf("window.setContentView view 1"), run.log.indexOf("window.makeKeyAndOrderFront"));
    EXPECT_EQ(content().frame(), (Rect{0, 0, 460, 220}));
}

TEST_F(ProgressWindow, PlacesIconTitleStatusAndBarInThatOrder) {
    struct Piece { const char* name; Rect frame; };
    const Piece expected[] = {
        {"imageView 1", {198, 132, 64, 64}},
        {"label 2", {20, 96, 420, 26}},
        {"label 1", {24, 44, 412, 44}},
        {"progress 1", {60, 20, 340, 20}},
    };
    ASSERT_EQ(content().subviews.size(), std::size(expected));
    for (std::size_t index = 0; index < std::size(expected); ++index) {
        auto& piece = dynamic_cast<ScriptedView&>(*content().subviews[index]);
        EXPECT_EQ(piece.name(), expected[index].name) << "subview " << index;
        EXPECT_EQ(describe(piece.frame()), describe(expected[index].frame)) << expected[index].name;
    }
}

TEST_F(ProgressWindow, TheIconIsTheApplicationsOwnScaledToFit) {
    const ScriptedImageView& icon = *run.toolkit.imageViews.at(0);
    EXPECT_EQ(icon.image, run.toolkit.application.icon);
    EXPECT_EQ(icon.scaling, platform::ui::ImageScaling::ProportionallyUpOrDown);
}

TEST_F(ProgressWindow, TitleAndStatusLinesHaveTheirTextsAndStyles) {
    const ScriptedLabel& title = *run.toolkit.labels.at(1);
    EXPECT_EQ(title.text, "Installing Kelvo");
    EXPECT_EQ(title.font.size, 18);
    EXPECT_EQ(title.font.weight, platform::ui::FontWeight::Semibold);
    EXPECT_EQ(title.alignment, platform::ui::TextAlignment::Center);

    const ScriptedLabel& status = run.status();
    EXPECT_EQ(status.text, "Copying Kelvo to your Applications folder\u2026");
    EXPECT_EQ(status.font.size, 12);
    EXPECT_EQ(status.font.weight, platform::ui::FontWeight::Regular);
    EXPECT_EQ(status.color, platform::ui::Color::secondaryLabelColor);
    EXPECT_EQ(status.alignment, platform::ui::TextAlignment::Center);
    EXPECT_EQ(status.lineBreakMode, platform::ui::LineBreakMode::ByWordWrapping);
    EXPECT_EQ(status.maximumLines, 3);
}

TEST_F(ProgressWindow, TheBarIsAnIndeterminateBarAnimatingBeforeItIsAdded) {
    const ScriptedProgressIndicator& bar = run.bar();
    EXPECT_EQ(bar.style, platform::ui::ProgressIndicatorStyle::Bar);
    EXPECT_TRUE(bar.indeterminate);
    EXPECT_TRUE(bar.animating);
    EXPECT_LT(run.log.indexOf("progress 1.startAnimation"), run.log.indexOf("view 1.addSubview progress 1"));
}

}  // namespace
