#include <gtest/gtest.h>

#include "platform/linux/bundle_layout.h"
#include "platform/linux/main_bundle.h"

namespace {

TEST(BundleLayout, FindsTheBundleAnExecutableBelongsTo) {
    using platform::linux_backend::bundleLocationForExecutable;
    const struct {
        std::string executable;
        std::string bundle;
        std::string resources;
    } rows[] = {
        {"/Volumes/Kelvo/Install Kelvo.app/Contents/MacOS/Install Kelvo", "/Volumes/Kelvo/Install Kelvo.app",
         "/Volumes/Kelvo/Install Kelvo.app/Contents/Resources"},
        {"/Applications/Kelvo.app/Contents/MacOS/Kelvo", "/Applications/Kelvo.app",
         "/Applications/Kelvo.app/Contents/Resources"},
        {"/opt/build/installer", "/opt/build", "/opt/build"},
        {"/x/Name.app/Contents/MacOS/sub/exe", "/x/Name.app/Contents/MacOS/sub", "/x/Name.app/Contents/MacOS/sub"},
        {"/x/Name.app/MacOS/exe", "/x/Name.app/MacOS", "/x/Name.app/MacOS"},
        {"/x/Name/Contents/MacOS/exe", "/x/Name/Contents/MacOS", "/x/Name/Contents/MacOS"},
        {"/x/.app/Contents/MacOS/exe", "/x/.app/Contents/MacOS", "/x/.app/Contents/MacOS"},
        {"/installer", "/", "/"},
    };
    for (const auto& row : rows) {
        auto location = bundleLocationForExecutable(row.executable);
        EXPECT_EQ(location.bundlePath, row.bundle) << row.executable;
        EXPECT_EQ(location.resourcesPath, row.resources) << row.executable;
    }
}

}  // namespace
