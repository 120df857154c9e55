// The item lock on the real file system: between threads, and between processes of different users.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <future>
#include <thread>

#include "platform/posix/item_lock.h"
#include "support/other_user.h"
#include "support/temp_folder.h"

namespace {

using namespace std::chrono_literals;
using namespace testing_support;

std::unique_ptr<platform::ItemLock> lockItem(const std::string& path) {
    auto lock = platform::posix::lockItemAt(path);
    return lock ? std::move(lock).value() : nullptr;
}

// True when locking `second` (after `meanwhile`) waits while `first` is held, and gets the lock
// once it is released.
bool sharesTheLock(const std::string& first, const std::string& second, const std::function<void()>& meanwhile = [] {}) {
    auto held = lockItem(first);
    meanwhile();
    auto waiting = std::async(std::launch::async, [&] { return lockItem(second); });
    bool waited = waiting.wait_for(200ms) == std::future_status::timeout;
    held.reset();
    return waited && waiting.get() != nullptr;
}

TEST(ItemLock, EverySpellingOfOnePlaceSharesItsLock) {
    TempFolder folder;
    std::filesystem::create_directories(folder / "Apps");
    std::filesystem::create_directory_symlink(folder / "Apps", folder / "Link");
    std::string app = folder / "Apps/Kelvo.app";
    EXPECT_TRUE(sharesTheLock(app, folder / "Link/Kelvo.app"));
    EXPECT_TRUE(sharesTheLock(app, folder / "./Apps//Kelvo.app"));
    std::string missing = folder / "Link/New/Kelvo.app";
    EXPECT_TRUE(sharesTheLock(missing, missing, [&] { std::filesystem::create_directories(folder / "Apps/New"); }))
        << "locked before its folder was made";
}

// Another user's installer holds the lock (in a lock file made under a strict umask) and crashes.
TEST(ItemLock, AnotherUsersHolderIsWaitedForUntilItEnds) {
    if (geteuid() != 0) GTEST_SKIP() << "a holder of another user needs root";
    TempFolder folder;
    chmod(folder.path().c_str(), 0755);
    std::string app = folder / "Kelvo.app";
    mode_t previousMask = umask(077);
    lockItem(app);  // makes the lock file, as root
    umask(previousMask);
    std::promise<pid_t> holder;
    std::thread holding([&] {
        asOrdinaryUser(kNobody, [&] { return lockItem(app) ? (pause(), "") : "no lock"; },
                       [&](pid_t child) { holder.set_value(child); });
    });
    pid_t other = holder.get_future().get();
    std::this_thread::sleep_for(300ms);  // for the other user to take the lock
    auto waiting = std::async(std::launch::async, [&] { return lockItem(app); });
    EXPECT_EQ(waiting.wait_for(300ms), std::future_status::timeout);
    kill(other, SIGKILL);
    EXPECT_EQ(waiting.wait_for(2s), std::future_status::ready);
    EXPECT_NE(waiting.get(), nullptr);
    holding.join();
}

}  // namespace
