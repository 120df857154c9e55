#include "platform/macos/ui/window.h"

#import <AppKit/AppKit.h>

#include "platform/macos/ns_string.h"
#include "platform/macos/ui/view.h"

namespace platform::macos {
namespace {

struct StyleBit {
    unsigned portable;
    NSWindowStyleMask native;
};

constexpr StyleBit kStyleBits[] = {
    {ui::WindowStyleMaskTitled, NSWindowStyleMaskTitled},
    {ui::WindowStyleMaskClosable, NSWindowStyleMaskClosable},
};

NSWindowStyleMask nativeStyleMask(unsigned styleMask) {
    NSWindowStyleMask native = NSWindowStyleMaskBorderless;
    for (const StyleBit& bit : kStyleBits) {
        if (styleMask & bit.portable) native |= bit.native;
    }
    return native;
}

NSBackingStoreType nativeBacking(ui::BackingStoreType backing) {
    switch (backing) {
        case ui::BackingStoreType::Buffered: return NSBackingStoreBuffered;
    }
    return NSBackingStoreBuffered;
}

class NativeWindow final : public ui::Window {
public:
    NativeWindow(const ui::Rect& contentRect, unsigned styleMask, ui::BackingStoreType backing,
                 bool defer)
        : owned_([[NSWindow alloc]
              initWithContentRect:NSMakeRect(contentRect.x, contentRect.y, contentRect.width,
                                             contentRect.height)
                        styleMask:nativeStyleMask(styleMask)
                          backing:nativeBacking(backing)
                            defer:defer ? YES : NO]),
          window_(owned_) {
        window_.releasedWhenClosed = NO;
    }

    void setTitle(const std::string& title) override { window_.title = toNSString(title); }

    // ARC must never release what AppKit's closing releases too: the window has one owner, this
    // wrapper or AppKit, and the reference passes between them with the flag.
    void setReleasedWhenClosed(bool released) override {
        window_.releasedWhenClosed = released ? YES : NO;
        if (released && owned_ != nil) {
            (void)CFBridgingRetain(owned_);
            owned_ = nil;
        } else if (!released && owned_ == nil) {
            owned_ = CFBridgingRelease((__bridge CFTypeRef)window_);
        }
    }

    void center() override { [window_ center]; }
    void setContentView(std::shared_ptr<ui::View> view) override {
        window_.contentView = NativeView::of(*view);
    }
    void makeKeyAndOrderFront() override { [window_ makeKeyAndOrderFront:nil]; }

private:
    // The window while this wrapper owns it; nil while AppKit's closing is to free it.
    NSWindow* owned_;
    // The window, owned here or not.
    __unsafe_unretained NSWindow* const window_;
};

}  // namespace

std::shared_ptr<ui::Window> makeWindow(const ui::Rect& contentRect, unsigned styleMask,
                                       ui::BackingStoreType backing, bool defer) {
    return std::make_shared<NativeWindow>(contentRect, styleMask, backing, defer);
}

}  // namespace platform::macos
