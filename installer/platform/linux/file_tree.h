// Recursive removal and copying of file trees, never following symbolic links.
#pragma once

#include <optional>
#include <string>

#include "platform/error.h"

namespace platform::linux_backend {

// Removes `path` and everything below it; a symbolic link is removed, not followed. Fails when
// nothing is at `path`.
std::optional<Error> removeTree(const std::string& path);

// Copies the tree at `from` to `to` (which must not exist; its folder must), keeping symbolic links
// with their exact targets, permissions, modification times, extended attributes and empty folders.
std::optional<Error> copyTree(const std::string& from, const std::string& to);

}  // namespace platform::linux_backend
