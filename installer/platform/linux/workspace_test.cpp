// The workspace's list of running applications on real processes, checked against pgrep and its
// reading of their Info.plist files. Each test program runs in its own process namespace, whose
// first process reaps what the tests start once it ends.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <functional>
#include <future>
#include <set>

#include "engine/product_identity.h"
#include "platform/services.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;
using namespace std::chrono_literals;

const std::string kStandInKelvo = buildFolder() + "/kelvo/Kelvo.app/Contents/MacOS/Kelvo";


class RunningApplications : public testing::Test {
protected:
    void SetUp() override {
        if (auto why = ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
    }

    TempFolder folder;
};

// A program named Kelvo in no bundle is pgrep's to find, not the scan's.
TEST_F(RunningApplications, TheScanListsTheBundleCopiesAndNothingElse) {
    std::filesystem::copy(buildFolder() + "/kelvo/Kelvo.app", folder / "Copy.app", std::filesystem::copy_options::recursive);
    std::string infoPlist = shellWord(folder / "Copy.app/Contents/Info.plist");
    ASSERT_EQ(runCommand("plistutil -f bin -i " + infoPlist + " -o " + infoPlist).exitStatus, 0) << "a binary Info.plist";
    std::filesystem::copy_file("/bin/sleep", folder / "Kelvo");
    pid_t first = startInBackground(kStandInKelvo), second = startInBackground(folder / "Copy.app/Contents/MacOS/Kelvo");
    pid_t plain = startInBackground(folder / "Kelvo", "1000");

    std::set<pid_t> bundled;
    for (const auto& application : platform::workspace().runningApplications()) {
        if (application->bundleIdentifier() == engine::kTargetBundleIdentifier) bundled.insert(application->processIdentifier());
    }
    EXPECT_EQ(bundled, (std::set<pid_t>{first, second}));
    for (pid_t pid : {getpid(), plain, 0, -1}) {
        EXPECT_EQ(platform::workspace().runningApplicationWithProcessIdentifier(pid), nullptr) << pid;
    }
}

TEST_F(RunningApplications, AnApplicationOnAStalledMountHoldsTheScanUpNoLonger) {
    std::string bundle = folder / "Other.app";
    std::filesystem::create_directories(bundle + "/Contents/MacOS");
    std::filesystem::copy_file("/bin/sleep", bundle + "/Contents/MacOS/other");
    pid_t other = startInBackground(bundle + "/Contents/MacOS/other", "1000");
    // A FUSE file system whose server never answers, as a network mount whose server went away.
    int server = open("/dev/fuse", O_RDWR | O_CLOEXEC);
    std::string options = "fd=" + std::to_string(server) + ",rootmode=40000,user_id=0,group_id=0";
    if (server < 0 || mount("kelvo-test", (bundle + "/Contents").c_str(), "fuse.stalled", 0, options.c_str()) != 0) {
        GTEST_SKIP() << "no FUSE mount here: " << std::strerror(errno);
    }
    auto scan = std::async(std::launch::async, [] { return platform::workspace().runningApplications(); });
    bool quick = scan.wait_for(2s) == std::future_status::ready;
    close(server);  // fails whatever still waits on the mount
    ASSERT_TRUE(quick) << "the scan waited on the stalled mount";
    for (const auto& application : scan.get()) {
        EXPECT_TRUE(application->processIdentifier() != other || !application->bundleIdentifier()) << "read on the mount";
    }
}

}  // namespace
