// Listing an open folder, for the file manager's tree copy and tree removal.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/error.h"

namespace platform::linux_backend {

// Each entry's name and type (a d_type value; DT_UNKNOWN where the file system does not tell),
// without "." and "..", in the order the folder gives them.
using FolderEntries = std::vector<std::pair<std::string, unsigned char>>;

// The entries of the folder open as `folder`, which stays open and the caller's. A failure carries
// the error number.
Expected<FolderEntries, Error> folderEntries(int folder);

}  // namespace platform::linux_backend
