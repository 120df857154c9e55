// Opening the installed Kelvo once the install has succeeded.
#include <utility>

#include "engine/installer.h"
#include "engine/product_identity.h"
#include "platform/services.h"

namespace engine {
namespace {

// Tells the installed app which volume to eject; the element after it is the volume's mount point.
constexpr const char* kEjectVolumeOption = "--eject-installer-volume";

}  // namespace

void Installer::launchInstalledApp(LaunchCompletion completion) const {
    platform::OpenConfiguration configuration;
    if (std::optional<std::string> volume = installerVolumePath()) {
        configuration.arguments = std::vector<std::string>{kEjectVolumeOption, *volume};
    }
    configuration.activates = true;
    platform::FileURL app =
        platform::FileURL::fileURLWithPath(destinationDir_).appendingPathComponent(kAppBundleName);
    // The workspace answers on a thread of its own choosing; the caller is always answered on the
    // main queue, where it may touch the window.
    platform::workspace().openApplication(
        app, configuration, [completion = std::move(completion)](platform::Expected<void, platform::Error> opened) {
            std::optional<platform::Error> error;
            if (!opened) error = std::move(opened).error();
            platform::dispatch().mainAsync([completion, error = std::move(error)] { completion(error); });
        });
}

}  // namespace engine
