// The main bundle, found from the path of the running executable: /proc/self/exe, or without /proc
// the path the program was started by, resolved as the kernel would have.
#pragma once

#include "platform/main_bundle.h"

namespace platform::linux_backend {

class LinuxMainBundle final : public MainBundle {
public:
    std::string bundlePath() override;
    std::optional<FileURL> resourceURL() override;
};

// Where a bundle and its resources are for an executable at `executablePath`: inside
// "Name.app/Contents/MacOS/" the bundle is "Name.app" and the resources "Name.app/Contents/Resources";
// anywhere else the executable's own folder is both.
struct BundleLocation {
    std::string bundlePath;
    std::string resourcesPath;
};
BundleLocation bundleLocationForExecutable(const std::string& executablePath);

}  // namespace platform::linux_backend
