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

}  // namespace

BundleLocation bundleLocationForExecutable(const std::string& executablePath) {
    if (auto bundle = bundlePathForExecutable(executablePath)) {
        return {*bundle, *bundle + "/Contents/Resources"};
    }
    std::string folder = parentFolder(executablePath);
    return {folder, folder};
}

std::string LinuxMainBundle::bundlePath() {
    return bundleLocationForExecutable(executablePath()).bundlePath;
}

std::optional<FileURL> LinuxMainBundle::resourceURL() {
    std::string resources = bundleLocationForExecutable(executablePath()).resourcesPath;
    if (!isFolder(resources)) return std::nullopt;
    return FileURL::fileURLWithPath(resources);
}

}  // namespace platform::linux_backend
