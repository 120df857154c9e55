// Copying file trees, never following symbolic links (their removal is in
// tree_removal.h).
//
// Both copies are safe to call from any thread and block until done. A failure is an `Error`
// whose description names the item and the reason ("Could not copy “/a/b” to “/c/b”: No space
// left on device."); neither is atomic, so a failure may leave part of a tree behind.
#pragma once

#include <string>

#include "platform/error.h"

namespace platform::linux_backend {

// Copies the tree at `from` to `to`, which must not exist (its folder must). Keeps symbolic links
// as links with their exact targets, permission bits (setuid, setgid and sticky included where
// allowed), access and modification times to the nanosecond, extended attributes of every
// namespace this user may read and write, empty folders, and the owner when running as root.
// Never follows a link in the source and never writes through one in the destination: every
// destination item is newly created. Files with holes stay sparse, and names of one file (hard
// links) within the tree stay names of one file. Refuses to copy a folder into itself or an item
// onto itself (posix/copy_into_itself.h). Regular files are copied by a few threads at once.
Expected<void, Error> copyTree(const std::string& from, const std::string& to);

// Like `copyTree`, but `to` may exist: when both are folders, the contents of `from` are merged
// into `to`, each item already there in the way of a copied one being replaced. (What a copy tool
// given an existing destination folder does.)
Expected<void, Error> mergeTree(const std::string& from, const std::string& to);

}  // namespace platform::linux_backend
