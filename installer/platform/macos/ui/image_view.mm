#include "platform/macos/ui/image_view.h"

#import <AppKit/AppKit.h>

#include "platform/macos/ui/view.h"

namespace platform::macos {
namespace {

class NativeImage final : public ui::Image {
public:
    explicit NativeImage(NSImage* image) : image_(image) {}
    NSImage* nsImage() const { return image_; }

private:
    NSImage* const image_;
};

NSImageScaling nativeScaling(ui::ImageScaling scaling) {
    switch (scaling) {
        case ui::ImageScaling::ProportionallyUpOrDown: return NSImageScaleProportionallyUpOrDown;
    }
    return NSImageScaleProportionallyUpOrDown;
}

class NativeImageView final : public NativeViewOf<ui::ImageView> {
public:
    explicit NativeImageView(const ui::Rect& frame)
        : view_([[NSImageView alloc]
              initWithFrame:NSMakeRect(frame.x, frame.y, frame.width, frame.height)]) {}

    NSView* nsView() const override { return view_; }

    void setImage(std::shared_ptr<ui::Image> image) override {
        auto* native = dynamic_cast<NativeImage*>(image.get());
        view_.image = native != nullptr ? native->nsImage() : nil;
    }

    void setImageScaling(ui::ImageScaling scaling) override {
        view_.imageScaling = nativeScaling(scaling);
    }

private:
    NSImageView* const view_;
};

}  // namespace

std::shared_ptr<ui::Image> imageFrom(NSImage* image) {
    if (image == nil) return nullptr;
    return std::make_shared<NativeImage>(image);
}

std::shared_ptr<ui::ImageView> makeImageView(const ui::Rect& frame) {
    return std::make_shared<NativeImageView>(frame);
}

}  // namespace platform::macos
