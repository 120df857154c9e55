#include "platform/linux/ui/view.h"

#include <cstdio>
#include <cstdlib>

#include "platform/linux/ui/geometry_conversion.h"

namespace platform::linux_backend {

WidgetView::WidgetView(QWidget* widget) : widget_(widget) {}

WidgetView::~WidgetView() {
    if (widget_ != nullptr && widget_->parentWidget() == nullptr) delete widget_.data();
}

void WidgetView::setFrame(const ui::Rect& frame) {
    frame_ = frame;
    placeInParent();
    // Subviews keep their distance from this view's bottom edge, so their Qt places move with it.
    for (const std::shared_ptr<ui::View>& subview : subviews_) of(*subview).placeInParent();
}

void WidgetView::addSubview(std::shared_ptr<ui::View> subview) {
    WidgetView& child = of(*subview);
    child.parent_ = this;
    child.widget_->setParent(widget_);
    child.placeInParent();
    child.widget_->show();
    subviews_.push_back(std::move(subview));
}

void WidgetView::fillHost(QWidget* host, const ui::Rect& frame) {
    frame_ = frame;
    widget_->setParent(host);
    widget_->setGeometry(0, 0, host->width(), host->height());
    widget_->show();
}

WidgetView& WidgetView::of(ui::View& view) {
    auto* widgetView = dynamic_cast<WidgetView*>(&view);
    if (widgetView == nullptr) {
        std::fprintf(stderr, "ui: a view not made by the Qt toolkit was handed to it\n");
        std::abort();
    }
    return *widgetView;
}

void WidgetView::placeInParent() {
    if (parent_ == nullptr) {
        widget_->resize(qtRectInParent(frame_, frame_.height).size());
        return;
    }
    widget_->setGeometry(qtRectInParent(frame_, parent_->frame_.height));
}

}  // namespace platform::linux_backend
