// Images and the views that show one, on AppKit: an NSImage handed out as a ui::Image, and an
// NSImageView.
#pragma once

#include <memory>

#include "platform/ui/image_view.h"

#ifdef __OBJC__
@class NSImage;
#else
class NSImage;
#endif

namespace platform::macos {

// `image` as the portable code holds it; none for nil.
std::shared_ptr<ui::Image> imageFrom(NSImage* image);

// An NSImageView with `frame`, showing no image yet. An image not made by imageFrom shows nothing.
std::shared_ptr<ui::ImageView> makeImageView(const ui::Rect& frame);

}  // namespace platform::macos
