#include "platform/macos/ui/application.h"

#import <AppKit/AppKit.h>

#include "platform/macos/ui/application/delegate_bridge.h"
#include "platform/macos/ui/image_view.h"

namespace platform::macos {
namespace {

NSApplicationActivationPolicy nativePolicy(ui::ActivationPolicy policy) {
    switch (policy) {
        case ui::ActivationPolicy::Regular: return NSApplicationActivationPolicyRegular;
    }
    return NSApplicationActivationPolicyRegular;
}

class NativeApplication final : public ui::Application {
public:
    NativeApplication() : application_(NSApplication.sharedApplication) {}

    void setActivationPolicy(ui::ActivationPolicy policy) override {
        [application_ setActivationPolicy:nativePolicy(policy)];
    }

    void setDelegate(ui::ApplicationDelegate* delegate) override {
        bridge_.reset();
        if (delegate != nullptr) {
            bridge_ = std::make_unique<ApplicationDelegateBridge>(*this, *delegate);
        }
    }

    void run() override { [application_ run]; }
    void terminate() override { [application_ terminate:nil]; }

    // From macOS 14 on, activateIgnoringOtherApps: does nothing; activate is what comes forward
    // there, whether or not another application is active.
    void activateIgnoringOtherApps(bool ignoringOtherApps) override {
        if (@available(macOS 14.0, *)) {
            [application_ activate];
        } else {
            [application_ activateIgnoringOtherApps:ignoringOtherApps ? YES : NO];
        }
    }

    // AppKit gives its generic application icon to a bundle without an icon of its own.
    std::shared_ptr<ui::Image> applicationIconImage() override {
        return imageFrom(application_.applicationIconImage);
    }

private:
    NSApplication* const application_;
    std::unique_ptr<ApplicationDelegateBridge> bridge_;
};

}  // namespace

std::unique_ptr<ui::Application> makeApplication() { return std::make_unique<NativeApplication>(); }

}  // namespace platform::macos
