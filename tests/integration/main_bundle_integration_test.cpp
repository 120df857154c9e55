#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

#include "support/command.h"
#include "support/temp_folder.h"

namespace {

using testing_support::shellWord;
using testing_support::runCommand;
using testing_support::TempFolder;

std::string installProbe(const std::string& destination) {
    std::filesystem::create_directories(std::filesystem::path(destination).parent_path());
    std::filesystem::copy_file(BUNDLE_PROBE, destination);
    return destination;
}

TEST(MainBundleOnLinux, InsideAnAppBundleReportsTheBundleAndItsResources) {
    TempFolder folder;
    std::string app = folder / "Install Kelvo.app";
    std::string probe = installProbe(app + "/Contents/MacOS/Install Kelvo");
    std::filesystem::create_directories(app + "/Contents/Resources");

    auto result = runCommand(shellWord(probe) + " --dest '' --no-launch 'two words'");
    ASSERT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "bundle=" + app + "\nresources=" + app + "/Contents/Resources\n" +
                                 "argument=" + probe + "\nargument=--dest\nargument=\n" +
                                 "argument=--no-launch\nargument=two words\n");
}

// In a chroot or a bare container without /proc, started by a path relative to its folder.
TEST(MainBundleOnLinux, WithoutProcTheBundleAndTheArgumentsAreStillFound) {
    if (geteuid() != 0) GTEST_SKIP() << "hiding /proc in a mount namespace of its own needs root";
    TempFolder folder;
    std::string app = folder / "Install Kelvo.app";
    installProbe(app + "/Contents/MacOS/Install Kelvo");
    std::filesystem::create_directories(app + "/Contents/Resources");

    auto result = runCommand("unshare --mount sh -c 'mount -t tmpfs none /proc && cd \"$1\" && "
                             "exec \"./Install Kelvo.app/Contents/MacOS/Install Kelvo\" --dest \"\"' - " +
                             shellWord(folder.path()));
    ASSERT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "bundle=" + app + "\nresources=" + app + "/Contents/Resources\n" +
                                 "argument=./Install Kelvo.app/Contents/MacOS/Install Kelvo\n" +
                                 "argument=--dest\nargument=\n");
}

TEST(MainBundleOnLinux, ABundleWithoutResourcesHasNoResourceFolder) {
    TempFolder folder;
    std::string app = folder / "Bare.app";
    std::string probe = installProbe(app + "/Contents/MacOS/Bare");

    auto result = runCommand(shellWord(probe));
    ASSERT_EQ(result.exitStatus, 0);
    EXPECT_NE(result.output.find("bundle=" + app + "\nresources=none\n"), std::string::npos) << result.output;
}

TEST(MainBundleOnLinux, ABareExecutableIsItsOwnBundle) {
    TempFolder folder;
    std::string probe = installProbe(folder / "tools/probe");

    auto result = runCommand("cd / && " + shellWord(probe));
    ASSERT_EQ(result.exitStatus, 0);
    std::string tools = folder / "tools";
    EXPECT_NE(result.output.find("bundle=" + tools + "\nresources=" + tools + "\n"), std::string::npos)
        << result.output;
}

TEST(MainBundleOnLinux, ReachedThroughALinkTheRealLocationCounts) {
    TempFolder folder;
    std::string app = folder / "Install Kelvo.app";
    std::string probe = installProbe(app + "/Contents/MacOS/Install Kelvo");
    std::filesystem::create_symlink(probe, folder / "shortcut");

    auto result = runCommand(shellWord(folder / "shortcut"));
    ASSERT_EQ(result.exitStatus, 0);
    EXPECT_NE(result.output.find("bundle=" + app + "\n"), std::string::npos) << result.output;
}

}  // namespace
