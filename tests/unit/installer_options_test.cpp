#include <gtest/gtest.h>

#include "engine/installer.h"

namespace {

struct OptionsRow {
    const char* name;
    std::vector<std::string> arguments;
    std::string destination;
    bool launch;
};

TEST(InstallerOptions, ReadsTheCommandLineAsTheInstallerDoes) {
    const std::string exe = "/Volumes/Kelvo/Install Kelvo.app/Contents/MacOS/Install Kelvo";
    const OptionsRow rows[] = {
        {"empty list", {}, "/Applications", true},
        {"executable only", {exe}, "/Applications", true},
        {"destination", {exe, "--dest", "/Users/someone/Applications"}, "/Users/someone/Applications", true},
        {"no launch", {exe, "--no-launch"}, "/Applications", false},
        {"no launch, --dest last", {exe, "--no-launch", "--dest"}, "/Applications", false},
        {"--dest last", {exe, "--dest"}, "/Applications", true},
        {"value taken verbatim and still the option", {exe, "--dest", "--no-launch"}, "--no-launch", false},
        {"first --dest wins", {exe, "--dest", "/a", "--dest", "/b"}, "/a", true},
        {"empty destination", {exe, "--dest", ""}, "", true},
        {"--dest=/a is no option", {exe, "--dest=/a"}, "/Applications", true},
        {"--Dest is no option", {exe, "--Dest", "/a"}, "/Applications", true},
        {"-dest is no option", {exe, "-dest", "/a"}, "/Applications", true},
        {"--DEST is no option", {exe, "--DEST", "/a"}, "/Applications", true},
        {"--destination is no option", {exe, "--destination", "/a"}, "/Applications", true},
        {"relative destination kept", {exe, "--dest", "Apps"}, "Apps", true},
        {"tilde not expanded", {exe, "--dest", "~/Applications"}, "~/Applications", true},
        {"unnormalised destination kept", {exe, "--dest", "/a//b/../c/"}, "/a//b/../c/", true},
        {"value beginning with dashes", {exe, "--dest", "--weird"}, "--weird", true},
        {"--no-launch as element 0", {"--no-launch"}, "/Applications", false},
        {"--dest as element 0", {"--dest", "/x"}, "/x", true},
        {"unknown options ignored", {exe, "--verbose", "-psn_0_12345", "--dest", "/x", "extra"}, "/x", true},
        {"--no-launch after the destination", {exe, "--dest", "/x", "--no-launch"}, "/x", false},
        {"--NO-LAUNCH is no option", {exe, "--NO-LAUNCH"}, "/Applications", true},
        {"second --dest value is ordinary", {exe, "--dest", "/a", "--dest", "--no-launch"}, "/a", false},
    };
    for (const OptionsRow& row : rows) {
        engine::Installer installer(row.arguments);
        EXPECT_EQ(installer.destinationDir(), row.destination) << row.name;
        EXPECT_EQ(installer.launchAfterInstall(), row.launch) << row.name;
    }
}

}  // namespace
