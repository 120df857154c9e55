// The file system operations the installer performs.
//
// Every operation is safe to call from any thread. A failure is returned as an `Error` whose
// description names what went wrong and where; nothing is thrown.
#pragma once

#include <optional>
#include <string>

#include "platform/error.h"
#include "platform/file_url.h"

namespace platform {

class FileManager {
public:
    virtual ~FileManager() = default;

    // True when any file-system object exists at `path`. A symbolic link counts as existing when
    // its target does (the link is followed, as the platform's own test does).
    virtual bool fileExistsAtPath(const std::string& path) = 0;

    // The process's current working directory, as an absolute path; none when it cannot be told
    // (it has been removed, or a folder above it may not be read).
    virtual std::optional<std::string> currentDirectoryPath() = 0;

    // Removes the item at `url` and everything below it. Symbolic links are removed, never
    // followed. Fails when nothing is there. Not atomic: a failure may leave part of the tree.
    virtual std::optional<Error> removeItem(const FileURL& url) = 0;

    // Copies the item at `from` to `to`, which must not exist yet; the folder that will hold `to`
    // must exist. The copy keeps what an application bundle needs to keep working and to keep its
    // code signature valid: symbolic links as links with their exact targets, permissions,
    // modification times, extended attributes and empty folders. Not atomic: a failure may leave
    // a partial tree at `to`.
    virtual std::optional<Error> copyItem(const FileURL& from, const FileURL& to) = 0;
};

}  // namespace platform
