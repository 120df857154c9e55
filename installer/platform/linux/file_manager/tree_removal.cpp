#include "platform/linux/file_manager/tree_removal.h"

// Recursive removal that works on descriptors, so no symbolic link is ever followed: every
// folder is opened with O_NOFOLLOW relative to its already-open parent. Only the folder being
// emptied is open, so a tree of any depth takes a few descriptors: on the way back up, the
// parent is reopened through "..", which is never a link, and must be the folder that was left.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "platform/linux/file_manager/folder_entries.h"
#include "platform/posix/descriptor.h"

namespace platform::linux_backend {
namespace {

using posix::Descriptor;

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr const char* kMoved = "it was moved while being removed";

using Result = Expected<void, Error>;

Result removeError(const std::string& path, const std::string& reason) {
    return Result::failure(Error("Could not remove " + quoted(path) + ": " + reason + "."));
}
Result removeError(const std::string& path, int error) {
    return removeError(path, errorNumberText(error));
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

bool isSameFolder(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

class TreeRemoval {
public:
    Result run(const std::string& top) {
        if (Result entered = enter(AT_FDCWD, top); !entered) return entered;
        while (!levels_.empty()) {
            if (levels_.back().left.empty()) {
                if (Result left = leave(); !left) return left;
                continue;
            }
            auto [name, type] = std::move(levels_.back().left.back());
            levels_.back().left.pop_back();
            if (type == DT_UNKNOWN) {
                struct stat status{};
                if (fstatat(folder_.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return failure(name);
                type = S_ISDIR(status.st_mode) ? DT_DIR : DT_REG;
            }
            Result removed = type == DT_DIR ? enter(folder_.get(), name) : removeEntry(name, 0);
            if (!removed) return removed;
        }
        return {};
    }

private:
    // A folder on the way down from the top, with what is left in it to remove.
    struct Level {
        std::string name;  // in its parent; the whole path for the top
        struct stat status;
        FolderEntries left;
    };

    std::string pathOf(const std::string& name) const {
        std::string path;
        for (const Level& level : levels_) path += level.name + "/";
        return path + name;
    }

    // The failure for the entry `name` of the open folder, for the reason in errno.
    Result failure(const std::string& name) const {
        int error = errno;
        return removeError(pathOf(name), error);
    }

    // Opens and lists the folder `name` of `parent`, which becomes the open folder.
    Result enter(int parent, const std::string& name) {
        Descriptor child(openFolder(parent, name.c_str()));
        struct stat status{};
        if (child.get() < 0 || fstat(child.get(), &status) != 0) return failure(name);
        auto entries = folderEntries(child.get());
        if (!entries) return removeError(pathOf(name), *entries.error().errorNumber());
        levels_.push_back({name, status, std::move(entries).value()});
        folder_ = std::move(child);
        return {};
    }

    // Goes back up from the emptied open folder and removes it.
    Result leave() {
        std::string name = std::move(levels_.back().name);
        levels_.pop_back();
        if (levels_.empty()) {
            folder_ = Descriptor();
            return rmdir(name.c_str()) == 0 ? Result() : removeError(name, errno);
        }
        Descriptor parent(openat(folder_.get(), "..", kFolderFlags));
        struct stat status{};
        if (parent.get() < 0 || fstat(parent.get(), &status) != 0) return failure(name);
        if (!isSameFolder(status, levels_.back().status)) return removeError(pathOf(name), kMoved);
        folder_ = std::move(parent);
        return removeEntry(name, AT_REMOVEDIR);
    }

    // Removes the entry `name` of the open folder, opening up a read-only folder of ours.
    Result removeEntry(const std::string& name, int flags) {
        if (unlinkat(folder_.get(), name.c_str(), flags) == 0) return {};
        struct stat status{};
        if (isDenied(errno) && fstat(folder_.get(), &status) == 0 &&
            fchmod(folder_.get(), (status.st_mode & 07777) | S_IRWXU) == 0 &&
            unlinkat(folder_.get(), name.c_str(), flags) == 0) {
            return {};
        }
        return failure(name);
    }

    Descriptor folder_;  // the deepest level's folder
    std::vector<Level> levels_;
};

}  // namespace

Result removeTree(const std::string& path) {
    struct stat status{};
    if (lstat(path.c_str(), &status) != 0) return removeError(path, errno);
    if (!S_ISDIR(status.st_mode)) {
        if (unlink(path.c_str()) != 0) return removeError(path, errno);
        return {};
    }
    return TreeRemoval().run(path);
}

}  // namespace platform::linux_backend
