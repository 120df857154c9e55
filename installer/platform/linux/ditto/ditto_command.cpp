#include "platform/linux/ditto/ditto_command.h"

#include <sys/stat.h>

#include <cerrno>

#include "platform/linux/bundle_layout.h"
#include "platform/linux/file_tree.h"
#include "platform/posix/copy_into_itself.h"
#include "platform/posix/error_number_text.h"

namespace platform::linux_backend {
namespace {

constexpr mode_t kNewFolderMode = 0755;

std::string quoted(const std::string& path) { return "\u201C" + path + "\u201D"; }

std::optional<std::string> makeFolders(const std::string& path) {
    struct stat status{};
    if (stat(path.c_str(), &status) == 0) {
        if (S_ISDIR(status.st_mode)) return std::nullopt;
        return "Could not create the folder " + quoted(path) + ": " + posix::errorNumberText(ENOTDIR) + ".";
    }
    if (path != parentFolder(path)) {
        if (auto error = makeFolders(parentFolder(path))) return error;
    }
    if (mkdir(path.c_str(), kNewFolderMode) != 0 && errno != EEXIST) {
        return "Could not create the folder " + quoted(path) + ": " + posix::errorNumberText(errno) + ".";
    }
    return std::nullopt;
}

std::string lastComponent(const std::string& path) {
    std::string trimmed = path;
    while (trimmed.size() > 1 && trimmed.back() == '/') trimmed.pop_back();
    std::size_t slash = trimmed.rfind('/');
    return slash == std::string::npos ? trimmed : trimmed.substr(slash + 1);
}

}  // namespace

std::optional<std::string> dittoCopy(const std::string& source, const std::string& destination) {
    struct stat from{};
    if (lstat(source.c_str(), &from) != 0) {
        return "Could not read " + quoted(source) + ": " + posix::errorNumberText(errno) + ".";
    }
    struct stat to{};
    bool destinationIsFolder = stat(destination.c_str(), &to) == 0 && S_ISDIR(to.st_mode);
    std::string target = destination;
    if (destinationIsFolder && !S_ISDIR(from.st_mode)) target = destination + "/" + lastComponent(source);
    if (std::optional<Error> refusal = posix::copyIntoItselfError(source, target)) return refusal->localizedDescription();
    if (!destinationIsFolder) {
        if (auto error = makeFolders(parentFolder(destination))) return error;
    }
    if (std::optional<Error> error = mergeTree(source, target)) return error->localizedDescription();
    return std::nullopt;
}

}  // namespace platform::linux_backend
