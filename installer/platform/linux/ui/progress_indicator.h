// Progress indicators on Qt: a QProgressBar without text; indeterminate and animating it is
// Qt's busy bar (a range of 0 to 0), stopped it rests empty.
#pragma once

#include "platform/linux/ui/view.h"
#include "platform/ui/progress_indicator.h"

class QProgressBar;

namespace platform::linux_backend {

class QtProgressIndicator final : public QtViewOf<ui::ProgressIndicator> {
public:
    QtProgressIndicator();

    void setStyle(ui::ProgressIndicatorStyle style) override;
    void setIndeterminate(bool indeterminate) override;
    void startAnimation() override;
    void stopAnimation() override;

private:
    void showState();
    QProgressBar* bar() const;

    bool indeterminate_ = false;
    bool animating_ = false;
};

}  // namespace platform::linux_backend
