#include "platform/posix/item_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace platform::posix {
namespace {

constexpr const char* kLockFilePrefix = "/tmp/.item-lock-";
// Readable by every user, whatever the creator's umask: each opens it read-only.
constexpr mode_t kLockFileMode = 0444;
constexpr int kOpenFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

class FlockedFile final : public ItemLock {
public:
    explicit FlockedFile(int fd) : fd_(fd) {}
    ~FlockedFile() override { close(fd_); }

private:
    int fd_;
};

std::optional<std::string> realPath(const std::string& path) {
    char* resolved = realpath(path.c_str(), nullptr);
    if (resolved == nullptr) return std::nullopt;
    std::string result(resolved);
    std::free(resolved);
    return result;
}

// The real path of the longest leading part of the item's folder that exists, then the rest of
// the path as written.
std::optional<std::string> canonicalLocation(const std::string& path) {
    std::string existing = path;
    std::string rest;
    for (;;) {
        std::size_t slash = existing.find_last_of('/');
        if (slash == std::string::npos) return std::nullopt;
        rest = existing.substr(slash) + rest;
        existing.resize(slash);
        if (std::optional<std::string> folder = realPath(existing.empty() ? "/" : existing)) {
            return (*folder == "/" ? "" : *folder) + rest;
        }
    }
}

// FNV-1a: a stable spread of the location over the lock files' names.
std::string lockFilePath(const std::string& location) {
    std::uint64_t digest = 14695981039346656037ull;
    for (unsigned char byte : location) digest = (digest ^ byte) * 1099511628211ull;
    char name[17];
    std::snprintf(name, sizeof name, "%016llx", static_cast<unsigned long long>(digest));
    return kLockFilePrefix + std::string(name);
}

int openLockFile(const std::string& path) {
    for (int attempt = 0; attempt < 2; ++attempt) {
        int fd = open(path.c_str(), kOpenFlags);
        if (fd >= 0 || errno != ENOENT) return fd;
        fd = open(path.c_str(), kOpenFlags | O_CREAT | O_EXCL, kLockFileMode);
        if (fd >= 0) {
            fchmod(fd, kLockFileMode);
            return fd;
        }
        if (errno != EEXIST) return -1;
    }
    return -1;
}

}  // namespace

std::unique_ptr<ItemLock> lockItemAt(const std::string& path) {
    std::optional<std::string> location = canonicalLocation(path);
    if (!location) return nullptr;
    int fd = openLockFile(lockFilePath(*location));
    if (fd < 0) return nullptr;
    struct stat status{};
    int locked = -1;
    if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode)) {
        while ((locked = flock(fd, LOCK_EX)) != 0 && errno == EINTR) {}
    }
    if (locked != 0) {
        close(fd);
        return nullptr;
    }
    return std::make_unique<FlockedFile>(fd);
}

}  // namespace platform::posix
