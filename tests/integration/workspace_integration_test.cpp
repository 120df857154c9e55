// The real workspace scan, checked against pgrep and ps as independent sources.
#include <gtest/gtest.h>

#include <plist/plist.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <set>

#include "engine/product_identity.h"
#include "platform/services.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/private_mounts.h"
#include "support/started_process.h"
#include "support/temp_folder.h"

namespace {

using testing_support::StartedProcess;

std::set<pid_t> pidsOf(const std::vector<std::shared_ptr<platform::RunningApplication>>& applications,
                       const std::string& executableName) {
    std::set<pid_t> pids;
    for (const auto& application : applications) {
        auto executable = application->executableURL();
        if (executable && executable->lastPathComponent() == executableName) pids.insert(application->processIdentifier());
    }
    return pids;
}

TEST(Workspace, ListsExactlyTheBundleCopiesThatPgrepAndPsSee) {
    if (auto why = testing_support::ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
    testing_support::TempFolder folder;
    std::filesystem::copy(testing_support::buildFolder() + "/kelvo/Kelvo.app", folder / "Copy.app",
                          std::filesystem::copy_options::recursive);
    std::filesystem::copy_file("/bin/sleep", folder / "Kelvo");
    StartedProcess first(testing_support::standInKelvoExecutable(), {});
    StartedProcess second(folder / "Copy.app/Contents/MacOS/Kelvo", {"--ignore-sigterm"});
    StartedProcess plain(folder / "Kelvo", {"1000"});

    auto applications = platform::workspace().runningApplications();
    std::vector<pid_t> byPgrep = testing_support::pgrepKelvo();
    EXPECT_EQ(std::set<pid_t>(byPgrep.begin(), byPgrep.end()), (std::set<pid_t>{first.pid(), second.pid(), plain.pid()}));
    EXPECT_EQ(pidsOf(applications, "Kelvo"), (std::set<pid_t>{first.pid(), second.pid()}))
        << "the plain executable lies in no bundle";

    for (const auto& application : applications) {
        pid_t pid = application->processIdentifier();
        // ps reads the same /proc, but by its own code: the owner and the executable must agree.
        auto ps = testing_support::runCommand("ps -o ruid= -p " + std::to_string(pid));
        if (ps.exitStatus != 0) continue;  // gone since the scan
        EXPECT_EQ(std::stoul(ps.output), geteuid()) << "pid " << pid;
        std::error_code ignored;
        auto exe = std::filesystem::read_symlink("/proc/" + std::to_string(pid) + "/exe", ignored);
        EXPECT_EQ(application->executableURL()->path(), exe.string()) << "pid " << pid;
        EXPECT_NE(exe.parent_path().string().find(".app/Contents/MacOS"), std::string::npos) << exe;
    }
    for (pid_t pid : {first.pid(), second.pid()}) {
        auto application = platform::workspace().runningApplicationWithProcessIdentifier(pid);
        ASSERT_NE(application, nullptr) << pid;
        EXPECT_EQ(application->bundleIdentifier(), engine::kTargetBundleIdentifier);
        EXPECT_FALSE(application->isTerminated());
    }
    EXPECT_EQ(platform::workspace().runningApplicationWithProcessIdentifier(getpid()), nullptr);
    EXPECT_EQ(platform::workspace().runningApplicationWithProcessIdentifier(0), nullptr);
    EXPECT_EQ(platform::workspace().runningApplicationWithProcessIdentifier(-1), nullptr);
}

TEST(Workspace, ReadsTheBundleIdentifierFromABinaryInfoPlist) {
    if (auto why = testing_support::ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
    testing_support::TempFolder folder;
    std::string bundle = folder / "Other.app";
    std::filesystem::create_directories(bundle + "/Contents/MacOS");
    std::filesystem::copy_file(testing_support::standInKelvoExecutable(), bundle + "/Contents/MacOS/Kelvo");
    // The same dictionary, written in the binary form.
    plist_t info = plist_new_dict();
    plist_dict_set_item(info, "CFBundleIdentifier", plist_new_string(engine::kTargetBundleIdentifier));
    plist_dict_set_item(info, "CFBundleExecutable", plist_new_string("Kelvo"));
    char* binary = nullptr;
    uint32_t length = 0;
    plist_to_bin(info, &binary, &length);
    plist_free(info);
    ASSERT_NE(binary, nullptr);
    testing_support::writeFile(bundle + "/Contents/Info.plist", std::string(binary, length));
    std::free(binary);
    ASSERT_EQ(testing_support::readFile(bundle + "/Contents/Info.plist").substr(0, 8), "bplist00");
    StartedProcess kelvo(bundle + "/Contents/MacOS/Kelvo", {});
    auto application = platform::workspace().runningApplicationWithProcessIdentifier(kelvo.pid());
    ASSERT_NE(application, nullptr);
    EXPECT_EQ(application->bundleIdentifier(), engine::kTargetBundleIdentifier);
}

TEST(Workspace, AnApplicationOnAStalledMountHasNoBundleIdentifierAndHoldsNothingUp) {
    if (auto why = testing_support::enterPrivateMountNamespace()) GTEST_SKIP() << *why;
    testing_support::TempFolder folder;
    std::string bundle = folder / "Other.app";
    std::filesystem::create_directories(bundle + "/Contents/MacOS");
    std::filesystem::copy_file("/bin/sleep", bundle + "/Contents/MacOS/other");
    StartedProcess other(bundle + "/Contents/MacOS/other", {"1000"});
    auto stalled = std::make_unique<testing_support::StalledMount>(bundle + "/Contents");
    if (stalled->failure()) GTEST_SKIP() << *stalled->failure();

    auto scan = std::async(std::launch::async, [] { return platform::workspace().runningApplications(); });
    bool quick = scan.wait_for(std::chrono::seconds(2)) == std::future_status::ready;
    stalled.reset();  // fails whatever still waits on the mount
    ASSERT_TRUE(quick) << "the scan waited on the stalled mount";
    auto applications = scan.get();
    auto found = std::find_if(applications.begin(), applications.end(),
                              [&](const auto& application) { return application->processIdentifier() == other.pid(); });
    ASSERT_NE(found, applications.end());
    EXPECT_EQ((*found)->bundleIdentifier(), std::nullopt);
}

}  // namespace
