#include "platform/file_url.h"

#include <unistd.h>

#include <cerrno>
#include <optional>
#include <vector>

namespace platform {
namespace {

// The process's working folder; none when it cannot be told (it has been removed, or a folder above
// it may not be read).
std::optional<std::string> workingFolder() {
    std::vector<char> buffer(4096);
    while (getcwd(buffer.data(), buffer.size()) == nullptr) {
        if (errno != ERANGE) return std::nullopt;
        buffer.resize(buffer.size() * 2);
    }
    return std::string(buffer.data());
}

std::string withoutTrailingSlashes(std::string path) {
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    return path;
}

}  // namespace

FileURL FileURL::fileURLWithPath(const std::string& path) {
    if (!path.empty() && path.front() == '/') return FileURL(withoutTrailingSlashes(path));
    std::optional<std::string> base = workingFolder();
    if (!base) return FileURL(withoutTrailingSlashes(path));
    if (path.empty()) return FileURL(withoutTrailingSlashes(*base));
    return FileURL(*base).appendingPathComponent(path);
}

FileURL FileURL::appendingPathComponent(const std::string& component) const {
    std::string joined = path_;
    if (!joined.empty() && joined.back() != '/') joined += '/';
    std::size_t start = component.find_first_not_of('/');
    if (start != std::string::npos) joined += component.substr(start);
    return FileURL(withoutTrailingSlashes(joined));
}

std::string FileURL::lastPathComponent() const {
    if (path_ == "/") return {};
    std::size_t slash = path_.rfind('/');
    return slash == std::string::npos ? path_ : path_.substr(slash + 1);
}

}  // namespace platform
