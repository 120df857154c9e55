// The file manager's item locks, on any POSIX system: flock(2) on a lock file in /tmp. Plain POSIX
// and BSD calls only, nothing Linux-only, so every POSIX backend can use it as it is.
//
// The lock file is named after a digest of the item's canonical location, so that different users
// and different spellings meet at one file. /tmp is shared by every user and sticky; a per-user
// temporary folder (macOS's TMPDIR) would not be. Another user may have made the file, so it is
// opened read-only (flock needs no more), and never with O_CREAT when it exists already: a sticky
// folder may refuse that for a file of another user (Linux's fs.protected_regular). It is never
// followed through a link, and anything but a regular file there means no lock. Lock files stay
// behind: removing one could let a waiter lock a file that is no longer the one others open.
#pragma once

#include <memory>
#include <string>

#include "platform/file_manager.h"

namespace platform::posix {

// The lock for the item at `path` (absolute), once no other process holds it; a failure when it
// cannot be set up.
Expected<std::unique_ptr<ItemLock>, Error> lockItemAt(const std::string& path);

}  // namespace platform::posix
