// The installer's options, read from its command line, and the places it works out.
#include <gtest/gtest.h>

#include <filesystem>

#include "engine/installer.h"
#include "platform/testing/scripted_system.h"

namespace {

using testing_support::ScriptedSystem;

TEST(InstallerOptions, ReadsTheCommandLineAsTheInstallerDoes) {
    const std::string exe = "/Volumes/Kelvo/Install Kelvo.app/Contents/MacOS/Install Kelvo";
    const struct {
        std::vector<std::string> arguments;
        std::string destination;
        bool launch;
    } rows[] = {
        {{}, "/Applications", true},
        {{exe, "--dest", "/Users/someone/Applications"}, "/Users/someone/Applications", true},
        {{exe, "--no-launch", "--dest"}, "/Applications", false},
        {{exe, "--dest", "--no-launch"}, "--no-launch", false},
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
        EXPECT_EQ(std::pair(installer.destinationDir(), installer.launchAfterInstall()), std::pair(row.destination, row.launch))
            << ::testing::PrintToString(row.arguments);
    }
}

TEST(InstallerPlaces, VolumePathIsTheMountPointTheBundleLiesOn) {
    const std::pair<std::string, std::optional<std::string>> rows[] = {
        {"/Volumes/Setup Disk/Extras/Install.app", "/Volumes/Setup Disk"},
        {"/Volumes//Setup/Install.app", "/Volumes/Setup"},
        {"/Volumes/Setup", "/Volumes/Setup"},
        {"/Volumes/", std::nullopt},                  {"/Volumes", std::nullopt},
        {"/volumes/Setup/Install.app", std::nullopt}, {"/Applications/Install.app", std::nullopt},
        {"Volumes/Setup/Install.app", std::nullopt},
    };
    ScriptedSystem system;
    platform::ScopedServices scope(system.services());
    for (const auto& [bundlePath, volume] : rows) {
        system.bundle = bundlePath;
        EXPECT_EQ(engine::Installer({"x"}).installerVolumePath(), volume) << bundlePath;
    }
}

// Relative folders lie below the working folder.
TEST(InstallerPlaces, DestinationIsKelvoAppInTheFolderGiven) {
    const std::string here = std::filesystem::current_path();
    const std::pair<std::string, std::string> rows[] = {
        {"/Applications", "/Applications/Kelvo.app"}, {"/Applications/", "/Applications/Kelvo.app"},
        {"/", "/Kelvo.app"},                          {"Apps", here + "/Apps/Kelvo.app"},
        {"", here + "/Kelvo.app"},
    };
    ScriptedSystem system;
    platform::ScopedServices scope(system.services());
    for (const auto& [folder, destination] : rows) {
        EXPECT_EQ(engine::Installer({"x", "--dest", folder}).destinationURL().path(), destination) << folder;
    }
}

}  // namespace
