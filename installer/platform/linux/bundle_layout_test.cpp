// Which paths lie in an application bundle's executable folder, by their text alone.
#include "platform/linux/bundle_layout.h"

#include <gtest/gtest.h>

namespace {

using platform::linux_backend::bundlePathForExecutable;
using platform::linux_backend::parentFolder;

TEST(BundleLayout, AnExecutableBelongsToTheBundleWhoseContentsMacOSHoldsIt) {
    const std::pair<std::string, std::optional<std::string>> rows[] = {
        {"/Volumes/Kelvo/Install Kelvo.app/Contents/MacOS/Install Kelvo", "/Volumes/Kelvo/Install Kelvo.app"},
        {"Kelvo.app/Contents/MacOS/Kelvo", "Kelvo.app"},
        {"/a/Kelvo.app/Contents/MacOS/Helpers/Kelvo", std::nullopt},
        {"/a/Kelvo.app/Contents/Kelvo", std::nullopt},
        {"/a/Kelvo/Contents/MacOS/Kelvo", std::nullopt},
        {"/a/.app/Contents/MacOS/Kelvo", std::nullopt},
        {"/a/Kelvo.app/contents/MacOS/Kelvo", std::nullopt},
        {"/usr/bin/Kelvo", std::nullopt},
        {"Kelvo", std::nullopt},
    };
    for (const auto& [executable, bundle] : rows) EXPECT_EQ(bundlePathForExecutable(executable), bundle) << executable;
}

TEST(BundleLayout, TheParentFolderOfAPath) {
    const std::pair<std::string, std::string> rows[] = {{"/a/b", "/a"}, {"/a", "/"}, {"a/b", "a"}, {"a", "."}};
    for (const auto& [path, parent] : rows) EXPECT_EQ(parentFolder(path), parent) << path;
}

}  // namespace
