#include <gtest/gtest.h>

#include "engine/installer.h"
#include "support/scripted_system.h"

namespace {

using testing_support::ScriptedSystem;

TEST(InstallerPlaces, VolumePathIsTheMountPointTheBundleLiesOn) {
    const struct {
        std::string bundlePath;
        std::optional<std::string> volume;
    } rows[] = {
        {"/Volumes/Setup/Install.app", "/Volumes/Setup"},
        {"/Volumes/Setup Disk/Extras/Install.app", "/Volumes/Setup Disk"},
        {"/Volumes//Setup/Install.app", "/Volumes/Setup"},
        {"/Volumes/Setup", "/Volumes/Setup"},
        {"/Volumes/", std::nullopt},
        {"/Volumes", std::nullopt},
        {"/volumes/Setup/Install.app", std::nullopt},
        {"/Applications/Install.app", std::nullopt},
        {"Volumes/Setup/Install.app", std::nullopt},
    };
    ScriptedSystem system;
    platform::ScopedServices scope(system.services());
    for (const auto& row : rows) {
        system.bundle = row.bundlePath;
        EXPECT_EQ(engine::Installer({"x"}).installerVolumePath(), row.volume) << row.bundlePath;
    }
}

TEST(InstallerPlaces, DestinationIsKelvoAppInTheFolderGiven) {
    const struct {
        std::string folder;
        std::optional<std::string> workingDirectory;
        std::string destination;
    } rows[] = {
        {"/Applications", "/Users/me", "/Applications/Kelvo.app"},
        {"/Applications/", "/Users/me", "/Applications/Kelvo.app"},
        {"Apps", "/Users/me", "/Users/me/Apps/Kelvo.app"},
        {"", "/Users/me", "/Users/me/Kelvo.app"},
        {"Apps", std::nullopt, "Apps/Kelvo.app"},  // never taken to lie below "/"
    };
    for (const auto& row : rows) {
        ScriptedSystem system;
        system.workingDirectory = row.workingDirectory;
        platform::ScopedServices scope(system.services());
        EXPECT_EQ(engine::Installer({"x", "--dest", row.folder}).destinationURL().path(), row.destination)
            << row.folder;
    }
}

}  // namespace
