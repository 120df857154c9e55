// A progress bar.
#pragma once

#include "platform/ui/view.h"

namespace platform::ui {

enum class ProgressIndicatorStyle { Bar };

class ProgressIndicator : public View {
public:
    virtual void setStyle(ProgressIndicatorStyle style) = 0;

    // Indeterminate: the bar shows that work goes on without saying how much is done.
    virtual void setIndeterminate(bool indeterminate) = 0;

    // Starts or stops the bar's animation. Starting may come before the bar is in a window; it
    // animates from the moment it is shown.
    virtual void startAnimation() = 0;
    virtual void stopAnimation() = 0;
};

}  // namespace platform::ui
