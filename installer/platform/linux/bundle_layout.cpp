#include "platform/linux/bundle_layout.h"

namespace platform::linux_backend {
namespace {

bool endsWith(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() &&
           text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace

std::string parentFolder(const std::string& path) {
    std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    if (slash == 0) return "/";
    return path.substr(0, slash);
}

std::optional<std::string> bundlePathForExecutable(const std::string& executablePath) {
    std::string macOS = parentFolder(executablePath);
    std::string contents = parentFolder(macOS);
    std::string bundle = parentFolder(contents);
    bool shaped = endsWith(macOS, "/MacOS") && endsWith(contents, "/Contents") &&
                  endsWith(bundle, ".app") && bundle.size() > 4 && !endsWith(bundle, "/.app");
    if (!shaped) return std::nullopt;
    return bundle;
}

}  // namespace platform::linux_backend
