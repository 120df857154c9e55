#include "platform/linux/file_manager/file_contents.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace platform::linux_backend {
namespace {

using Result = Expected<void, Error>;

// Large enough that a big file takes few calls, small enough that a failing disk is noticed soon.
constexpr std::size_t kRangeChunk = 64u << 20;
constexpr off_t kToEndOfFile = std::numeric_limits<off_t>::max();

bool kernelRefusesRangeCopy(int error) {
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

std::size_t chunk(off_t left, std::size_t most) {
    return static_cast<std::size_t>(std::min<off_t>(left, static_cast<off_t>(most)));
}

// Copies up to `length` bytes with copy_file_range; sets `refused` when the kernel turned it down
// before any byte.
Result copyByRange(int in, int out, off_t length, bool& refused) {
    bool copiedAny = false;
    while (length > 0) {
        ssize_t copied = copy_file_range(in, nullptr, out, nullptr, chunk(length, kRangeChunk), 0);
        if (copied == 0) return {};
        if (copied > 0) {
            copiedAny = true;
            length -= copied;
            continue;
        }
        if (errno == EINTR) continue;
        if (!copiedAny && kernelRefusesRangeCopy(errno)) {
            refused = true;
            return {};
        }
        return errorNumberFailure(errno);
    }
    return {};
}

Result writeAll(int out, const char* data, std::size_t size) {
    while (size > 0) {
        ssize_t written = write(out, data, size);
        if (written < 0) {
            if (errno == EINTR) continue;
            return errorNumberFailure(errno);
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return {};
}

Result copyByReading(int in, int out, off_t length, std::vector<char>& buffer) {
    while (length > 0) {
        ssize_t count = read(in, buffer.data(), chunk(length, buffer.size()));
        if (count == 0) return {};
        if (count < 0) {
            if (errno == EINTR) continue;
            return errorNumberFailure(errno);
        }
        if (Result done = writeAll(out, buffer.data(), static_cast<std::size_t>(count)); !done) return done;
        length -= count;
    }
    return {};
}

// Copies up to `length` bytes from the current offset of `in` to that of `out`.
Result copyRange(int in, int out, off_t length, std::atomic<bool>& rangeCopyWorks, std::vector<char>& buffer) {
    if (rangeCopyWorks.load(std::memory_order_relaxed)) {
        bool refused = false;
        Result copied = copyByRange(in, out, length, refused);
        if (!refused) return copied;
        rangeCopyWorks.store(false, std::memory_order_relaxed);
    }
    return copyByReading(in, out, length, buffer);
}

bool hasHoles(const struct stat& status) { return status.st_blocks * 512 < status.st_size; }

// Copies each stretch of data at its own offset, then gives `out` the full size; the holes
// between stay holes.
Result copyDataAroundHoles(int in, int out, off_t size, std::atomic<bool>& rangeCopyWorks,
                           std::vector<char>& buffer) {
    for (off_t offset = 0;;) {
        off_t data = lseek(in, offset, SEEK_DATA);
        if (data < 0 && errno == ENXIO) break;  // nothing but a hole from `offset` on
        if (data < 0 && errno == EINVAL && offset == 0) {  // a file system that cannot tell
            return copyRange(in, out, kToEndOfFile, rangeCopyWorks, buffer);
        }
        off_t hole = data < 0 ? -1 : lseek(in, data, SEEK_HOLE);
        if (hole < 0 || lseek(in, data, SEEK_SET) < 0 || lseek(out, data, SEEK_SET) < 0) {
            return errorNumberFailure(errno);
        }
        if (Result done = copyRange(in, out, hole - data, rangeCopyWorks, buffer); !done) return done;
        offset = hole;
    }
    if (ftruncate(out, size) != 0) return errorNumberFailure(errno);
    return {};
}

}  // namespace

Result copyFileContents(int in, int out, const struct stat& status, std::atomic<bool>& rangeCopyWorks,
                        std::vector<char>& buffer) {
    if (hasHoles(status)) return copyDataAroundHoles(in, out, status.st_size, rangeCopyWorks, buffer);
    return copyRange(in, out, kToEndOfFile, rangeCopyWorks, buffer);
}

}  // namespace platform::linux_backend
