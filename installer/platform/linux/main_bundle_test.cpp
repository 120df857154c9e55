// The program's own bundle and arguments as the real services report them, from a probe program
// placed in bundles of the test's own.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

#include "support/command.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;

TEST(MainBundle, IsTheAppTheExecutableLiesInAndTheArgumentsAreWhole) {
    TempFolder folder;
    const std::string app = folder / "Install Kelvo.app";
    const std::string executable = app + "/Contents/MacOS/Install Kelvo";
    for (std::string place : {executable, folder / "Bare.app/Contents/MacOS/Bare"}) {
        std::filesystem::create_directories(std::filesystem::path(place).parent_path());
        std::filesystem::copy_file(BUNDLE_PROBE, place);
    }
    std::filesystem::create_directories(app + "/Contents/Resources");
    std::filesystem::create_symlink(executable, folder / "shortcut");
    const std::string inApp = "bundle=" + app + "\nresources=" + app + "/Contents/Resources\n";
    const struct {
        const char* name;
        std::string command, output;
    } rows[] = {
        {"in an app", shellWord(executable) + " --dest '' 'two words'",
         inApp + "argument=" + executable + "\nargument=--dest\nargument=\nargument=two words\n"},
        {"through a link", shellWord(folder / "shortcut"), inApp + "argument=" + (folder / "shortcut") + "\n"},
        {"in an app without resources", shellWord(folder / "Bare.app/Contents/MacOS/Bare"),
         "bundle=" + (folder / "Bare.app") + "\nresources=none\nargument=" + (folder / "Bare.app/Contents/MacOS/Bare") + "\n"},
        // In a chroot or a bare container without /proc, started by a path relative to its folder.
        {"without /proc", "unshare --mount sh -c 'mount -t tmpfs none /proc && cd \"$1\" && exec \"$2\" --dest \"\"' - " +
                              shellWord(folder.path()) + " './Install Kelvo.app/Contents/MacOS/Install Kelvo'",
         inApp + "argument=./Install Kelvo.app/Contents/MacOS/Install Kelvo\nargument=--dest\nargument=\n"},
    };
    for (const auto& row : rows) {
        if (geteuid() != 0 && std::string(row.name) == "without /proc") GTEST_SKIP() << "hiding /proc needs root";
        EXPECT_EQ(runCommand(row.command).output, row.output) << row.name;
    }
}

}  // namespace
