#include <gtest/gtest.h>

#include <filesystem>

#include "platform/file_url.h"
#include "platform/linux/process_info.h"
#include "support/temp_folder.h"

namespace {

using platform::FileURL;

TEST(FileURL, MakesPathsAsThePlatformDoes) {
    testing_support::TempFolder folder;
    std::string previous = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    const struct {
        std::string path;
        std::string appended;
        std::string expected;
    } rows[] = {
        {"/Applications", "Kelvo.app", "/Applications/Kelvo.app"},
        {"/Applications/", "Kelvo.app", "/Applications/Kelvo.app"},
        {"/", "Kelvo.app", "/Kelvo.app"},
        {"/a/Kelvo.app", "Contents/Info.plist", "/a/Kelvo.app/Contents/Info.plist"},
        {"/a", "/b/", "/a/b"},
        {"rel", "x", folder / "rel/x"},
        {"./rel", "x", folder / "./rel/x"},
        {"", "x", folder / "x"},
        {"/with blank/and\"quote", "K", "/with blank/and\"quote/K"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FileURL::fileURLWithPath(row.path).appendingPathComponent(row.appended).path(),
                  row.expected)
            << row.path << " + " << row.appended;
    }
    // The working directory is read when the URL is made, not when its path is asked for.
    FileURL made = FileURL::fileURLWithPath("Apps");
    std::filesystem::current_path("/");
    EXPECT_EQ(made.path(), folder / "Apps");
    std::filesystem::current_path(previous);
}

// getcwd fails once the working folder has been removed (or a folder above it cannot be read).
TEST(FileURL, ARelativePathNeverLandsBelowTheRootWhenTheWorkingFolderIsUnknown) {
    std::string previous = std::filesystem::current_path();
    {
        testing_support::TempFolder folder;
        std::filesystem::current_path(folder.path());
    }
    std::string apps = FileURL::fileURLWithPath("Apps").appendingPathComponent("Kelvo.app").path();
    std::string empty = FileURL::fileURLWithPath("").appendingPathComponent("Kelvo.app").path();
    std::filesystem::current_path(previous);
    EXPECT_EQ(apps, "Apps/Kelvo.app");
    EXPECT_EQ(empty, "Kelvo.app");
}

TEST(FileURL, LastPathComponent) {
    EXPECT_EQ(FileURL::fileURLWithPath("/x/Kelvo.app/Contents/MacOS/Kelvo").lastPathComponent(), "Kelvo");
    EXPECT_EQ(FileURL::fileURLWithPath("/x/").lastPathComponent(), "x");
    EXPECT_EQ(FileURL::fileURLWithPath("/").lastPathComponent(), "");
}

TEST(ProcessArguments, SplitsCmdlineAtEachTerminator) {
    using platform::linux_backend::splitCommandLine;
    EXPECT_EQ(splitCommandLine(std::string("/bin/x\0--dest\0\0--no-launch\0", 27)),
              (std::vector<std::string>{"/bin/x", "--dest", "", "--no-launch"}));
    EXPECT_EQ(splitCommandLine(std::string("a b\0", 4)), (std::vector<std::string>{"a b"}));
    EXPECT_EQ(splitCommandLine(""), (std::vector<std::string>{}));
}

}  // namespace
