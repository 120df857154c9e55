// The toolkit on AppKit. The shared NSApplication is fetched on the first request for the
// application object or for any window or view, since AppKit's windows and views need it first.
#include "platform/ui/toolkit.h"

#import <Foundation/Foundation.h>

#include "platform/macos/ui/alert.h"
#include "platform/macos/ui/application.h"
#include "platform/macos/ui/image_view.h"
#include "platform/macos/ui/label.h"
#include "platform/macos/ui/progress_indicator.h"
#include "platform/macos/ui/view.h"
#include "platform/macos/ui/window.h"

namespace platform::macos {
namespace {

// Objects may be made before the event loop runs (the application object, and what its delegate
// makes when constructed), where AppKit has no autorelease pool yet: each is made in a pool of its
// own, so nothing AppKit autoreleases meanwhile is leaked.
template <class Make>
auto made(Make make) {
    @autoreleasepool {
        return make();
    }
}

class NativeToolkit final : public ui::Toolkit {
public:
    ui::Application& sharedApplication() override {
        if (!application_) application_ = made(makeApplication);
        return *application_;
    }

    std::shared_ptr<ui::Window> makeWindow(const ui::Rect& contentRect, unsigned styleMask,
                                           ui::BackingStoreType backing, bool defer) override {
        sharedApplication();
        return made([&] { return macos::makeWindow(contentRect, styleMask, backing, defer); });
    }

    std::shared_ptr<ui::View> makeView(const ui::Rect& frame) override {
        sharedApplication();
        return made([&] { return macos::makeView(frame); });
    }

    std::shared_ptr<ui::ImageView> makeImageView(const ui::Rect& frame) override {
        sharedApplication();
        return made([&] { return macos::makeImageView(frame); });
    }

    std::shared_ptr<ui::Label> labelWithString(const std::string& text) override {
        sharedApplication();
        return made([&] { return makeLabel(text); });
    }

    std::shared_ptr<ui::ProgressIndicator> makeProgressIndicator() override {
        sharedApplication();
        return made(macos::makeProgressIndicator);
    }

    std::shared_ptr<ui::Alert> makeAlert() override {
        sharedApplication();
        return made(macos::makeAlert);
    }

private:
    std::unique_ptr<ui::Application> application_;
};

}  // namespace
}  // namespace platform::macos

namespace platform::ui {

// Never destroyed: like the shared NSApplication, it lasts until the process exits, which AppKit
// brings about from within the event loop; no exit-time destructor is to call into AppKit for it.
Toolkit& backendToolkit() {
    static auto* toolkit = new macos::NativeToolkit;
    return *toolkit;
}

}  // namespace platform::ui
