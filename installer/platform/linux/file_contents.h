// Copying the bytes of one open regular file into another.
#pragma once

#include <atomic>
#include <optional>
#include <vector>

namespace platform::linux_backend {

// Copies everything from the current offset of `in` to end of file into `out`. Uses the kernel's
// copy_file_range while `rangeCopyWorks` says it can; when the kernel refuses it for these file
// systems (EXDEV, EINVAL, ENOSYS, EOPNOTSUPP before any byte was copied) clears the flag, so the
// rest of a tree copy skips the attempt, and reads and writes through `buffer` instead.
// The error number on failure.
std::optional<int> copyFileContents(int in, int out, std::atomic<bool>& rangeCopyWorks,
                                    std::vector<char>& buffer);

}  // namespace platform::linux_backend
