// A private X display for one test (an Xvfb server), and what a user does with windows on it.
#pragma once

#include <functional>
#include <string>

#include "support/virtual_display.h"

namespace e2e {

class XDisplay {
public:
    // Starts Xvfb on a free display number (stopped and reaped with this object). `started()`
    // tells whether it came up.
    bool started() const { return server_.started(); }
    // ":<n>", for DISPLAY.
    const std::string& name() const { return server_.name(); }

    // Plain windows, or dialogs such as alerts (by the window type the toolkit gives them).
    enum class WindowKind { Plain, Dialog };

    // The id of the first visible window of `kind` whose title is exactly `title`, waiting up to
    // `timeoutSeconds` for one to be mapped, and no longer than `worthWaiting` says; empty when
    // none appeared.
    std::string waitForWindow(const std::string& title, WindowKind kind, double timeoutSeconds,
                              const std::function<bool()>& worthWaiting = [] { return true; }) const;

    // The title of every visible window, one per line.
    std::string visibleWindowTitles() const;

    // Gives `window` the keyboard focus and presses `key` (an xdotool key name such as "Return").
    bool pressKey(const std::string& window, const std::string& key) const;

    // Asks `window` to close, as its close button does under a window manager.
    bool requestClose(const std::string& window) const;

    // Saves the whole screen as a PNG image.
    bool screenshot(const std::string& path) const;

private:
    std::string run(const std::string& command, int* exitStatus = nullptr) const;

    testing_support::VirtualDisplay server_;
};

}  // namespace e2e
