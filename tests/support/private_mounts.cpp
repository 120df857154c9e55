#include "support/private_mounts.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace testing_support {

std::optional<std::string> enterPrivateMountNamespace() {
    if (geteuid() != 0) return "mounting test file systems needs root";
    if (unshare(CLONE_NEWNS) != 0) return std::string("no private mount namespace: ") + std::strerror(errno);
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        return std::string("cannot make mounts private: ") + std::strerror(errno);
    }
    return std::nullopt;
}

TmpfsMount::TmpfsMount(const std::string& folder, const std::string& options) : folder_(folder) {
    if (mount("kelvo-test", folder.c_str(), "tmpfs", 0, options.c_str()) != 0) {
        failure_ = "cannot mount a tmpfs at " + folder + ": " + std::strerror(errno);
    }
}

TmpfsMount::~TmpfsMount() {
    if (!failure_) umount2(folder_.c_str(), MNT_DETACH);
}

bool TmpfsMount::remountReadOnly() {
    return mount("kelvo-test", folder_.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

StalledMount::StalledMount(const std::string& folder) : folder_(folder) {
    connection_ = open("/dev/fuse", O_RDWR | O_CLOEXEC);
    if (connection_ < 0) {
        failure_ = std::string("no FUSE device: ") + std::strerror(errno);
        return;
    }
    std::string options = "fd=" + std::to_string(connection_) + ",rootmode=40000,user_id=0,group_id=0";
    if (mount("kelvo-test", folder.c_str(), "fuse.stalled", MS_NOSUID | MS_NODEV, options.c_str()) != 0) {
        failure_ = "cannot mount FUSE at " + folder + ": " + std::strerror(errno);
    }
}

StalledMount::~StalledMount() {
    if (connection_ >= 0) close(connection_);
    if (!failure_) umount2(folder_.c_str(), MNT_DETACH);
}

}  // namespace testing_support
