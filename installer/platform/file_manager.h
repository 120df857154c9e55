// The file system operations the installer performs.
//
// Every operation is safe to call from any thread. A failure is returned as an `Error` whose
// description names what went wrong and where; nothing is thrown.
#pragma once

#include <memory>
#include <string>

#include "platform/error.h"
#include "platform/expected.h"
#include "platform/file_url.h"

namespace platform {

// A claim on one location in the file system that every process on the machine honours, whichever
// user runs it. Held until the handle is destroyed or the process ends, however it ends.
class ItemLock {
public:
    virtual ~ItemLock() = default;
};

class FileManager {
public:
    virtual ~FileManager() = default;

    // True when any file-system object exists at `path`. A symbolic link counts as existing when
    // its target does (the link is followed, as the platform's own test does).
    virtual bool fileExistsAtPath(const std::string& path) = 0;

    // Removes the item at `url` and everything below it. Symbolic links are removed, never
    // followed. Fails when nothing is there. Not atomic: a failure may leave part of the tree.
    virtual Expected<void, Error> removeItem(const FileURL& url) = 0;

    // Copies the item at `from` to `to`, which must not exist yet; the folder that will hold `to`
    // must exist. The copy keeps what an application bundle needs to keep working and to keep its
    // code signature valid: symbolic links as links with their exact targets, permissions,
    // modification times, extended attributes and empty folders; hard links within the item stay
    // hard links and sparse files stay sparse. Fails before writing anything when `to` is `from`
    // itself or lies inside it, whatever links or ".." hide that. Not atomic: a failure may leave
    // a partial tree at `to`.
    virtual Expected<void, Error> copyItem(const FileURL& from, const FileURL& to) = 0;

    // Waits until no other process holds the lock for the item at `url`, then takes it. The item
    // need not exist. Spellings of one location (through linked folders, with "." or doubled
    // slashes) share one lock, and a location keeps its lock when missing folders on its path are
    // created; the item's own name is not resolved, since a link there is replaced, not followed.
    // Fails when no lock can be set up here. Advisory: it keeps out only those who ask for it.
    virtual Expected<std::unique_ptr<ItemLock>, Error> lockItem(const FileURL& url) = 0;
};

}  // namespace platform
