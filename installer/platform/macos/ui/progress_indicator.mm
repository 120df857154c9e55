#include "platform/macos/ui/progress_indicator.h"

#import <AppKit/AppKit.h>

#include "platform/macos/ui/view.h"

namespace platform::macos {
namespace {

NSProgressIndicatorStyle nativeStyle(ui::ProgressIndicatorStyle style) {
    switch (style) {
        case ui::ProgressIndicatorStyle::Bar: return NSProgressIndicatorStyleBar;
    }
    return NSProgressIndicatorStyleBar;
}

class NativeProgressIndicator final : public NativeViewOf<ui::ProgressIndicator> {
public:
    // AppKit's new indicators are indeterminate; a new one here starts determinate, as promised. It
    // animates on a thread of its own, so it keeps moving while the main thread runs the
    // administrator's AppleScript.
    NativeProgressIndicator() : indicator_([[NSProgressIndicator alloc] init]) {
        indicator_.indeterminate = NO;
        indicator_.usesThreadedAnimation = YES;
    }

    NSView* nsView() const override { return indicator_; }

    void setStyle(ui::ProgressIndicatorStyle style) override {
        indicator_.style = nativeStyle(style);
    }
    void setIndeterminate(bool indeterminate) override {
        indicator_.indeterminate = indeterminate ? YES : NO;
    }
    void startAnimation() override { [indicator_ startAnimation:nil]; }
    void stopAnimation() override { [indicator_ stopAnimation:nil]; }

private:
    NSProgressIndicator* const indicator_;
};

}  // namespace

std::shared_ptr<ui::ProgressIndicator> makeProgressIndicator() {
    return std::make_shared<NativeProgressIndicator>();
}

}  // namespace platform::macos
