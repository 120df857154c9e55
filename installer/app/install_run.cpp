// The one install of the process and how the application ends after it.
//
// Closing the window while install() runs does not end the process at once: the application
// stays up (windowless) until install() has returned, then ends without showing the outcome. An
// install cut off half-way would leave a partly copied or partly removed Kelvo.app behind, or
// leave the administrator's copy running with nobody to report it; waiting costs the user only
// the rest of a copy already under way. Once install() has returned, closing ends the
// application at once.
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
    installRunning_ = true;
    platform::dispatch().globalUserInitiatedAsync(
        [self = shared_from_this(), installer = installer_, install = engine_.install] {
            auto outcome = install(installer);
            if (outcome) {
                platform::dispatch().mainAsync([self] {
                    if (!self->installDidReturn()) self->installDidSucceed();
                });
            } else {
                platform::dispatch().mainAsync([self, error = std::move(outcome).error()] {
                    if (!self->installDidReturn()) self->fail(error);
                });
            }
        });
}

bool InstallerAppDelegate::installDidReturn() {
    installRunning_ = false;
    if (!terminationWaitsForInstall_) return false;
    platform::ui::toolkit().sharedApplication().replyToApplicationShouldTerminate(true);
    return true;
}

platform::ui::TerminateReply InstallerAppDelegate::applicationShouldTerminate(platform::ui::Application&) {
    if (!installRunning_) return platform::ui::TerminateReply::TerminateNow;
    terminationWaitsForInstall_ = true;
    return platform::ui::TerminateReply::TerminateLater;
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
    engine_.launchInstalledApp(installer_, [self = shared_from_this()](std::optional<platform::Error> error) {
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
