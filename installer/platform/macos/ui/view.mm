#include "platform/macos/ui/view.h"

#import <AppKit/AppKit.h>

#include <cstdio>
#include <cstdlib>

namespace platform::macos {
namespace {

class PlainView final : public NativeViewOf<ui::View> {
public:
    explicit PlainView(const ui::Rect& frame)
        : view_([[NSView alloc]
              initWithFrame:NSMakeRect(frame.x, frame.y, frame.width, frame.height)]) {}

    NSView* nsView() const override { return view_; }

private:
    NSView* const view_;
};

}  // namespace

NSView* NativeView::of(ui::View& view) {
    auto* native = dynamic_cast<NativeView*>(&view);
    if (native == nullptr) {
        std::fprintf(stderr, "ui: a view not made by the AppKit toolkit was handed to it\n");
        std::abort();
    }
    return native->nsView();
}

ui::Rect NativeView::nativeFrame() const {
    NSRect frame = nsView().frame;
    return ui::Rect{frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
}

void NativeView::setNativeFrame(const ui::Rect& frame) {
    nsView().frame = NSMakeRect(frame.x, frame.y, frame.width, frame.height);
}

void NativeView::addNativeSubview(ui::View& subview) { [nsView() addSubview:of(subview)]; }

std::shared_ptr<ui::View> makeView(const ui::Rect& frame) {
    return std::make_shared<PlainView>(frame);
}

}  // namespace platform::macos
