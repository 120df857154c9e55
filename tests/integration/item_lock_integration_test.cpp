// The file manager's item locks on the real file system, between threads and between processes
// of different users.
#include <gtest/gtest.h>

#include <grp.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <future>

#include "platform/linux/file_manager.h"
#include "support/temp_folder.h"

namespace {

using namespace std::chrono_literals;

std::unique_ptr<platform::ItemLock> lockItem(const std::string& path) {
    return platform::linux_backend::LinuxFileManager().lockItem(platform::FileURL::fileURLWithPath(path));
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

TEST(ItemLock, SpellingsOfOneLocationShareALock) {
    testing_support::TempFolder folder;
    std::filesystem::create_directories(folder / "Apps");
    std::filesystem::create_directory_symlink(folder / "Apps", folder / "Link");
    std::string app = folder / "Apps/Kelvo.app";
    EXPECT_TRUE(sharesTheLock(app, app));
    EXPECT_TRUE(sharesTheLock(app, folder / "Link/Kelvo.app"));
    EXPECT_TRUE(sharesTheLock(app, folder / "./Apps//Kelvo.app"));
    std::string missing = folder / "Link/New/Deeper/Kelvo.app";
    EXPECT_TRUE(sharesTheLock(missing, missing, [&] { std::filesystem::create_directories(folder / "Apps/New/Deeper"); }))
        << "locked before its folders were made";
}

// Another user's installer holds the lock (in a lock file made under a strict umask) and crashes.
TEST(ItemLock, AnotherUsersHolderIsWaitedForUntilItEnds) {
    if (geteuid() != 0) GTEST_SKIP() << "a holder of another user needs root";
    testing_support::TempFolder folder;
    chmod(folder.path().c_str(), 0755);
    std::string app = folder / "Kelvo.app";
    mode_t previousMask = umask(077);
    lockItem(app);  // makes the lock file, as root
    umask(previousMask);
    int locked[2];
    ASSERT_EQ(pipe(locked), 0);
    pid_t holder = fork();
    if (holder == 0) {
        const uid_t kUser = 47112;
        if (setgroups(0, nullptr) != 0 || setresgid(kUser, kUser, kUser) != 0 || setresuid(kUser, kUser, kUser) != 0) _exit(2);
        auto lock = lockItem(app);
        if (!lock || write(locked[1], "L", 1) != 1) _exit(3);
        pause();
    }
    close(locked[1]);
    char byte = 0;
    bool holds = read(locked[0], &byte, 1) == 1;
    close(locked[0]);
    if (!holds) waitpid(holder, nullptr, 0);
    ASSERT_TRUE(holds) << "the other user could not take the lock";
    auto waiting = std::async(std::launch::async, [&] { return lockItem(app); });
    EXPECT_EQ(waiting.wait_for(200ms), std::future_status::timeout);
    kill(holder, SIGKILL);
    waitpid(holder, nullptr, 0);
    EXPECT_EQ(waiting.wait_for(2s), std::future_status::ready);
    EXPECT_NE(waiting.get(), nullptr);
}

}  // namespace
