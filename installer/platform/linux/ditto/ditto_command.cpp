#include "platform/linux/ditto/ditto_command.h"

#include <sys/stat.h>

#include <cerrno>

#include "platform/linux/bundle_layout.h"
#include "platform/linux/file_manager/file_tree.h"
#include "platform/posix/copy_into_itself.h"

namespace platform::linux_backend {
namespace {

constexpr mode_t kNewFolderMode = 0755;

using Result = Expected<void, Error>;

Result cannotCreate(const std::string& path, int error) {
    return Result::failure(Error("Could not create the folder " + quoted(path) + ": " +
                                 errorNumberText(error) + "."));
}

Result makeFolders(const std::string& path) {
    struct stat status{};
    if (stat(path.c_str(), &status) == 0) return S_ISDIR(status.st_mode) ? Result() : cannotCreate(path, ENOTDIR);
    if (path != parentFolder(path)) {
        if (Result made = makeFolders(parentFolder(path)); !made) return made;
    }
    if (mkdir(path.c_str(), kNewFolderMode) != 0 && errno != EEXIST) return cannotCreate(path, errno);
    return {};
}

std::string lastComponent(const std::string& path) {
    std::string trimmed = path;
    while (trimmed.size() > 1 && trimmed.back() == '/') trimmed.pop_back();
    std::size_t slash = trimmed.rfind('/');
    return slash == std::string::npos ? trimmed : trimmed.substr(slash + 1);
}

}  // namespace

Result dittoCopy(const std::string& source, const std::string& destination) {
    struct stat from{};
    if (lstat(source.c_str(), &from) != 0) {
        return Result::failure(Error("Could not read " + quoted(source) + ": " +
                                     errorNumberText(errno) + "."));
    }
    struct stat to{};
    bool destinationIsFolder = stat(destination.c_str(), &to) == 0 && S_ISDIR(to.st_mode);
    std::string target = destination;
    if (destinationIsFolder && !S_ISDIR(from.st_mode)) target = destination + "/" + lastComponent(source);
    if (Result allowed = posix::ensureNotIntoItself(source, target); !allowed) return allowed;
    if (!destinationIsFolder) {
        if (Result made = makeFolders(parentFolder(destination)); !made) return made;
    }
    return mergeTree(source, target);
}

}  // namespace platform::linux_backend
