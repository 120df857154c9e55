// The installer's entry: an ordinary windowed application with one delegate that does the rest.
#include <memory>

#include "installer_app_delegate.h"
#include "platform/no_destructor.h"

namespace {

platform::ui::Application* app = nullptr;
// The application does not own its delegate: this keeps it until the process is gone. Never
// destroyed, since the process ends through exit() while the install may still be running.
platform::NoDestructor<std::shared_ptr<installer_app::InstallerAppDelegate>> delegate;

}  // namespace

int main() {
    app = &platform::ui::toolkit().sharedApplication();
    app->setActivationPolicy(platform::ui::ActivationPolicy::Regular);
    *delegate = std::make_shared<installer_app::InstallerAppDelegate>();
    app->setDelegate(delegate->get());
    app->run();
    return 0;
}
