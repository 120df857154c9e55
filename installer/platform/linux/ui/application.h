// The application object on Qt: one QApplication, made from the process's own arguments.
//
// Windows are closed by the user through their title bar; the application hears of it and, when no
// window is left, asks its delegate whether to end. Ending is AppKit's: the process exits from within
// `terminate`, through exit(), so `run` does not come back. Nothing is torn down first: the
// QApplication, every window and every view stay in place until the process is gone, as AppKit's
// objects do, while the static destructors run and other threads may still be at work.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ui/application.h"

namespace platform::linux_backend {

class QtApplication final : public ui::Application {
public:
    // `arguments`: the process's whole argument list, element 0 included; `iconPath`: the
    // application's icon, if it has one.
    QtApplication(std::vector<std::string> arguments, const std::optional<std::string>& iconPath);

    void setActivationPolicy(ui::ActivationPolicy policy) override;
    void setDelegate(ui::ApplicationDelegate* delegate) override;
    void run() override;
    void terminate() override;
    void activateIgnoringOtherApps(bool ignoringOtherApps) override;
    std::shared_ptr<ui::Image> applicationIconImage() override;

    // Called on the main thread after the user has closed a window.
    void windowDidClose();

private:
    ui::ApplicationDelegate* delegate_ = nullptr;
    std::shared_ptr<ui::Image> icon_;
};

}  // namespace platform::linux_backend
