// A modal alert with a message and buttons.
#pragma once

#include <string>

namespace platform::ui {

enum class AlertStyle { Warning };

// Which button ended the alert: the first added is 1000, the next 1001, and so on.
using ModalResponse = long;
constexpr ModalResponse kAlertFirstButtonReturn = 1000;

class Alert {
public:
    virtual ~Alert() = default;

    virtual void setMessageText(const std::string& text) = 0;
    virtual void setInformativeText(const std::string& text) = 0;
    virtual void setAlertStyle(AlertStyle style) = 0;

    // The first button added is the default one: the Return key presses it.
    virtual void addButtonWithTitle(const std::string& title) = 0;

    // Shows the alert application-modally (other windows get no events meanwhile) and blocks
    // until a button is pressed. Main thread only.
    virtual ModalResponse runModal() = 0;
};

}  // namespace platform::ui
