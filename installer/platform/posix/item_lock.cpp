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

#include "platform/posix/descriptor.h"

namespace platform::posix {
namespace {

constexpr const char* kLockFilePrefix = "/tmp/.item-lock-";
// Readable by every user, whatever the creator's umask: each opens it read-only.
constexpr mode_t kLockFileMode = 0444;
constexpr int kOpenFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

// Closing the lock file releases the lock.
class FlockedFile final : public ItemLock {
public:
    explicit FlockedFile(Descriptor file) : file_(std::move(file)) {}

private:
    Descriptor file_;
};

using Result = Expected<std::unique_ptr<ItemLock>, Error>;

Result noLock(const std::string& path, const std::string& reason) {
    return Result::failure(Error("Could not lock " + quoted(path) + ": " + reason + "."));
}

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

Result lockItemAt(const std::string& path) {
    std::optional<std::string> location = canonicalLocation(path);
    if (!location) return noLock(path, "no folder on its path can be found");
    std::string lockFile = lockFilePath(*location);
    Descriptor file(openLockFile(lockFile));
    if (file.get() < 0) return noLock(path, errorNumberText(errno));
    struct stat status{};
    if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return noLock(path, quoted(lockFile) + " is not a plain file");
    }
    while (flock(file.get(), LOCK_EX) != 0) {
        if (errno != EINTR) return noLock(path, errorNumberText(errno));
    }
    return Result(std::make_unique<FlockedFile>(std::move(file)));
}

}  // namespace platform::posix
