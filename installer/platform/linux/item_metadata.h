// Carrying a file-system item's metadata over to its copy: extended attributes, owner,
// permission bits and times. Used by the tree copy once an item's contents are in place.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace platform::linux_backend {

// Where an item is reached: by an open descriptor, or (when `fd` is negative) by a path whose
// last component is not followed.
struct ItemHandle {
    int fd = -1;
    const std::string& path;
};

// Copies every extended attribute of `source` to `destination`. Attributes this user may not
// write outside the "user." namespace (trusted., security., ...) are left out; anything else
// that fails is an error. The error number on failure.
std::optional<int> copyExtendedAttributes(ItemHandle source, ItemHandle destination);

// Gives `destination` the owner (when running as root), the permission bits and the access and
// modification times in `status`, in that order: changing the owner clears setuid bits, so the
// mode follows it, and the times come last because the other changes do not touch them. For a
// symbolic link (`destination.fd` negative) only the owner and the times apply. The error
// number on failure.
std::optional<int> applyOwnerModeAndTimes(ItemHandle destination, const struct stat& status);

}  // namespace platform::linux_backend
