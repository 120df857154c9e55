#include "platform/linux/ui/toolkit.h"

#include "platform/linux/main_bundle.h"
#include "platform/linux/process_info.h"
#include "platform/linux/ui/alert.h"
#include "platform/linux/ui/application/application_icon.h"
#include "platform/linux/ui/image_view.h"
#include "platform/linux/ui/label.h"
#include "platform/linux/ui/progress_indicator.h"
#include "platform/linux/ui/window.h"
#include "platform/linux/ui/view.h"
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

QtToolkit::QtToolkit(std::vector<std::string> arguments, std::optional<std::string> iconPath)
    : arguments_(std::move(arguments)), iconPath_(std::move(iconPath)) {}

QtApplication& QtToolkit::application() {
    if (!application_) application_ = std::make_unique<QtApplication>(arguments_, iconPath_);
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

// Never destroyed: like the QApplication it holds, it lasts until the process is gone. It is given
// the process's own arguments and icon, asked of this backend's services themselves.
Toolkit& backendToolkit() {
    linux_backend::LinuxMainBundle bundle;
    static NoDestructor<linux_backend::QtToolkit> toolkit(linux_backend::LinuxProcessInfo().arguments(),
                                                          linux_backend::applicationIconPath(bundle));
    return *toolkit;
}

}  // namespace platform::ui
