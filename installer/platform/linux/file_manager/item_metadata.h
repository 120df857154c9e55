// Carrying a file-system item's metadata over to its copy: extended attributes, owner,
// permission bits and times. Used by the tree copy once an item's contents are in place.
#pragma once

#include <sys/stat.h>

#include <string>

#include "platform/error.h"

namespace platform::linux_backend {

// Where an item is reached: by an open descriptor, or (when `fd` is negative) by a path whose
// last component is not followed.
struct ItemHandle {
    int fd = -1;
    const std::string& path;
};

// Gives `destination` the metadata of `source`, whose status is `status`: the owner (when
// running as root), every extended attribute, the permission bits and the access and
// modification times, in that order. Changing the owner clears setuid bits and file capabilities
// (the "security.capability" attribute), so attributes and mode follow it; the times come last
// because nothing else touches them. Attributes this user may not write outside the "user."
// namespace (trusted., security., ...) are left out. For a symbolic link (`destination.fd`
// negative) the permission bits do not apply. A failure carries the error number.
Expected<void, Error> copyMetadata(ItemHandle source, ItemHandle destination, const struct stat& status);

}  // namespace platform::linux_backend
