#include "installer_app_delegate.h"

namespace installer_app {

EngineOperations realEngineOperations() {
    return EngineOperations{
        .install = [](const engine::Installer& installer) { return installer.install(); },
        .launchInstalledApp =
            [](const engine::Installer& installer, engine::Installer::LaunchCompletion completion) {
                installer.launchInstalledApp(std::move(completion));
            },
    };
}

}  // namespace installer_app
