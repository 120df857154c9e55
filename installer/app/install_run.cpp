// The one install of the process and how the application ends after it.
//
// Closing the window ends the application at once, also while install() runs: the delegate never
// holds up a termination, so the user, a logout or a shutdown is never kept waiting by a windowless
// installer. A copy cut short that way leaves a partial Kelvo.app, which the next run replaces,
// since it removes whatever is at the destination before it copies.
#include "installer_app_delegate.h"

#include "platform/services.h"

namespace installer_app {
namespace {

constexpr const char* kLaunchingStatus = "Launching Kelvo\u2026 It will eject this installer disk for you.";
constexpr const char* kInstalledToLead = "Installed to ";
constexpr const char* kLaunchSkippedTail = " (launch skipped).";
constexpr const char* kAlertMessage = "Installation Problem";
constexpr const char* kQuitButton = "Quit";

constexpr std::chrono::duration<double> kEndAfterLaunch{1.0};
constexpr std::chrono::duration<double> kEndAfterSkippedLaunch{1.5};

void terminateApplication() { platform::ui::toolkit().sharedApplication().terminate(); }

}  // namespace

void InstallerAppDelegate::applicationDidFinishLaunching() {
    buildWindow();
    platform::ui::toolkit().sharedApplication().activateIgnoringOtherApps(true);
    runInstall();
}

void InstallerAppDelegate::runInstall() {
    platform::dispatch().globalUserInitiatedAsync(
        [self = shared_from_this(), installer = installer_] {
            auto outcome = installer.install();
            if (outcome) {
                platform::dispatch().mainAsync([self] { self->installDidSucceed(); });
            } else {
                platform::dispatch().mainAsync([self, error = std::move(outcome).error()] { self->fail(error); });
            }
        });
}

void InstallerAppDelegate::installDidSucceed() {
    if (!installer_.launchAfterInstall()) {
        statusLabel_->setStringValue(kInstalledToLead + installer_.destinationURL().path() +
                                     kLaunchSkippedTail);
        progress_->stopAnimation();
        platform::dispatch().mainAsyncAfter(kEndAfterSkippedLaunch, terminateApplication);
        return;
    }
    statusLabel_->setStringValue(kLaunchingStatus);
    installer_.launchInstalledApp([self = shared_from_this()](std::optional<platform::Error> error) {
        if (error) {
            self->fail(engine::InstallError::launchFailed(error->localizedDescription()));
            return;
        }
        self->progress_->stopAnimation();
        platform::dispatch().mainAsyncAfter(kEndAfterLaunch, terminateApplication);
    });
}

void InstallerAppDelegate::fail(const platform::LocalizedError& error) {
    progress_->stopAnimation();
    statusLabel_->setStringValue(error.localizedDescription());

    std::shared_ptr<platform::ui::Alert> alert = platform::ui::toolkit().makeAlert();
    alert->setMessageText(kAlertMessage);
    alert->setInformativeText(error.localizedDescription());
    alert->setAlertStyle(platform::ui::AlertStyle::Warning);
    alert->addButtonWithTitle(kQuitButton);
    alert->runModal();

    terminateApplication();
}

}  // namespace installer_app
