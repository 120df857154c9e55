// Copying the bytes of one open regular file into another.
#pragma once

#include <sys/stat.h>

#include <atomic>
#include <vector>

#include "platform/error.h"

namespace platform::linux_backend {

// Copies the contents of the regular file `in`, whose status is `status`, into the new, empty
// file `out`, both open at offset 0. A file with holes (fewer blocks than its size needs) keeps
// them: only its data is copied and the holes are left unwritten, so the copy takes no more room
// than the original. Uses the kernel's copy_file_range while `rangeCopyWorks` says it can; when
// the kernel refuses it for these file systems (EXDEV, EINVAL, ENOSYS, EOPNOTSUPP before any byte
// was copied) clears the flag, so the rest of a tree copy skips the attempt, and reads and writes
// through `buffer` instead. A failure carries the error number.
Expected<void, Error> copyFileContents(int in, int out, const struct stat& status, std::atomic<bool>& rangeCopyWorks,
                                       std::vector<char>& buffer);

}  // namespace platform::linux_backend
