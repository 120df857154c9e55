#include "engine/installer.h"

#include <algorithm>

#include "engine/product_identity.h"
#include "platform/services.h"

namespace engine {
namespace {

constexpr const char* kDefaultDestination = "/Applications";
constexpr const char* kDestinationOption = "--dest";
constexpr const char* kNoLaunchOption = "--no-launch";
constexpr std::string_view kVolumesPrefix = "/Volumes/";

std::vector<std::string> nonEmptyComponents(const std::string& path) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    while (start <= path.size()) {
        std::size_t slash = std::min(path.find('/', start), path.size());
        if (slash > start) pieces.push_back(path.substr(start, slash - start));
        start = slash + 1;
    }
    return pieces;
}

}  // namespace

Installer::Installer() : Installer(platform::processInfo().arguments()) {}

Installer::Installer(const std::vector<std::string>& arguments)
    : destinationDir_(kDefaultDestination), launchAfterInstall_(true) {
    auto option = std::find(arguments.begin(), arguments.end(), kDestinationOption);
    if (option != arguments.end() && std::next(option) != arguments.end()) {
        destinationDir_ = *std::next(option);
    }
    launchAfterInstall_ =
        std::find(arguments.begin(), arguments.end(), kNoLaunchOption) == arguments.end();
}

std::optional<platform::FileURL> Installer::embeddedAppURL() const {
    std::optional<platform::FileURL> resources = platform::mainBundle().resourceURL();
    if (!resources) return std::nullopt;
    platform::FileURL app = resources->appendingPathComponent(kAppBundleName);
    if (!platform::fileManager().fileExistsAtPath(app.path())) return std::nullopt;
    return app;
}

platform::FileURL Installer::destinationURL() const {
    return platform::FileURL::fileURLWithPath(destinationDir_).appendingPathComponent(kAppBundleName);
}

std::optional<std::string> Installer::installerVolumePath() const {
    std::string bundlePath = platform::mainBundle().bundlePath();
    if (!bundlePath.starts_with(kVolumesPrefix)) return std::nullopt;
    std::vector<std::string> pieces = nonEmptyComponents(bundlePath);
    if (pieces.size() < 2) return std::nullopt;
    return "/" + pieces[0] + "/" + pieces[1];
}

}  // namespace engine
