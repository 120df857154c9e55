// The real file manager's copy and removal on real trees, checked against an independent walk.
#include <gtest/gtest.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "platform/linux/file_manager.h"
#include "platform/linux/file_tree.h"
#include "platform/posix/tree_removal.h"
#include "support/command.h"
#include "support/sample_trees.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;
using platform::FileURL;
using platform::linux_backend::copyTree;
using platform::posix::removeTree;

std::optional<std::string> copyError(const std::string& from, const std::string& to) {
    platform::linux_backend::LinuxFileManager files;
    auto error = files.copyItem(FileURL::fileURLWithPath(from), FileURL::fileURLWithPath(to));
    if (!error) return std::nullopt;
    return error->localizedDescription();
}

std::string copyMessage(const std::string& from, const std::string& to, const std::string& reason) {
    return "Could not copy \u201C" + from + "\u201D to \u201C" + to + "\u201D: " + reason + ".";
}

TEST(FileTree, CopyKeepsEverythingABundleNeedsAsCpDoes) {
    TempFolder folder;
    makeSampleBundle(folder / "Kelvo.app", 3 << 20);
    ASSERT_EQ(copyError(folder / "Kelvo.app", folder / "Copy.app"), std::nullopt);
    ASSERT_EQ(runCommand("cp -a " + shellWord(folder / "Kelvo.app") + " " + shellWord(folder / "cp.app")).exitStatus, 0);
    TreeSnapshot copy = snapshotTree(folder / "Copy.app");
    EXPECT_EQ(differences(snapshotTree(folder / "cp.app"), copy), "");
    EXPECT_EQ(differences(snapshotTree(folder / "Kelvo.app"), copy), "");
}

TEST(FileTree, CopyOfASingleFileAndOfALink) {
    TempFolder folder;
    writeFile(folder / "file", "contents", 0640);
    symlink("no/such/target", (folder / "link").c_str());
    ASSERT_EQ(copyError(folder / "file", folder / "file copy"), std::nullopt);
    ASSERT_EQ(copyError(folder / "link", folder / "link copy"), std::nullopt);
    EXPECT_EQ(readFile(folder / "file copy"), "contents");
    EXPECT_EQ(std::filesystem::read_symlink(folder / "link copy"), "no/such/target");
}

TEST(FileTree, CopyFailuresNameTheItemAndTheReason) {
    TempFolder folder;
    writeFile(folder / "Kelvo.app/Contents/Info.plist", "x");
    writeFile(folder / "plain file", "x");
    std::filesystem::create_directories(folder / "existing/Kelvo.app");
    const struct {
        const char* name;
        std::string from;
        std::string to;
        std::string failingFrom;
        std::string failingTo;
        std::string reason;
    } rows[] = {
        {"missing source", folder / "Nothing.app", folder / "to", folder / "Nothing.app", folder / "to",
         "No such file or directory"},
        {"missing destination folder", folder / "Kelvo.app", folder / "absent/Kelvo.app", folder / "Kelvo.app",
         folder / "absent/Kelvo.app", "No such file or directory"},
        {"destination folder is a file", folder / "Kelvo.app", folder / "plain file/Kelvo.app", folder / "Kelvo.app",
         folder / "plain file/Kelvo.app", "Not a directory"},
        {"destination exists", folder / "Kelvo.app", folder / "existing/Kelvo.app", folder / "Kelvo.app",
         folder / "existing/Kelvo.app", "File exists"},
        {"name too long", folder / "Kelvo.app", folder / std::string(300, 'n'), folder / "Kelvo.app",
         folder / std::string(300, 'n'), "File name too long"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(copyError(row.from, row.to), copyMessage(row.failingFrom, row.failingTo, row.reason)) << row.name;
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder / "existing/Kelvo.app")) << "nothing written into what was there";
}

TEST(FileTree, CopyIntoItselfIsRefusedBeforeAnythingIsWritten) {
    TempFolder folder;
    writeFile(folder / "Kelvo.app/Contents/Info.plist", "x");
    symlink((folder / "Kelvo.app/Contents").c_str(), (folder / "Contents link").c_str());
    TreeSnapshot before = snapshotTree(folder / "Kelvo.app");
    const std::string onto = "an item cannot be copied onto itself";
    const std::string into = "a folder cannot be copied into itself";
    const struct {
        std::string to;
        std::string reason;
    } rows[] = {
        {folder / "Kelvo.app", onto},
        {folder / "Contents link/..", onto},
        {folder / "Kelvo.app/Contents/Kelvo.app", into},
        {folder / "Contents link/../Copy.app", into},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(copyError(folder / "Kelvo.app", row.to), copyMessage(folder / "Kelvo.app", row.to, row.reason)) << row.to;
    }
    EXPECT_EQ(differences(before, snapshotTree(folder / "Kelvo.app")), "");
    EXPECT_EQ(copyError(folder / "Kelvo.app", folder / "Kelvo.app copy"), std::nullopt) << "a neighbour named alike";
}

