// The project's own ditto, run as a program the way the privileged command runs it.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/command.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;

TEST(Ditto, RefusesToCopyAFolderIntoOrOntoItselfBeforeMakingAnything) {
    TempFolder folder;
    writeFile(folder / "tree/file", "x");
    const struct {
        std::string to, reason;
    } rows[] = {
        {folder / "tree/a/b", "a folder cannot be copied into itself"},
        {folder / "tree/.", "an item cannot be copied onto itself"},
    };
    for (const auto& row : rows) {
        auto result = runCommand(shellWord(DITTO_PROGRAM) + " --rsrc " + shellWord(folder / "tree") + " " + shellWord(row.to) + " 2>&1");
        EXPECT_EQ(result.exitStatus, 1) << row.to;
        EXPECT_EQ(result.output, "ditto: Could not copy \u201C" + (folder / "tree") + "\u201D to \u201C" + row.to + "\u201D: " +
                                     row.reason + ".\n");
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "tree/a")) << "nothing made before refusing";
}

}  // namespace
