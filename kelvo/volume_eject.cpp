#include "volume_eject.h"

#include <sys/mount.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

namespace kelvo {
namespace {

constexpr auto kBusyRetryInterval = std::chrono::milliseconds(100);
// A browsable image can be held busy by Spotlight indexing it for most of a minute.
constexpr auto kBusyGiveUpAfter = std::chrono::seconds(60);
constexpr const char* kEjected = "ejected";

}  // namespace

std::string ejectVolume(const std::string& mountPoint) {
    const auto giveUpAt = std::chrono::steady_clock::now() + kBusyGiveUpAfter;
    for (;;) {
        if (umount2(mountPoint.c_str(), UMOUNT_NOFOLLOW) == 0) return kEjected;
        int error = errno;
        if (error != EBUSY || std::chrono::steady_clock::now() >= giveUpAt) {
            return std::string("not ejected: ") + std::strerror(error);
        }
        std::this_thread::sleep_for(kBusyRetryInterval);
    }
}

}  // namespace kelvo
