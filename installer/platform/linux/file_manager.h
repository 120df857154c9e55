// The file manager on POSIX file systems.
#pragma once

#include "platform/file_manager.h"

namespace platform::linux_backend {

class LinuxFileManager final : public FileManager {
public:
    bool fileExistsAtPath(const std::string& path) override;
    Expected<void, Error> removeItem(const FileURL& url) override;
    Expected<void, Error> copyItem(const FileURL& from, const FileURL& to) override;
    Expected<std::unique_ptr<ItemLock>, Error> lockItem(const FileURL& url) override;
};

}  // namespace platform::linux_backend
