// Copies into file systems that fail: a tmpfs that fills up and one mounted read-only, made by the
// test in a mount namespace of its own. The error names the problem, and a second copy into a
// healthy place still works.
#include <gtest/gtest.h>

#include <filesystem>

#include "engine/installer.h"
#include "platform/linux/file_manager.h"
#include "support/installer_test_access.h"
#include "support/private_mounts.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/sample_trees.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;
using platform::FileURL;

constexpr std::size_t kLargerThanTheDisk = 2 << 20;

std::optional<std::string> plainCopy(const std::string& from, const std::string& to) {
    auto error = platform::linux_backend::LinuxFileManager().copyItem(FileURL::fileURLWithPath(from),
                                                                      FileURL::fileURLWithPath(to));
    return error ? std::optional(error->localizedDescription()) : std::nullopt;
}

std::optional<std::string> fallback(const std::string& from, const std::string& to) {
    auto result = engine::InstallerTestAccess::runPrivilegedInstall(engine::Installer({"x"}), from, to,
                                                                    platform::Error("The plain copy failed."));
    return result ? std::nullopt : std::optional(result.error().localizedDescription());
}

class FileFaults : public ::testing::Test {
protected:
    void SetUp() override {
        if (auto why = enterPrivateMountNamespace()) GTEST_SKIP() << *why;
        makeSampleBundle(folder / "Kelvo.app", kLargerThanTheDisk);
        std::filesystem::create_directories(folder / "disk");
    }
    void expectHealthyCopyWorks() {
        ASSERT_EQ(plainCopy(folder / "Kelvo.app", folder / "healthy/Kelvo.app"), std::nullopt);
        EXPECT_EQ(differences(snapshotTree(folder / "Kelvo.app"), snapshotTree(folder / "healthy/Kelvo.app")), "");
    }

    TempFolder folder;
};

TEST_F(FileFaults, FullDiskNamesTheFileAndTheReason) {
    TmpfsMount disk(folder / "disk", "size=1m");
    ASSERT_EQ(disk.failure(), std::nullopt);
    std::string large = "/Kelvo.app/Contents/Resources/Large.bin";
    EXPECT_EQ(plainCopy(folder / "Kelvo.app", folder / "disk/Kelvo.app"),
              "Could not copy \u201C" + folder.path() + large + "\u201D to \u201C" + folder.path() + "/disk" + large +
                  "\u201D: No space left on device.");
    std::filesystem::create_directories(folder / "healthy");
    expectHealthyCopyWorks();
}

TEST_F(FileFaults, ReadOnlyFileSystemRefusesRemovalAndCopy) {
    TmpfsMount disk(folder / "disk", "size=4m");
    ASSERT_EQ(disk.failure(), std::nullopt);
    writeFile(folder / "disk/Kelvo.app/Contents/Info.plist", "old");
    ASSERT_TRUE(disk.remountReadOnly());

    auto removal = platform::linux_backend::LinuxFileManager().removeItem(FileURL::fileURLWithPath(folder / "disk/Kelvo.app"));
    ASSERT_TRUE(removal);
    EXPECT_EQ(removal->localizedDescription(),
              "Could not remove \u201C" + (folder / "disk/Kelvo.app/Contents/Info.plist") + "\u201D: Read-only file system.");
    EXPECT_EQ(plainCopy(folder / "Kelvo.app", folder / "disk/Other.app"),
              "Could not copy \u201C" + (folder / "Kelvo.app") + "\u201D to \u201C" + (folder / "disk/Other.app") +
                  "\u201D: Read-only file system.");
    EXPECT_EQ(readFile(folder / "disk/Kelvo.app/Contents/Info.plist"), "old");
    std::filesystem::create_directories(folder / "healthy");
    expectHealthyCopyWorks();
}

TEST_F(FileFaults, PrivilegedCommandReportsTheFailingToolsMessage) {
    if (auto why = privilegedCommandUnavailable()) GTEST_SKIP() << *why;
    TmpfsMount full(folder / "disk", "size=1m");
    ASSERT_EQ(full.failure(), std::nullopt);
    std::optional<std::string> message = fallback(folder / "Kelvo.app", folder / "disk/Kelvo.app");
    ASSERT_TRUE(message);
    EXPECT_TRUE(message->starts_with("Could not copy Kelvo to the Applications folder.\nditto: Could not copy \u201C"))
        << *message;
    EXPECT_TRUE(message->ends_with("Large.bin\u201D: No space left on device.")) << *message;

    std::filesystem::create_directories(folder / "readonly");
    TmpfsMount readOnly(folder / "readonly", "size=4m");
    writeFile(folder / "readonly/Kelvo.app/Contents/Info.plist", "old");
    ASSERT_TRUE(readOnly.remountReadOnly());
    message = fallback(folder / "Kelvo.app", folder / "readonly/Kelvo.app");
    ASSERT_TRUE(message);
    EXPECT_TRUE(message->find("Read-only file system") != std::string::npos) << *message;
    EXPECT_EQ(readFile(folder / "readonly/Kelvo.app/Contents/Info.plist"), "old");

    EXPECT_EQ(fallback(folder / "Kelvo.app", folder / "healthy/Kelvo.app"), std::nullopt);
    EXPECT_EQ(differences(snapshotTree(folder / "Kelvo.app"), snapshotTree(folder / "healthy/Kelvo.app")), "");
}

}  // namespace
