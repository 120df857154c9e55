#include "platform/linux/ui/window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include "platform/linux/ui/geometry_conversion.h"
#include "platform/linux/ui/view.h"

namespace platform::linux_backend {
namespace {

// Of the screen's free height, the share left above a centred window: less than half, so the
// window sits somewhat above the middle, where the eye looks first.
constexpr double kFreeHeightAboveShare = 1.0 / 3.0;

}  // namespace

void ClosableWindowWidget::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    if (!event->isAccepted()) return;
    // Told once the close has finished, so the window no longer counts as visible.
    QTimer::singleShot(0, [notify = didClose_] { notify(); });
}

QtWindow::QtWindow(const ui::Rect& contentRect, unsigned styleMask, std::function<void()> didClose)
    : widget_(new ClosableWindowWidget(std::move(didClose))), contentRect_(contentRect) {
    widget_->setWindowFlags(windowFlagsForStyleMask(styleMask));
    widget_->setFixedSize(qtRectInParent(contentRect, contentRect.height).size());
}

QtWindow::~QtWindow() { delete widget_.data(); }

void QtWindow::setTitle(const std::string& title) {
    widget_->setWindowTitle(QString::fromStdString(title));
}

void QtWindow::setReleasedWhenClosed(bool released) {
    widget_->setAttribute(Qt::WA_DeleteOnClose, released);
}

void QtWindow::center() {
    QScreen* screen = widget_->screen() ? widget_->screen() : QGuiApplication::primaryScreen();
    if (screen == nullptr) return;
    QRect free = screen->availableGeometry();
    QSize size = widget_->frameGeometry().size();
    int x = free.x() + (free.width() - size.width()) / 2;
    int y = free.y() + static_cast<int>((free.height() - size.height()) * kFreeHeightAboveShare);
    widget_->move(x, y);
}

void QtWindow::setContentView(std::shared_ptr<ui::View> view) {
    WidgetView::of(*view).fillHost(widget_, ui::Rect{0, 0, contentRect_.width, contentRect_.height});
    contentView_ = std::move(view);
}

void QtWindow::makeKeyAndOrderFront() {
    widget_->show();
    widget_->raise();
    widget_->activateWindow();
}

}  // namespace platform::linux_backend
