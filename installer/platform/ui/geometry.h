// Frames of windows and views.
#pragma once

namespace platform::ui {

// A rectangle in points, in the coordinate system of the containing view: origin at its
// bottom-left corner, y growing upwards. Backends whose toolkits count from the top convert.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;
};

}  // namespace platform::ui
