// The Linux file manager's removal of a file tree, which never follows a symbolic link.
//
// Safe to call from any thread; blocks until done. A failure is an `Error` whose description
// names the item and the reason ("Could not remove “/a/b”: Permission denied."); removal is not
// atomic, so a failure may leave part of the tree behind.
#pragma once

#include <string>

#include "platform/error.h"
#include "platform/expected.h"

namespace platform::linux_backend {

// Removes `path` and everything below it; a symbolic link is removed, not followed. Folders
// without write or search permission that this user owns are opened up so their contents can
// go. Fails when nothing is at `path`.
Expected<void, Error> removeTree(const std::string& path);

}  // namespace platform::linux_backend