TEST(FileTree, DeepTreesAreCopiedAndRemovedWithFewDescriptors) {
    constexpr int kDepth = 1100;
    TempFolder folder;
    std::string levels;
    for (int level = 0; level < kDepth; ++level, levels += "/d") mkdir((folder / "Deep.app" + levels).c_str(), 0755);
    writeFile(folder / "Deep.app" + levels + "/file", "at the bottom");

    rlimit saved{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &saved), 0);
    rlimit lowered = saved;
    lowered.rlim_cur = std::min<rlim_t>(saved.rlim_cur, 1024);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &lowered), 0);
    auto text = [](std::optional<platform::Error> error) { return error ? error->localizedDescription() : ""; };
    std::string copy = text(copyTree(folder / "Deep.app", folder / "Copy.app"));
    std::string copied = readFile(folder / "Copy.app" + levels + "/file");
    std::string removal = text(removeTree(folder / "Deep.app"));
    std::string copyRemoval = text(removeTree(folder / "Copy.app"));
    setrlimit(RLIMIT_NOFILE, &saved);

    EXPECT_EQ(copy, "");
    EXPECT_EQ(copied, "at the bottom");
    EXPECT_EQ(removal, "");
    EXPECT_EQ(copyRemoval, "");
}

TEST(FileTree, CopyNeverWritesThroughALinkAtTheDestination) {
    TempFolder folder;
    writeFile(folder / "Kelvo.app/Contents/Info.plist", "new");
    std::filesystem::create_directories(folder / "elsewhere");
    symlink((folder / "elsewhere").c_str(), (folder / "dest").c_str());
    EXPECT_EQ(copyError(folder / "Kelvo.app", folder / "dest"), copyMessage(folder / "Kelvo.app", folder / "dest", "File exists"));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "elsewhere"));
}

// What copyError gives when run by an ordinary user: root reads every file, so a root test runs the
// copy in a child that has given up its rights. "-" when the child could not report.
std::string copyErrorAsOrdinaryUser(const std::string& from, const std::string& to) {
    constexpr uid_t kNobody = 65534;
    int report[2];
    if (pipe(report) != 0) return "-";
    pid_t child = fork();
    if (child == 0) {
        close(report[0]);
        bool ordinary = geteuid() != 0 ||
                        (setgroups(0, nullptr) == 0 && setresgid(kNobody, kNobody, kNobody) == 0 &&
                         setresuid(kNobody, kNobody, kNobody) == 0);
        std::string text = ordinary ? copyError(from, to).value_or("no error") : "-";
        (void)!write(report[1], text.data(), text.size());
        _exit(0);
    }
    close(report[1]);
    std::string text;
    char buffer[512];
    for (ssize_t count; (count = read(report[0], buffer, sizeof buffer)) > 0;) text.append(buffer, count);
    close(report[0]);
    waitpid(child, nullptr, 0);
    return text;
}

TEST(FileTree, CopyOfAnUnreadableFileFailsWithItsName) {
    TempFolder folder;
    writeFile(folder / "Kelvo.app/secret", "x", 0000);
    chmod(folder.path().c_str(), 0777);
    chmod((folder / "Kelvo.app").c_str(), 0777);
    EXPECT_EQ(copyErrorAsOrdinaryUser(folder / "Kelvo.app", folder / "Copy.app"),
              copyMessage(folder / "Kelvo.app/secret", folder / "Copy.app/secret", "Permission denied"));
}

TEST(FileTree, RemovalTakesReadOnlyFoldersAndNeverFollowsLinks) {
    TempFolder folder;
    makeSampleBundle(folder / "Kelvo.app", 1024);
    writeFile(folder / "outside/keep.txt", "keep");
    symlink((folder / "outside").c_str(), (folder / "Kelvo.app/Contents/Outside").c_str());
    writeFile(folder / "Kelvo.app/Contents/Sealed/deep/file", "x");
    chmod((folder / "Kelvo.app/Contents/Sealed/deep").c_str(), 0);
    chmod((folder / "Kelvo.app/Contents/Sealed").c_str(), 0500);

    platform::linux_backend::LinuxFileManager files;
    EXPECT_EQ(files.removeItem(FileURL::fileURLWithPath(folder / "Kelvo.app")), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(folder / "Kelvo.app")));
    EXPECT_EQ(readFile(folder / "outside/keep.txt"), "keep");
}

TEST(FileTree, RemovalOfALinkRemovesOnlyTheLink) {
    TempFolder folder;
    writeFile(folder / "target/file", "x");
    symlink((folder / "target").c_str(), (folder / "link").c_str());
    EXPECT_EQ(removeTree(folder / "link"), std::nullopt);
    EXPECT_EQ(readFile(folder / "target/file"), "x");
}

TEST(FileTree, RemovalOfNothingFailsWithTheName) {
    TempFolder folder;
    auto error = removeTree(folder / "absent");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->localizedDescription(),
              "Could not remove \u201C" + (folder / "absent") + "\u201D: No such file or directory.");
}

}  // namespace
