// The application object on Qt: one QApplication, made from the process's own arguments.
//
// Windows are closed by the user through their title bar; the application hears of it and, when no
// window is left, asks its delegate whether to end. Ending quits the Qt event loop, so `run` returns
// and the program leaves main; every window and view is destroyed then (the objects that wrapped
// them stay harmless until their owners let go). The QApplication itself is never destroyed: like the platform's
// shared application it lasts until the process exits, after every window and view.
#pragma once

#include <memory>

#include "platform/ui/application.h"

namespace platform::linux_backend {

class QtApplication final : public ui::Application {
public:
    QtApplication();

    void setActivationPolicy(ui::ActivationPolicy policy) override;
    void setDelegate(ui::ApplicationDelegate* delegate) override;
    void run() override;
    void terminate() override;
    void replyToApplicationShouldTerminate(bool shouldTerminate) override;
    void activateIgnoringOtherApps(bool ignoringOtherApps) override;
    std::shared_ptr<ui::Image> applicationIconImage() override;

    // Called on the main thread after the user has closed a window.
    void windowDidClose();

private:
    void finishTermination();

    ui::ApplicationDelegate* delegate_ = nullptr;
    std::shared_ptr<ui::Image> icon_;
    bool terminationPending_ = false;
    bool terminated_ = false;
};

}  // namespace platform::linux_backend
