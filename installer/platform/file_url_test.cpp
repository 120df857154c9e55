// File URLs on the real file system.
#include "platform/file_url.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_folder.h"

namespace {

using platform::FileURL;
using testing_support::TempFolder;

// getcwd fails once the working folder has been removed: a relative --dest must then not land
// below "/".
TEST(FileURL, ARelativePathStaysRelativeWhenTheWorkingFolderIsGone) {
    std::string previous = std::filesystem::current_path();
    {
        TempFolder folder;
        std::filesystem::current_path(folder.path());
    }
    std::string apps = FileURL::fileURLWithPath("Apps").appendingPathComponent("Kelvo.app").path();
    std::filesystem::current_path(previous);
    EXPECT_EQ(apps, "Apps/Kelvo.app");
}

}  // namespace
