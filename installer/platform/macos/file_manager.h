// The file manager on Foundation's default file manager, which is safe to use from any thread.
//
// A failed removal or copy carries the NSError's localized description, the sentence macOS shows
// for it ("“Kelvo.app” couldn’t be copied because you don’t have permission to access
// “Applications”.").
#pragma once

#include "platform/file_manager.h"

namespace platform::macos {

class MacFileManager final : public FileManager {
public:
    bool fileExistsAtPath(const std::string& path) override;
    Expected<void, Error> removeItem(const FileURL& url) override;
    // Foundation's copy keeps symbolic links as links, permissions, dates, extended attributes
    // and empty folders, as the contract asks; then every item of a copy that succeeded loses the
    // quarantine mark (com.apple.quarantine), as when the Finder moves an app into place.
    Expected<void, Error> copyItem(const FileURL& from, const FileURL& to) override;
    // The shared POSIX lock files, so installers on both platforms would meet at one.
    Expected<std::unique_ptr<ItemLock>, Error> lockItem(const FileURL& url) override;
};

}  // namespace platform::macos
