// The project's own ditto, run as a program the way the privileged command runs it.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/command.h"
#include "support/sample_trees.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;

CommandResult ditto(const std::string& arguments) {
    return runCommand(shellWord(DITTO_PROGRAM) + " " + arguments + " 2>&1");
}

TEST(Ditto, CopiesABundleCreatingMissingParentFolders) {
    TempFolder folder;
    makeSampleBundle(folder / "Kelvo.app", 4096);
    CommandResult result = ditto("--rsrc " + shellWord(folder / "Kelvo.app") + " " + shellWord(folder / "a/b/Kelvo.app"));
    ASSERT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_EQ(differences(snapshotTree(folder / "Kelvo.app"), snapshotTree(folder / "a/b/Kelvo.app")), "");
}

TEST(Ditto, MergesAFolderIntoAnExistingFolder) {
    TempFolder folder;
    writeFile(folder / "src/new.txt", "new");
    writeFile(folder / "src/both.txt", "from source");
    writeFile(folder / "src/sub/inner.txt", "inner");
    writeFile(folder / "dst/old.txt", "old");
    writeFile(folder / "dst/both.txt", "from destination");
    writeFile(folder / "elsewhere/untouched.txt", "untouched");
    std::filesystem::create_symlink(folder / "elsewhere", folder / "dst/sub");

    CommandResult result = ditto(shellWord(folder / "src") + " " + shellWord(folder / "dst"));
    ASSERT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_EQ(readFile(folder / "dst/new.txt"), "new");
    EXPECT_EQ(readFile(folder / "dst/old.txt"), "old");
    EXPECT_EQ(readFile(folder / "dst/both.txt"), "from source");
    EXPECT_EQ(readFile(folder / "dst/sub/inner.txt"), "inner");
    EXPECT_FALSE(std::filesystem::is_symlink(folder / "dst/sub")) << "a link in the way is replaced, not followed";
    EXPECT_FALSE(std::filesystem::exists(folder / "elsewhere/inner.txt"));
}

TEST(Ditto, CopiesAFileIntoAnExistingFolderUnderItsOwnName) {
    TempFolder folder;
    writeFile(folder / "-leading dash", "x");
    std::filesystem::create_directories(folder / "dst");
    CommandResult result = ditto(shellWord(folder / "-leading dash") + " " + shellWord(folder / "dst"));
    ASSERT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_EQ(readFile(folder / "dst/-leading dash"), "x");
}

TEST(Ditto, CommandLineMistakesAndFailures) {
    TempFolder folder;
    writeFile(folder / "file", "x");
    writeFile(folder / "tree/file", "x");
    const std::string copyLead = "ditto: Could not copy \u201C" + (folder / "tree") + "\u201D to \u201C";
    const struct {
        std::string arguments;
        int status;
        std::string output;
    } rows[] = {
        {"", 64, "ditto: expected a source and a destination\n"},
        {"--rsrc " + shellWord(folder / "file"), 64, "ditto: expected a source and a destination\n"},
        {"-x a b", 64, "ditto: unknown option \u201C-x\u201D\n"},
        {"a b c", 64, "ditto: expected a source and a destination\n"},
        {shellWord(folder / "absent") + " " + shellWord(folder / "to"), 1,
         "ditto: Could not read \u201C" + (folder / "absent") + "\u201D: No such file or directory.\n"},
        {shellWord(folder / "file") + " " + shellWord(folder / "file/sub/x"), 1,
         "ditto: Could not create the folder \u201C" + (folder / "file") + "\u201D: Not a directory.\n"},
        {shellWord(folder / "tree") + " " + shellWord(folder / "tree/a/b"), 1,
         copyLead + (folder / "tree/a/b") + "\u201D: a folder cannot be copied into itself.\n"},
        {shellWord(folder / "tree") + " " + shellWord(folder / "tree/."), 1,
         copyLead + (folder / "tree/.") + "\u201D: an item cannot be copied onto itself.\n"},
        {"--version", 0, "ditto 1.0 (the Kelvo installer project's own)\n"},
    };
    for (const auto& row : rows) {
        CommandResult result = ditto(row.arguments);
        EXPECT_EQ(result.exitStatus, row.status) << row.arguments;
        EXPECT_TRUE(result.output.starts_with(row.output)) << row.arguments << "\n" << result.output;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "tree/a")) << "nothing made before refusing";
}

}  // namespace
