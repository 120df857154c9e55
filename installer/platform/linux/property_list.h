// Reading values from property list files (XML or binary) with libplist.
#pragma once

#include <optional>
#include <string>

namespace platform::linux_backend {

// The text stored under `key` in the top-level dictionary of the property list at `path`; none when
// the file cannot be read or parsed, is not a dictionary, or has no text under that key.
//
// Only a regular file of at most 4 MiB is read, and only as much as it holds. It is opened without
// blocking and without following a link in its last component, so whatever else lies at `path`
// (a FIFO, a device, a link) answers none at once: other people's bundles are read this way.
std::optional<std::string> propertyListString(const std::string& path, const std::string& key);

}  // namespace platform::linux_backend
