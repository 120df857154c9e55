// Looking at a real X display from a test as a user's window manager would: finding a shown
// top-level window by its title, where it is, and asking it to close (WM_DELETE_WINDOW, what a
// title bar's close button sends).
#pragma once

#include <cstdint>
#include <optional>
#include <string>

struct xcb_connection_t;

namespace testing_support {

struct WindowGeometry {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

class X11Windows {
public:
    explicit X11Windows(const std::string& display);
    ~X11Windows();
    X11Windows(const X11Windows&) = delete;
    X11Windows& operator=(const X11Windows&) = delete;

    bool connected() const;

    // The first viewable top-level window titled `title`, waiting up to `timeoutSeconds`.
    std::optional<std::uint32_t> waitForWindow(const std::string& title, double timeoutSeconds);

    // Whether a viewable top-level window titled `title` is there now.
    bool isShown(const std::string& title);

    // Position on the screen and size of `window`'s client area.
    WindowGeometry geometry(std::uint32_t window);

    // Sends the window the close request of a title bar's close button.
    void requestClose(std::uint32_t window);

private:
    std::optional<std::uint32_t> findWindow(const std::string& title);
    std::uint32_t atom(const char* name);

    xcb_connection_t* connection_ = nullptr;
    std::uint32_t root_ = 0;
};

}  // namespace testing_support
