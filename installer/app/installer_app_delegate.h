// The installer application's delegate: it owns the window, the status line, the progress bar and
// the Installer read from the command line, and runs the one install of the process.
//
// Every operation runs on the main thread. The install itself runs on the global background queue
// with its own copy of the Installer; its outcome comes back through the main queue. The delegate
// must be made with std::make_shared: pending work items hold it alive.
#pragma once

#include <memory>

#include "engine/installer.h"
#include "platform/ui/toolkit.h"

namespace installer_app {

class InstallerAppDelegate final : public platform::ui::ApplicationDelegate,
                                   public std::enable_shared_from_this<InstallerAppDelegate> {
public:
    // Makes the status line and the progress bar and reads the command line into the Installer.
    InstallerAppDelegate();

    // Shows the window, brings the application to the front and starts the install.
    void applicationDidFinishLaunching() override;

    // Always true: closing the window ends the application, at once, whatever the install is doing.
    bool applicationShouldTerminateAfterLastWindowClosed(platform::ui::Application&) override;

private:
    void buildWindow();
    void runInstall();
    void installDidSucceed();
    void fail(const platform::LocalizedError& error);

    std::shared_ptr<platform::ui::Window> window_;
    const std::shared_ptr<platform::ui::Label> statusLabel_;
    const std::shared_ptr<platform::ui::ProgressIndicator> progress_;
    const engine::Installer installer_;
};

}  // namespace installer_app
