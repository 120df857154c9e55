// The real privileged command, run by the real AppleScript runner under /bin/sh as root, after a
// plain copy that failed.
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "engine/installer.h"
#include "platform/linux/file_manager.h"
#include "platform/services.h"
#include "support/installer_test_access.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/sample_trees.h"
#include "support/scripted_main_bundle.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;

const std::string kCopyLead = "Could not copy Kelvo to the Applications folder.\n";

// None on success, otherwise the message of the error.
std::optional<std::string> runFallback(const std::string& source, const std::string& destination) {
    auto result = engine::InstallerTestAccess::runPrivilegedInstall(engine::Installer({"x"}), source, destination,
                                                                    platform::Error("The plain copy failed."));
    if (result) return std::nullopt;
    return result.error().localizedDescription();
}

class PrivilegedInstall : public ::testing::Test {
protected:
    void SetUp() override {
        if (auto why = privilegedCommandUnavailable()) GTEST_SKIP() << *why;
    }
};

TEST_F(PrivilegedInstall, QuotingHoldsForAwkwardPaths) {
    const std::string names[] = {
        "blank name", "a'b", "a\"b", R"(a\b)", "$HOME", "`id`", "$(id)", "line\nfeed", "K\u00e9lvo",
        "-dash", "semi; rm -rf ..; echo", "'\\''\"\\\"", std::string(200, 'n'),
    };
    for (const std::string& name : names) {
        TempFolder folder;
        makeSampleBundle(folder / (name + "/Kelvo.app"), 4096);
        writeFile(folder / "canary", "still here");
        std::string destination = folder / ("Apps " + name + "/Kelvo.app");

        ASSERT_EQ(runFallback(folder / (name + "/Kelvo.app"), destination), std::nullopt) << name;
        EXPECT_EQ(differences(snapshotTree(folder / (name + "/Kelvo.app")), snapshotTree(destination)), "") << name;
        EXPECT_EQ(readFile(folder / "canary"), "still here") << name;
    }
}

TEST_F(PrivilegedInstall, ReplacesAnOldBundleAndCreatesAMissingFolder) {
    TempFolder folder;
    makeSampleBundle(folder / "Setup/Kelvo.app", 4096);
    writeFile(folder / "Apps/Kelvo.app/Contents/Old.txt", "old", 0444);
    chmod((folder / "Apps/Kelvo.app/Contents").c_str(), 0555);

    ASSERT_EQ(runFallback(folder / "Setup/Kelvo.app", folder / "Apps/Kelvo.app"), std::nullopt);
    EXPECT_EQ(differences(snapshotTree(folder / "Setup/Kelvo.app"), snapshotTree(folder / "Apps/Kelvo.app")), "");

    ASSERT_EQ(runFallback(folder / "Setup/Kelvo.app", folder / "New/Deeper/Kelvo.app"), std::nullopt);
    EXPECT_EQ(differences(snapshotTree(folder / "Setup/Kelvo.app"), snapshotTree(folder / "New/Deeper/Kelvo.app")), "");
}

TEST_F(PrivilegedInstall, AKelvoThatCannotBeStoppedLeavesTheOldBundleAlone) {
    TempFolder folder;
    makeSampleBundle(folder / "Setup/Kelvo.app", 4096);
    writeFile(folder / "Apps/Kelvo.app/Contents/Info.plist", "old");

    // A child named Kelvo that exits and is not reaped: a zombie, which no signal ends.
    pid_t zombie = fork();
    ASSERT_GE(zombie, 0);
    if (zombie == 0) {
        prctl(PR_SET_NAME, "Kelvo");
        _exit(0);
    }
    while (runCommand("/usr/bin/pgrep -x Kelvo").exitStatus != 0) usleep(10000);

    std::optional<std::string> message = runFallback(folder / "Setup/Kelvo.app", folder / "Apps/Kelvo.app");
    waitpid(zombie, nullptr, 0);
    EXPECT_EQ(message, kCopyLead + "Kelvo is still running. Quit it and try again.");
    EXPECT_EQ(readFile(folder / "Apps/Kelvo.app/Contents/Info.plist"), "old");
}

// The real file manager, except that its plain copy fails, as it does on a disk the user may not
// write to.
class FileManagerWhoseCopyFails final : public platform::FileManager {
public:
    bool fileExistsAtPath(const std::string& path) override { return real_.fileExistsAtPath(path); }
    std::optional<std::string> currentDirectoryPath() override { return real_.currentDirectoryPath(); }
    std::optional<platform::Error> removeItem(const platform::FileURL& url) override { return real_.removeItem(url); }
    std::unique_ptr<platform::ItemLock> lockItem(const platform::FileURL& url) override { return real_.lockItem(url); }
    std::optional<platform::Error> copyItem(const platform::FileURL&, const platform::FileURL&) override {
        return platform::Error("You don\u2019t have permission to save the file.");
    }

private:
    platform::linux_backend::LinuxFileManager real_;
};

TEST_F(PrivilegedInstall, WholeInstallFallsBackWhenThePlainCopyFails) {
    TempFolder folder;
    makeSampleBundle(folder / "Setup/Kelvo.app", 4096);
    writeFile(folder / "Apps/Kelvo.app/Contents/Old.txt", "old");
    ScriptedMainBundle bundle;
    bundle.bundle = folder / "Setup";
    bundle.resources = folder / "Setup";
    FileManagerWhoseCopyFails files;
    platform::ScopedServices scope({.mainBundle = &bundle, .fileManager = &files});

    auto result = engine::Installer({"x", "--dest", folder / "Apps"}).install();
    ASSERT_TRUE(result) << result.error().localizedDescription();
    EXPECT_EQ(differences(snapshotTree(folder / "Setup/Kelvo.app"), snapshotTree(folder / "Apps/Kelvo.app")), "");
}

}  // namespace
