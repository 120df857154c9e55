#include "platform/posix/copy_into_itself.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

namespace platform::posix {
namespace {

constexpr const char* kOntoItself = "an item cannot be copied onto itself";
constexpr const char* kIntoItself = "a folder cannot be copied into itself";

// Where `path` leads once every link and ".." in the folders above it is resolved: the part
// that exists by the system, the rest (folders still to be made) by reading it. A link at `path`
// itself is not followed, as the copy does not follow it. Nothing when that cannot be told.
std::optional<std::filesystem::path> location(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path item = fs::absolute(path, error);
    if (error) return std::nullopt;
    struct stat status{};
    if (lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode)) {
        item = fs::weakly_canonical(item.parent_path(), error) / item.filename();
    } else {
        item = fs::weakly_canonical(item, error);
    }
    if (error) return std::nullopt;
    if (!item.has_filename() && item.has_relative_path()) item = item.parent_path();  // a trailing "/"
    return item;
}

}  // namespace

Error copyError(const std::string& from, const std::string& to, const std::string& reason) {
    return Error("Could not copy " + quoted(from) + " to " + quoted(to) + ": " + reason + ".");
}

Expected<void, Error> ensureNotIntoItself(const std::string& from, const std::string& to) {
    using Result = Expected<void, Error>;
    std::optional<std::filesystem::path> source = location(from);
    std::optional<std::filesystem::path> destination = location(to);
    if (!source || !destination) return {};
    auto [inSource, inDestination] = std::mismatch(source->begin(), source->end(), destination->begin(), destination->end());
    if (inSource != source->end()) return {};
    if (inDestination == destination->end()) return Result::failure(copyError(from, to, kOntoItself));
    struct stat status{};
    if (lstat(from.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return {};  // holds nothing
    return Result::failure(copyError(from, to, kIntoItself));
}

}  // namespace platform::posix
