#include "platform/posix/tree_removal.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <vector>

#include "platform/posix/error_number_text.h"

namespace platform::posix {
namespace {

// Works on descriptors, so no symbolic link is ever followed: every folder is opened with
// O_NOFOLLOW relative to its already-open parent.
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

Error removeError(const std::string& path, int error) {
    return Error("Could not remove \u201C" + path + "\u201D: " + errorNumberText(error) + ".");
}

bool isDenied(int error) { return error == EACCES || error == EPERM; }

// Opens the folder `name` in `parent`; one without read or search permission is opened up for
// its owner first (which fails, and so reports the denial, when this user may not).
int openFolder(int parent, const char* name) {
    int fd = openat(parent, name, kFolderFlags);
    if (fd >= 0 || errno != EACCES) return fd;
    struct stat status{};
    if (fstatat(parent, name, &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISDIR(status.st_mode)) return -1;
    if (fchmodat(parent, name, (status.st_mode & 07777) | S_IRWXU, 0) != 0) {
        errno = EACCES;
        return -1;
    }
    return openat(parent, name, kFolderFlags);
}

std::optional<std::vector<std::pair<std::string, unsigned char>>> entriesOf(int folder) {
    int copy = dup(folder);
    DIR* listing = copy >= 0 ? fdopendir(copy) : nullptr;
    if (listing == nullptr) {
        if (copy >= 0) close(copy);
        return std::nullopt;
    }
    std::vector<std::pair<std::string, unsigned char>> entries;
    errno = 0;
    while (dirent* entry = readdir(listing)) {
        std::string_view name = entry->d_name;
        if (name != "." && name != "..") entries.emplace_back(name, entry->d_type);
    }
    int error = errno;
    closedir(listing);
    if (error != 0) {
        errno = error;
        return std::nullopt;
    }
    return entries;
}

std::optional<Error> removeContents(int folder, const std::string& path);

// Removes the entry `name` of the open folder `folder` (at `path`), and all below it.
std::optional<Error> removeEntry(int folder, const std::string& path, const std::string& name, unsigned char type) {
    std::string entryPath = path + "/" + name;
    if (type == DT_UNKNOWN) {
        struct stat status{};
        if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return removeError(entryPath, errno);
        type = S_ISDIR(status.st_mode) ? DT_DIR : DT_REG;
    }
    if (type == DT_DIR) {
        int child = openFolder(folder, name.c_str());
        if (child < 0) return removeError(entryPath, errno);
        std::optional<Error> error = removeContents(child, entryPath);
        close(child);
        if (error) return error;
    }
    int flags = type == DT_DIR ? AT_REMOVEDIR : 0;
    if (unlinkat(folder, name.c_str(), flags) == 0) return std::nullopt;
    // A read-only folder of ours: allow removing from it, then try once more.
    struct stat status{};
    if (isDenied(errno) && fstat(folder, &status) == 0 &&
        fchmod(folder, (status.st_mode & 07777) | S_IRWXU) == 0 && unlinkat(folder, name.c_str(), flags) == 0) {
        return std::nullopt;
    }
    return removeError(entryPath, errno);
}

std::optional<Error> removeContents(int folder, const std::string& path) {
    auto entries = entriesOf(folder);
    if (!entries) return removeError(path, errno);
    for (const auto& [name, type] : *entries) {
        if (std::optional<Error> error = removeEntry(folder, path, name, type)) return error;
    }
    return std::nullopt;
}

}  // namespace

std::optional<Error> removeTree(const std::string& path) {
    struct stat status{};
    if (lstat(path.c_str(), &status) != 0) return removeError(path, errno);
    if (!S_ISDIR(status.st_mode)) {
        if (unlink(path.c_str()) != 0) return removeError(path, errno);
        return std::nullopt;
    }
    int folder = openFolder(AT_FDCWD, path.c_str());
    if (folder < 0) return removeError(path, errno);
    std::optional<Error> error = removeContents(folder, path);
    close(folder);
    if (error) return error;
    if (rmdir(path.c_str()) != 0) return removeError(path, errno);
    return std::nullopt;
}

}  // namespace platform::posix
