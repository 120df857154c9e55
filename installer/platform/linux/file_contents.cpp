#include "platform/linux/file_contents.h"

#include <unistd.h>

#include <cerrno>

namespace platform::linux_backend {
namespace {

// Large enough that a big file takes few calls, small enough that a failing disk is noticed soon.
constexpr std::size_t kRangeChunk = 64u << 20;

bool kernelRefusesRangeCopy(int error) {
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

// Copies with copy_file_range; sets `refused` when the kernel turned it down before any byte.
std::optional<int> copyByRange(int in, int out, bool& refused) {
    bool copiedAny = false;
    for (;;) {
        ssize_t copied = copy_file_range(in, nullptr, out, nullptr, kRangeChunk, 0);
        if (copied == 0) return std::nullopt;
        if (copied > 0) {
            copiedAny = true;
            continue;
        }
        if (errno == EINTR) continue;
        if (!copiedAny && kernelRefusesRangeCopy(errno)) {
            refused = true;
            return std::nullopt;
        }
        return errno;
    }
}

std::optional<int> writeAll(int out, const char* data, std::size_t size) {
    while (size > 0) {
        ssize_t written = write(out, data, size);
        if (written < 0) {
            if (errno == EINTR) continue;
            return errno;
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return std::nullopt;
}

std::optional<int> copyByReading(int in, int out, std::vector<char>& buffer) {
    for (;;) {
        ssize_t count = read(in, buffer.data(), buffer.size());
        if (count == 0) return std::nullopt;
        if (count < 0) {
            if (errno == EINTR) continue;
            return errno;
        }
        if (std::optional<int> error = writeAll(out, buffer.data(), static_cast<std::size_t>(count))) {
            return error;
        }
    }
}

}  // namespace

std::optional<int> copyFileContents(int in, int out, std::atomic<bool>& rangeCopyWorks,
                                    std::vector<char>& buffer) {
    if (rangeCopyWorks.load(std::memory_order_relaxed)) {
        bool refused = false;
        std::optional<int> error = copyByRange(in, out, refused);
        if (!refused) return error;
        rangeCopyWorks.store(false, std::memory_order_relaxed);
    }
    return copyByReading(in, out, buffer);
}

}  // namespace platform::linux_backend
