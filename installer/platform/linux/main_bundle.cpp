#include "platform/linux/main_bundle.h"

#include <sys/stat.h>

#include <filesystem>

#include "platform/linux/bundle_layout.h"
#include "platform/linux/startup_record.h"

namespace platform::linux_backend {
namespace {

std::string executablePath() {
    std::error_code error;
    std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? startupExecutablePath() : path.string();
}

bool isFolder(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Where a bundle and its resources are for an executable at `executablePath`: inside
// "Name.app/Contents/MacOS/" the bundle is "Name.app" and the resources "Name.app/Contents/Resources";
// anywhere else the executable's own folder is both.
struct BundleLocation {
    std::string bundlePath;
    std::string resourcesPath;
};

BundleLocation bundleLocationForExecutable(const std::string& executablePath) {
    if (auto bundle = bundlePathForExecutable(executablePath)) {
        return {*bundle, *bundle + "/Contents/Resources"};
    }
    std::string folder = parentFolder(executablePath);
    return {folder, folder};
}

}  // namespace

std::string LinuxMainBundle::bundlePath() {
    return bundleLocationForExecutable(executablePath()).bundlePath;
}

std::optional<FileURL> LinuxMainBundle::resourceURL() {
    std::string resources = bundleLocationForExecutable(executablePath()).resourcesPath;
    if (!isFolder(resources)) return std::nullopt;
    return FileURL::fileURLWithPath(resources);
}

}  // namespace platform::linux_backend
