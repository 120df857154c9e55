#include "platform/linux/file_manager.h"

#include <sys/stat.h>

#include "platform/linux/file_manager/file_tree.h"
#include "platform/posix/item_lock.h"
#include "platform/linux/file_manager/tree_removal.h"

namespace platform::linux_backend {

bool LinuxFileManager::fileExistsAtPath(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0;
}

Expected<void, Error> LinuxFileManager::removeItem(const FileURL& url) { return removeTree(url.path()); }

Expected<void, Error> LinuxFileManager::copyItem(const FileURL& from, const FileURL& to) {
    return copyTree(from.path(), to.path());
}

Expected<std::unique_ptr<ItemLock>, Error> LinuxFileManager::lockItem(const FileURL& url) {
    return posix::lockItemAt(url.path());
}

}  // namespace platform::linux_backend
