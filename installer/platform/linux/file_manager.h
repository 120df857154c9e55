// The file manager on POSIX file systems.
#pragma once

#include "platform/file_manager.h"

namespace platform::linux_backend {

class LinuxFileManager final : public FileManager {
public:
    bool fileExistsAtPath(const std::string& path) override;
    std::optional<std::string> currentDirectoryPath() override;
    std::optional<Error> removeItem(const FileURL& url) override;
    std::optional<Error> copyItem(const FileURL& from, const FileURL& to) override;
    std::unique_ptr<ItemLock> lockItem(const FileURL& url) override;
};

}  // namespace platform::linux_backend
