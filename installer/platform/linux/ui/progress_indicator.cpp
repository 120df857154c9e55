#include "platform/linux/ui/progress_indicator.h"

#include <QProgressBar>

namespace platform::linux_backend {

QtProgressIndicator::QtProgressIndicator() : QtViewOf<ui::ProgressIndicator>(new QProgressBar) {
    bar()->setTextVisible(false);
    bar()->setOrientation(Qt::Horizontal);
    showState();
}

QProgressBar* QtProgressIndicator::bar() const { return static_cast<QProgressBar*>(widget()); }

void QtProgressIndicator::setStyle(ui::ProgressIndicatorStyle) { bar()->setOrientation(Qt::Horizontal); }

void QtProgressIndicator::setIndeterminate(bool indeterminate) {
    indeterminate_ = indeterminate;
    showState();
}

void QtProgressIndicator::startAnimation() {
    animating_ = true;
    showState();
}

void QtProgressIndicator::stopAnimation() {
    animating_ = false;
    showState();
}

void QtProgressIndicator::showState() {
    bool busy = indeterminate_ && animating_;
    bar()->setRange(0, busy ? 0 : 100);
    if (!busy) bar()->setValue(0);
}

}  // namespace platform::linux_backend
