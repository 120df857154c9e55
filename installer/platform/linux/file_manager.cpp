#include "platform/linux/file_manager.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <vector>

#include "platform/linux/file_tree.h"
#include "platform/posix/item_lock.h"
#include "platform/posix/tree_removal.h"

namespace platform::linux_backend {

bool LinuxFileManager::fileExistsAtPath(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0;
}

std::optional<std::string> LinuxFileManager::currentDirectoryPath() {
    std::vector<char> buffer(PATH_MAX);
    while (getcwd(buffer.data(), buffer.size()) == nullptr) {
        if (errno != ERANGE) return std::nullopt;
        buffer.resize(buffer.size() * 2);
    }
    return std::string(buffer.data());
}

std::optional<Error> LinuxFileManager::removeItem(const FileURL& url) { return posix::removeTree(url.path()); }

std::optional<Error> LinuxFileManager::copyItem(const FileURL& from, const FileURL& to) {
    return copyTree(from.path(), to.path());
}

std::unique_ptr<ItemLock> LinuxFileManager::lockItem(const FileURL& url) {
    return posix::lockItemAt(url.path());
}

}  // namespace platform::linux_backend
