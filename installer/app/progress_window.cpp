// The installer's one window: its icon, the title line, the status line and the progress bar, laid
// out from the content width so the pieces stay centred with fixed margins.
#include "installer_app_delegate.h"

namespace installer_app {
namespace {

using platform::ui::Rect;

constexpr const char* kWindowTitle = "Install Kelvo";
constexpr const char* kTitleLine = "Installing Kelvo";

constexpr double kContentWidth = 460;
constexpr double kContentHeight = 220;

constexpr double kIconSide = 64;
constexpr double kIconBottom = 132;
constexpr double kTitleMargin = 20;
constexpr double kTitleBottom = 96;
constexpr double kTitleHeight = 26;
constexpr double kStatusMargin = 24;
constexpr double kStatusBottom = 44;
constexpr double kStatusHeight = 44;
constexpr double kBarMargin = 60;
constexpr double kBarBottom = 20;
constexpr double kBarHeight = 20;

constexpr platform::ui::Font kTitleFont{18, platform::ui::FontWeight::Semibold};
constexpr platform::ui::Font kStatusFont{12, platform::ui::FontWeight::Regular};
constexpr int kStatusMaximumLines = 3;

// A frame `margin` points in from both sides of the content area.
constexpr Rect withSideMargin(double margin, double bottom, double height) {
    return Rect{margin, bottom, kContentWidth - 2 * margin, height};
}

}  // namespace

void InstallerAppDelegate::buildWindow() {
    platform::ui::Toolkit& toolkit = platform::ui::toolkit();
    const Rect content{0, 0, kContentWidth, kContentHeight};

    window_ = toolkit.makeWindow(
        content, platform::ui::WindowStyleMaskTitled | platform::ui::WindowStyleMaskClosable,
        platform::ui::BackingStoreType::Buffered, false);
    window_->setTitle(kWindowTitle);
    window_->setReleasedWhenClosed(false);
    window_->center();

    std::shared_ptr<platform::ui::View> contentView = toolkit.makeView(content);

    auto icon = toolkit.makeImageView(
        Rect{(kContentWidth - kIconSide) * 0.5, kIconBottom, kIconSide, kIconSide});
    icon->setImage(toolkit.sharedApplication().applicationIconImage());
    icon->setImageScaling(platform::ui::ImageScaling::ProportionallyUpOrDown);
    contentView->addSubview(icon);

    auto title = toolkit.labelWithString(kTitleLine);
    title->setFont(kTitleFont);
    title->setAlignment(platform::ui::TextAlignment::Center);
    title->setFrame(withSideMargin(kTitleMargin, kTitleBottom, kTitleHeight));
    contentView->addSubview(title);

    statusLabel_->setFont(kStatusFont);
    statusLabel_->setTextColor(platform::ui::Color::secondaryLabelColor);
    statusLabel_->setAlignment(platform::ui::TextAlignment::Center);
    statusLabel_->setLineBreakMode(platform::ui::LineBreakMode::ByWordWrapping);
    statusLabel_->setMaximumNumberOfLines(kStatusMaximumLines);
    statusLabel_->setFrame(withSideMargin(kStatusMargin, kStatusBottom, kStatusHeight));
    contentView->addSubview(statusLabel_);

    progress_->setStyle(platform::ui::ProgressIndicatorStyle::Bar);
    progress_->setIndeterminate(true);
    progress_->setFrame(withSideMargin(kBarMargin, kBarBottom, kBarHeight));
    progress_->startAnimation();
    contentView->addSubview(progress_);

    window_->setContentView(contentView);
    window_->makeKeyAndOrderFront();
}

}  // namespace installer_app
