#include <optional>

#include "engine/installer.h"
#include "platform/services.h"

namespace engine {
namespace {

constexpr const char* kCompletenessMark = "Contents/Info.plist";
constexpr const char* kIncompleteCopy = "The copy appeared to succeed but the app is incomplete.";

// Replaces whatever is at `destination` with a copy of `source` using the plain file manager.
// After a failed removal no copy is attempted.
platform::Expected<void, platform::Error> plainCopy(const platform::FileURL& source,
                                                    const platform::FileURL& destination) {
    platform::FileManager& files = platform::fileManager();
    if (files.fileExistsAtPath(destination.path())) {
        if (auto removal = files.removeItem(destination); !removal) return removal;
    }
    return files.copyItem(source, destination);
}

// Any item at Contents/Info.plist marks a complete bundle; its contents are not read.
bool isComplete(const platform::FileURL& destination) {
    return platform::fileManager().fileExistsAtPath(
        destination.appendingPathComponent(kCompletenessMark).path());
}

}  // namespace

platform::Expected<void, InstallError> Installer::install() const {
    using Result = platform::Expected<void, InstallError>;
    std::optional<platform::FileURL> source = embeddedAppURL();
    if (!source) return Result::failure(InstallError::embeddedAppMissing());

    // Installers replacing the same bundle at once take turns, or one's removal deletes what
    // another has just copied. A lock between processes: it shares no state within this one. Where
    // none can be set up, the install goes on without.
    auto turn = platform::fileManager().lockItem(destinationURL());

    if (Result stopped = stopRunningInstances(); !stopped) return stopped;

    platform::FileURL destination = destinationURL();
    if (auto plain = plainCopy(*source, destination); !plain) {
        if (Result fallback = runPrivilegedInstall(source->path(), destination.path(), plain.error()); !fallback) {
            return fallback;
        }
    }

    if (!isComplete(destination)) return Result::failure(InstallError::copyFailed(kIncompleteCopy));
    return {};
}

}  // namespace engine
