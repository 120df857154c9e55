// A rectangular piece of a window that can hold other views.
//
// Every ui object is made, changed and destroyed on the main thread only.
#pragma once

#include <memory>

#include "platform/ui/geometry.h"

namespace platform::ui {

class View {
public:
    virtual ~View() = default;

    // The frame in the containing view's coordinates (y up from its bottom-left corner).
    virtual Rect frame() const = 0;
    virtual void setFrame(const Rect& frame) = 0;

    // Puts `subview` in front of the views added before it. The view keeps the subview alive.
    virtual void addSubview(std::shared_ptr<View> subview) = 0;
};

}  // namespace platform::ui
