#include "platform/linux/file_manager/item_metadata.h"

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <vector>

namespace platform::linux_backend {
namespace {

using Result = Expected<void, Error>;

constexpr std::string_view kUserNamespace = "user.";

ssize_t listNames(ItemHandle item, std::vector<char>& names) {
    for (;;) {
        ssize_t size = item.fd >= 0 ? flistxattr(item.fd, nullptr, 0) : llistxattr(item.path.c_str(), nullptr, 0);
        if (size <= 0) return size;
        names.resize(static_cast<std::size_t>(size));
        size = item.fd >= 0 ? flistxattr(item.fd, names.data(), names.size())
                            : llistxattr(item.path.c_str(), names.data(), names.size());
        if (size >= 0 || errno != ERANGE) return size;  // ERANGE: the list grew in between
    }
}

ssize_t getValue(ItemHandle item, const char* name, std::vector<char>& value) {
    for (;;) {
        ssize_t size = item.fd >= 0 ? fgetxattr(item.fd, name, nullptr, 0)
                                    : lgetxattr(item.path.c_str(), name, nullptr, 0);
        if (size <= 0) return size;
        value.resize(static_cast<std::size_t>(size));
        size = item.fd >= 0 ? fgetxattr(item.fd, name, value.data(), value.size())
                            : lgetxattr(item.path.c_str(), name, value.data(), value.size());
        if (size >= 0 || errno != ERANGE) return size;
    }
}

int setValue(ItemHandle item, const char* name, const char* value, std::size_t size) {
    return item.fd >= 0 ? fsetxattr(item.fd, name, value, size, 0)
                        : lsetxattr(item.path.c_str(), name, value, size, 0);
}

bool mayBeLeftOut(std::string_view name, int error) {
    bool refused = error == EPERM || error == EACCES || error == ENOTSUP;
    return refused && !name.starts_with(kUserNamespace);
}

Result copyExtendedAttributes(ItemHandle source, ItemHandle destination) {
    std::vector<char> names;
    ssize_t listed = listNames(source, names);
    if (listed < 0) return errno == ENOTSUP ? Result() : errorNumberFailure(errno);
    std::vector<char> value;
    for (std::size_t at = 0; at < static_cast<std::size_t>(listed);) {
        const char* name = names.data() + at;
        std::string_view nameView(name);
        at += nameView.size() + 1;
        ssize_t size = getValue(source, name, value);
        if (size < 0) {
            if (errno == ENODATA || mayBeLeftOut(nameView, errno)) continue;
            return errorNumberFailure(errno);
        }
        if (setValue(destination, name, value.data(), static_cast<std::size_t>(size)) != 0 &&
            !mayBeLeftOut(nameView, errno)) {
            return errorNumberFailure(errno);
        }
    }
    return {};
}

}  // namespace

Result copyMetadata(ItemHandle source, ItemHandle destination, const struct stat& status) {
    bool isLink = destination.fd < 0;
    if (geteuid() == 0) {
        int changed = isLink ? lchown(destination.path.c_str(), status.st_uid, status.st_gid)
                             : fchown(destination.fd, status.st_uid, status.st_gid);
        if (changed != 0) return errorNumberFailure(errno);
    }
    if (Result done = copyExtendedAttributes(source, destination); !done) return done;
    if (!isLink && fchmod(destination.fd, status.st_mode & 07777) != 0) return errorNumberFailure(errno);
    const struct timespec times[2] = {status.st_atim, status.st_mtim};
    int timed = isLink ? utimensat(AT_FDCWD, destination.path.c_str(), times, AT_SYMLINK_NOFOLLOW)
                       : futimens(destination.fd, times);
    if (timed != 0) return errorNumberFailure(errno);
    return {};
}

}  // namespace platform::linux_backend
