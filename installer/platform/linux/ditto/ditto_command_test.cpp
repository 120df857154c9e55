// The project's ditto refuses a copy into its own source before it makes any folder for it.
#include "platform/linux/ditto/ditto_command.h"

#include <gtest/gtest.h>

#include "support/sample_trees.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;

TEST(Ditto, RefusesToCopyIntoItselfBeforeMakingAnything) {
    TempFolder folder;
    const std::string source = folder / "Kelvo.app";
    writeFile(source + "/Contents/Info.plist", "x");
    std::string before = snapshotTree(source);
    const std::pair<std::string, std::string> rows[] = {
        {source + "/Contents/a/b", "a folder cannot be copied into itself"},
        {source + "/.", "an item cannot be copied onto itself"},
    };
    for (const auto& [to, reason] : rows) {
        auto copied = platform::linux_backend::dittoCopy(source, to);
        EXPECT_EQ(copied ? "" : copied.error().localizedDescription(),
                  "Could not copy \u201C" + source + "\u201D to \u201C" + to + "\u201D: " + reason + ".");
    }
    EXPECT_EQ(before, snapshotTree(source)) << "ditto made folders before it refused";
}

}  // namespace
