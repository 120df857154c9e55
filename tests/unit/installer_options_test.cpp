#include <gtest/gtest.h>

#include "engine/installer.h"

namespace {

TEST(InstallerOptions, ReadsTheCommandLineAsTheInstallerDoes) {
    const std::string exe = "/Volumes/Kelvo/Install Kelvo.app/Contents/MacOS/Install Kelvo";
    const struct {
        std::vector<std::string> arguments;
        std::string destination;
        bool launch;
    } rows[] = {
        {{}, "/Applications", true},
        {{exe, "--dest", "/Users/someone/Applications"}, "/Users/someone/Applications", true},
        {{exe, "--no-launch"}, "/Applications", false},
        {{exe, "--no-launch", "--dest"}, "/Applications", false},
        {{exe, "--dest", "--no-launch"}, "--no-launch", false},
        {{exe, "--dest", "/a", "--dest", "/b"}, "/a", true},
        {{exe, "--dest", "/a", "--dest", "--no-launch"}, "/a", false},
        {{exe, "--dest", ""}, "", true},
        {{exe, "--dest", "~/a//b/../"}, "~/a//b/../", true},
        {{exe, "--dest=/a", "--Dest", "/b", "-dest", "/c", "--destination", "/d"}, "/Applications", true},
        {{exe, "--NO-LAUNCH", "--no-launch=yes"}, "/Applications", true},
        {{"--dest", "/x"}, "/x", true},
        {{"--no-launch"}, "/Applications", false},
    };
    for (const auto& row : rows) {
        engine::Installer installer(row.arguments);
        EXPECT_EQ(installer.destinationDir(), row.destination) << ::testing::PrintToString(row.arguments);
        EXPECT_EQ(installer.launchAfterInstall(), row.launch) << ::testing::PrintToString(row.arguments);
    }
}

}  // namespace
