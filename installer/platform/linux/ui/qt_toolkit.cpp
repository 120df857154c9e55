#include "platform/linux/ui/qt_toolkit.h"

#include "platform/linux/ui/qt_alert.h"
#include "platform/linux/ui/qt_image_view.h"
#include "platform/linux/ui/qt_label.h"
#include "platform/linux/ui/qt_progress_indicator.h"
#include "platform/linux/ui/qt_window.h"
#include "platform/linux/ui/widget_view.h"
#include "platform/no_destructor.h"

namespace platform::linux_backend {
namespace {

// The font a label has before it is given one.
constexpr ui::Font kDefaultLabelFont{13, ui::FontWeight::Regular};

class QtView final : public QtViewOf<ui::View> {
public:
    explicit QtView(const ui::Rect& frame) : QtViewOf<ui::View>(new QWidget) { setFrame(frame); }
};

}  // namespace

QtApplication& QtToolkit::application() {
    if (!application_) application_ = std::make_unique<QtApplication>();
    return *application_;
}

ui::Application& QtToolkit::sharedApplication() { return application(); }

std::shared_ptr<ui::Window> QtToolkit::makeWindow(const ui::Rect& contentRect, unsigned styleMask,
                                                  ui::BackingStoreType, bool) {
    QtApplication& owner = application();
    return std::make_shared<QtWindow>(contentRect, styleMask, [&owner] { owner.windowDidClose(); });
}

std::shared_ptr<ui::View> QtToolkit::makeView(const ui::Rect& frame) {
    application();
    return std::make_shared<QtView>(frame);
}

std::shared_ptr<ui::ImageView> QtToolkit::makeImageView(const ui::Rect& frame) {
    application();
    return std::make_shared<QtImageView>(frame);
}

std::shared_ptr<ui::Label> QtToolkit::labelWithString(const std::string& text) {
    application();
    auto label = std::make_shared<QtLabel>(text);
    label->setFont(kDefaultLabelFont);
    return label;
}

std::shared_ptr<ui::ProgressIndicator> QtToolkit::makeProgressIndicator() {
    application();
    return std::make_shared<QtProgressIndicator>();
}

std::shared_ptr<ui::Alert> QtToolkit::makeAlert() {
    application();
    return std::make_shared<QtAlert>();
}

}  // namespace platform::linux_backend

namespace platform::ui {

// Never destroyed: like the QApplication it holds, it lasts until the process is gone.
Toolkit& backendToolkit() {
    static NoDestructor<linux_backend::QtToolkit> toolkit;
    return *toolkit;
}

}  // namespace platform::ui
