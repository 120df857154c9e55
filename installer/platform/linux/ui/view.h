// The Qt side that every view kind shares: a widget placed by a y-up frame inside its parent view.
//
// A Qt view class derives from both its ui interface and WidgetView. The widget is deleted with
// the WidgetView unless a parent widget has taken it; subviews are kept alive by their parent, as
// the ui contract says.
#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

#include "platform/ui/view.h"

namespace platform::linux_backend {

class WidgetView {
public:
    explicit WidgetView(QWidget* widget);
    virtual ~WidgetView();

    WidgetView(const WidgetView&) = delete;
    WidgetView& operator=(const WidgetView&) = delete;

    QWidget* widget() const { return widget_; }

    ui::Rect frame() const { return frame_; }
    void setFrame(const ui::Rect& frame);
    void addSubview(std::shared_ptr<ui::View> subview);

    // Makes the widget fill `host` (a window's content area) with the frame `frame`.
    void fillHost(QWidget* host, const ui::Rect& frame);

    // The Qt side of a view made by this backend.
    static WidgetView& of(ui::View& view);

private:
    void placeInParent();

    QPointer<QWidget> widget_;
    ui::Rect frame_;
    WidgetView* parent_ = nullptr;
    std::vector<std::shared_ptr<ui::View>> subviews_;
};

// Implements the View part of a ui interface on top of WidgetView.
template <class Interface>
class QtViewOf : public Interface, public WidgetView {
public:
    using WidgetView::WidgetView;

    ui::Rect frame() const override { return WidgetView::frame(); }
    void setFrame(const ui::Rect& frame) override { WidgetView::setFrame(frame); }
    void addSubview(std::shared_ptr<ui::View> subview) override {
        WidgetView::addSubview(std::move(subview));
    }
};

}  // namespace platform::linux_backend
