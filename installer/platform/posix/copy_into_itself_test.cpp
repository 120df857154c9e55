// Telling a copy into or onto its own source, however links and ".." hide it, before anything is
// written.
#include "platform/posix/copy_into_itself.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_folder.h"

namespace {

using namespace testing_support;

TEST(CopyIntoItself, ADestinationInsideTheSourceIsRefusedWhateverSpellsIt) {
    TempFolder folder;
    const std::string source = folder / "Kelvo.app";
    writeFile(source + "/Contents/Info.plist", "x");
    std::filesystem::create_directory_symlink(source + "/Contents", folder / "Contents link");
    std::filesystem::create_directory_symlink(source, folder / "Link.app");
    const struct {
        std::string from, to, reason;  // no reason: the copy may go ahead
    } rows[] = {
        {source, source, "an item cannot be copied onto itself"},
        {source, source + "/.", "an item cannot be copied onto itself"},
        {source, folder / "Contents link/..", "an item cannot be copied onto itself"},
        {source, source + "/Contents/Kelvo.app", "a folder cannot be copied into itself"},
        {source, source + "/Contents/a/b", "a folder cannot be copied into itself"},
        {source, folder / "Contents link/../Copy.app", "a folder cannot be copied into itself"},
        {source, source + " copy", ""},
        {source + "/Contents/Info.plist", source + "/Contents/Info.plist/x", ""},  // a file holds nothing
        {folder / "Link.app", folder / "Link.app/Inside", ""},  // a link is copied as a link
    };
    for (const auto& row : rows) {
        auto allowed = platform::posix::ensureNotIntoItself(row.from, row.to);
        std::string expected = row.reason.empty() ? ""
            : "Could not copy \u201C" + row.from + "\u201D to \u201C" + row.to + "\u201D: " + row.reason + ".";
        EXPECT_EQ(allowed ? "" : allowed.error().localizedDescription(), expected) << row.to;
    }
}

}  // namespace
