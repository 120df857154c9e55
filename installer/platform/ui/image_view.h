// A view that shows one image.
#pragma once

#include <memory>

#include "platform/ui/image.h"
#include "platform/ui/view.h"

namespace platform::ui {

enum class ImageScaling {
    ProportionallyUpOrDown,  // shrinks or enlarges to fit, keeping proportions
};

class ImageView : public View {
public:
    // None shows nothing.
    virtual void setImage(std::shared_ptr<Image> image) = 0;
    virtual void setImageScaling(ImageScaling scaling) = 0;
};

}  // namespace platform::ui
