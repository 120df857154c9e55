#include "installer_app_delegate.h"

namespace installer_app {
namespace {

constexpr const char* kInitialStatus = "Copying Kelvo to your Applications folder\u2026";

}  // namespace

InstallerAppDelegate::InstallerAppDelegate()
    : statusLabel_(platform::ui::toolkit().labelWithString(kInitialStatus)),
      progress_(platform::ui::toolkit().makeProgressIndicator()),
      installer_() {}

bool InstallerAppDelegate::applicationShouldTerminateAfterLastWindowClosed(platform::ui::Application&) {
    return true;
}

}  // namespace installer_app
