// The Linux file manager's copy and removal on real trees: what a copy keeps, checked by an
// independent walk, and what the failures say.
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "platform/services.h"
#include "support/command.h"
#include "support/sample_trees.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;
using platform::FileURL;

std::string describe(const platform::Expected<void, platform::Error>& done) {
    return done ? "" : done.error().localizedDescription();
}

std::string copyError(const std::string& from, const std::string& to) {
    return describe(platform::fileManager().copyItem(FileURL::fileURLWithPath(from), FileURL::fileURLWithPath(to)));
}

std::string removalError(const std::string& path) {
    return describe(platform::fileManager().removeItem(FileURL::fileURLWithPath(path)));
}

std::string copyMessage(const std::string& from, const std::string& to, const std::string& reason) {
    return "Could not copy \u201C" + from + "\u201D to \u201C" + to + "\u201D: " + reason + ".";
}

TEST(FileTree, ACopyKeepsEverythingABundleHas) {
    TempFolder folder;
    makeSampleBundle(folder / "Kelvo.app", 3 << 20);
    ASSERT_EQ(copyError(folder / "Kelvo.app", folder / "Copy.app"), "");
    EXPECT_EQ(snapshotTree(folder / "Kelvo.app"), snapshotTree(folder / "Copy.app"));
}

TEST(FileTree, ACopyThatCannotBeDoneSaysWhyAndWritesNothingAnywhereElse) {
    TempFolder folder;
    const std::string source = folder / "Kelvo.app";
    writeFile(source + "/Contents/Info.plist", "x");
    std::filesystem::create_directories(folder / "elsewhere");
    std::filesystem::create_directory_symlink(folder / "elsewhere", folder / "link");
    std::string before = snapshotTree(source);
    const std::pair<std::string, std::string> rows[] = {
        {folder / "absent/Kelvo.app", "No such file or directory"},
        {folder / "link", "File exists"},
        {source + "/Contents/Kelvo.app", "a folder cannot be copied into itself"},
    };
    for (const auto& [to, reason] : rows) EXPECT_EQ(copyError(source, to), copyMessage(source, to, reason)) << to;
    EXPECT_EQ(before, snapshotTree(source));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "elsewhere"));
}

TEST(FileTree, DeepTreesAreCopiedAndRemovedWithFewDescriptors) {
    TempFolder folder;
    std::string levels;
    for (int level = 0; level < 1100; ++level, levels += "/d") mkdir((folder / "Deep.app" + levels).c_str(), 0755);
    writeFile(folder / "Deep.app" + levels + "/file", "at the bottom");
    rlimit saved{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &saved), 0);
    rlimit lowered{std::min<rlim_t>(saved.rlim_cur, 1024), saved.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &lowered), 0);
    std::string copy = copyError(folder / "Deep.app", folder / "Copy.app");
    std::string copied = readFile(folder / "Copy.app" + levels + "/file");
    std::string removals = removalError(folder / "Deep.app") + removalError(folder / "Copy.app");
    setrlimit(RLIMIT_NOFILE, &saved);
    EXPECT_EQ(copy, "");
    EXPECT_EQ(copied, "at the bottom");
    EXPECT_EQ(removals, "");
}

TEST(FileTree, RemovalTakesReadOnlyFoldersAndNeverFollowsALink) {
    TempFolder folder;
    makeSampleBundle(folder / "Kelvo.app", 1024);
    writeFile(folder / "outside/keep", "keep");
    std::filesystem::create_directory_symlink(folder / "outside", folder / "Kelvo.app/Contents/Outside");
    std::filesystem::create_directory_symlink(folder / "outside", folder / "Link.app");
    writeFile(folder / "Kelvo.app/Contents/Sealed/deep/file", "x");
    chmod((folder / "Kelvo.app/Contents/Sealed/deep").c_str(), 0);
    chmod((folder / "Kelvo.app/Contents/Sealed").c_str(), 0500);

    EXPECT_EQ(removalError(folder / "Kelvo.app") + removalError(folder / "Link.app"), "");
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(folder / "Kelvo.app")));
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(folder / "Link.app")));
    EXPECT_EQ(readFile(folder / "outside/keep"), "keep");
    EXPECT_EQ(removalError(folder / "absent"),
              "Could not remove \u201C" + (folder / "absent") + "\u201D: No such file or directory.");
}

}  // namespace
