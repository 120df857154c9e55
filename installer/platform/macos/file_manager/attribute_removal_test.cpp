// The quarantine walk on real trees: every item loses the attribute, links are never followed, and
// an item that cannot lose it does not stop the walk. Linux's user namespace stands in for macOS's
// attribute names, and lremovexattr for removexattr with XATTR_NOFOLLOW.
#include "platform/macos/file_manager/attribute_removal.h"

#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <filesystem>
#include <fstream>

#include "support/temp_folder.h"

namespace {

constexpr const char* kMark = "user.kelvo-test.quarantine";

bool isMarked(const std::string& path) { return lgetxattr(path.c_str(), kMark, nullptr, 0) >= 0; }

void mark(const std::string& path) { ASSERT_EQ(lsetxattr(path.c_str(), kMark, "0081", 4, 0), 0) << path; }

TEST(AttributeRemoval, EveryItemOfTheTreeLosesItAndNothingALinkLeadsTo) {
    testing_support::TempFolder folder;
    const std::string bundle = folder / "Kelvo.app", outside = folder / "Elsewhere";
    std::filesystem::create_directories(bundle + "/Contents/MacOS");
    std::filesystem::create_directories(outside);
    std::ofstream(bundle + "/Contents/Info.plist") << "<plist/>";
    std::ofstream(bundle + "/Contents/MacOS/Kelvo") << "program";
    std::ofstream(bundle + "/Contents/Unmarked") << "never marked";
    std::ofstream(outside + "/Inner") << "not part of the bundle";
    std::filesystem::create_directory_symlink(outside, bundle + "/Contents/Link");
    const std::vector<std::string> inside = {bundle, bundle + "/Contents", bundle + "/Contents/MacOS",
                                             bundle + "/Contents/Info.plist", bundle + "/Contents/MacOS/Kelvo"};
    for (const std::string& path : inside) mark(path);
    mark(outside);
    mark(outside + "/Inner");

    platform::macos::removeAttributeFromTree(bundle, kMark, lremovexattr);

    for (const std::string& path : inside) EXPECT_FALSE(isMarked(path)) << path;
    EXPECT_TRUE(isMarked(outside)) << "the link was followed";
    EXPECT_TRUE(isMarked(outside + "/Inner")) << "the link was followed";
}

}  // namespace
