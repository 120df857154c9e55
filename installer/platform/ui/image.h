// An image the toolkit can draw, such as the application's icon.
#pragma once

namespace platform::ui {

// Opaque to portable code: images are only handed from the toolkit back to the toolkit.
class Image {
public:
    virtual ~Image() = default;
};

}  // namespace platform::ui
