// A private X server (Xvfb) for tests that show real windows, and what a user does with windows
// there. It picks a free display number itself, and is stopped with the object.
#pragma once

#include <sys/types.h>

#include <string>

#include "support/temp_folder.h"

namespace testing_support {

class VirtualDisplay {
public:
    // Why no display can be started and used here; empty when one can.
    static std::string unavailableReason();

    // Starts Xvfb with one 1280 x 800 screen and waits until it accepts clients.
    VirtualDisplay();
    ~VirtualDisplay();

    bool started() const { return !name_.empty(); }
    // The display name, such as ":12".
    const std::string& name() const { return name_; }

    // The id of a shown window titled exactly `title`, waiting up to `seconds` for one; empty when
    // none came.
    std::string waitForWindow(const std::string& title, int seconds) const;

    // Gives `window` the keyboard focus and presses `key` (an xdotool key name such as "Return").
    bool pressKey(const std::string& window, const std::string& key) const;

    // Asks `window` to close, as a window manager's close button does (WM_DELETE_WINDOW).
    bool closeWindow(const std::string& window) const;

private:
    TempFolder ready_;
    pid_t server_ = -1;
    std::string name_;
};

}  // namespace testing_support
