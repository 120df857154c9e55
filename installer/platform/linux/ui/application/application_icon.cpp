#include "platform/linux/ui/application/application_icon.h"

#include <filesystem>

#include "platform/linux/property_list.h"

namespace platform::linux_backend {
namespace {

constexpr const char* kIconFileKey = "CFBundleIconFile";
constexpr const char* kDefaultIconName = "AppIcon";
constexpr const char* kImageExtension = ".png";

}  // namespace

std::optional<std::string> applicationIconPath(MainBundle& bundle) {
    std::optional<FileURL> resources = bundle.resourceURL();
    if (!resources) return std::nullopt;
    std::string infoPlist = bundle.bundlePath() + "/Contents/Info.plist";
    std::filesystem::path name =
        propertyListString(infoPlist, kIconFileKey).value_or(kDefaultIconName);
    if (!name.has_extension()) name += kImageExtension;
    std::string path = resources->appendingPathComponent(name.string()).path();
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
    return path;
}

}  // namespace platform::linux_backend
