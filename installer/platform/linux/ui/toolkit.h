// The toolkit on Qt Widgets. The QApplication is made on the first request for the application
// object or for any window or view, on the main thread, from what the toolkit was given.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/ui/application.h"
#include "platform/ui/toolkit.h"

namespace platform::linux_backend {

class QtToolkit final : public ui::Toolkit {
public:
    // The application object will be made with `arguments` (element 0 included) and the icon at
    // `iconPath`, if any.
    QtToolkit(std::vector<std::string> arguments, std::optional<std::string> iconPath);

    ui::Application& sharedApplication() override;
    std::shared_ptr<ui::Window> makeWindow(const ui::Rect& contentRect, unsigned styleMask,
                                           ui::BackingStoreType backing, bool defer) override;
    std::shared_ptr<ui::View> makeView(const ui::Rect& frame) override;
    std::shared_ptr<ui::ImageView> makeImageView(const ui::Rect& frame) override;
    std::shared_ptr<ui::Label> labelWithString(const std::string& text) override;
    std::shared_ptr<ui::ProgressIndicator> makeProgressIndicator() override;
    std::shared_ptr<ui::Alert> makeAlert() override;

private:
    QtApplication& application();

    std::vector<std::string> arguments_;
    std::optional<std::string> iconPath_;
    std::unique_ptr<QtApplication> application_;
};

}  // namespace platform::linux_backend
