// A top-level window with a title bar.
#pragma once

#include <memory>
#include <string>

#include "platform/ui/view.h"

namespace platform::ui {

// Which parts of the title bar the window has; combined with |. A window without the others has a
// fixed size and cannot be minimised.
enum WindowStyleMask : unsigned {
    WindowStyleMaskTitled = 1u << 0,
    WindowStyleMaskClosable = 1u << 1,
};

enum class BackingStoreType { Buffered = 2 };

class Window {
public:
    virtual ~Window() = default;

    virtual void setTitle(const std::string& title) = 0;

    // False: closing the window only hides it; its owner keeps it. True: closing frees it.
    virtual void setReleasedWhenClosed(bool released) = 0;

    // Centred horizontally on the screen, somewhat above the vertical centre.
    virtual void center() = 0;

    // `view` fills the content area; the window keeps it alive.
    virtual void setContentView(std::shared_ptr<View> view) = 0;

    // Shows the window in front of the others and makes it receive the keyboard.
    virtual void makeKeyAndOrderFront() = 0;
};

}  // namespace platform::ui
