// A private X server (Xvfb) for tests that show real windows. It picks a free display number
// itself, and is stopped and reaped when the object goes away.
#pragma once

#include <sys/types.h>

#include <string>

namespace testing_support {

class VirtualDisplay {
public:
    // Why no virtual display can be started here; empty when one can.
    static std::string unavailableReason();

    // Starts Xvfb with one 1280 x 800 screen and waits until it accepts clients. `started()` says
    // whether it did.
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    bool started() const { return !name_.empty(); }
    // The display name, such as ":12".
    const std::string& name() const { return name_; }

private:
    pid_t server_ = -1;
    std::string name_;
};

}  // namespace testing_support
