// Windows on Qt: a top-level QWidget whose client area is the content area, of a fixed size; its
// title bar gets exactly the buttons of its style mask.
#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>

#include "platform/ui/geometry.h"
#include "platform/ui/window.h"

namespace platform::linux_backend {

// The top-level widget: tells its owner once the user has closed it.
class ClosableWindowWidget final : public QWidget {
public:
    explicit ClosableWindowWidget(std::function<void()> didClose) : didClose_(std::move(didClose)) {}

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::function<void()> didClose_;
};

// Once a window released when closed has been closed, it is gone: only destruction remains.
class QtWindow final : public ui::Window {
public:
    // `didClose` runs on the main thread after the user has closed the window.
    QtWindow(const ui::Rect& contentRect, unsigned styleMask, std::function<void()> didClose);
    ~QtWindow() override;

    void setTitle(const std::string& title) override;
    void setReleasedWhenClosed(bool released) override;
    void center() override;
    void setContentView(std::shared_ptr<ui::View> view) override;
    void makeKeyAndOrderFront() override;

    QWidget* widget() const { return widget_; }

private:
    QPointer<ClosableWindowWidget> widget_;
    ui::Rect contentRect_;
    std::shared_ptr<ui::View> contentView_;
};

}  // namespace platform::linux_backend
