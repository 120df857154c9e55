#include "platform/linux/file_manager/folder_entries.h"

#include <dirent.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

namespace platform::linux_backend {

Expected<FolderEntries, Error> folderEntries(int folder) {
    using Result = Expected<FolderEntries, Error>;
    // readdir reads through a descriptor of its own, which closedir closes.
    int copy = dup(folder);
    DIR* listing = copy >= 0 ? fdopendir(copy) : nullptr;
    if (listing == nullptr) {
        int error = errno;
        if (copy >= 0) close(copy);
        return Result::failure(Error::fromErrorNumber(error));
    }
    FolderEntries entries;
    errno = 0;
    while (dirent* entry = readdir(listing)) {
        std::string_view name = entry->d_name;
        if (name != "." && name != "..") entries.emplace_back(name, entry->d_type);
    }
    int error = errno;
    closedir(listing);
    if (error != 0) return Result::failure(Error::fromErrorNumber(error));
    return entries;
}

}  // namespace platform::linux_backend
