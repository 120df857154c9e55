#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "engine/installer.h"
#include "platform/services.h"
#include "support/scripted_main_bundle.h"
#include "support/temp_folder.h"

namespace {

using testing_support::ScriptedMainBundle;
using testing_support::TempFolder;

TEST(InstallerPlaces, VolumePathIsTheMountPointTheBundleLiesOn) {
    const struct {
        std::string bundlePath;
        std::optional<std::string> volume;
    } rows[] = {
        {"/Volumes/Setup/Install.app", "/Volumes/Setup"},
        {"/Volumes/Setup Disk/Extras/Install.app", "/Volumes/Setup Disk"},
        {"/Volumes//Setup/Install.app", "/Volumes/Setup"},
        {"/Volumes/Setup", "/Volumes/Setup"},
        {"/Volumes/Setup/", "/Volumes/Setup"},
        {"/Volumes/", std::nullopt},
        {"/Volumes", std::nullopt},
        {"/Volumes//", std::nullopt},
        {"/volumes/Setup/Install.app", std::nullopt},
        {"/Applications/Install.app", std::nullopt},
        {"Volumes/Setup/Install.app", std::nullopt},
        {"", std::nullopt},
    };
    ScriptedMainBundle bundle;
    platform::ScopedServices scope({.mainBundle = &bundle});
    for (const auto& row : rows) {
        bundle.bundle = row.bundlePath;
        EXPECT_EQ(engine::Installer({"x", "--dest", "/elsewhere"}).installerVolumePath(), row.volume)
            << row.bundlePath;
    }
}

TEST(InstallerPlaces, EmbeddedAppIsWhateverIsNamedKelvoAppInTheResources) {
    TempFolder folder;
    ScriptedMainBundle bundle;
    platform::ScopedServices scope({.mainBundle = &bundle});
    engine::Installer installer({"x"});

    bundle.resources = std::nullopt;
    EXPECT_EQ(installer.embeddedAppURL(), std::nullopt) << "no resources folder";

    bundle.resources = folder.path();
    EXPECT_EQ(installer.embeddedAppURL(), std::nullopt) << "nothing named Kelvo.app";

    testing_support::writeFile(folder / "Kelvo.app", "not a folder");
    ASSERT_TRUE(installer.embeddedAppURL()) << "a plain file counts";
    EXPECT_EQ(installer.embeddedAppURL()->path(), folder / "Kelvo.app");

    unlink((folder / "Kelvo.app").c_str());
    testing_support::writeFile(folder / "Kelvo.app/Contents/Info.plist", "");
    ASSERT_TRUE(installer.embeddedAppURL()) << "a folder counts";
    EXPECT_EQ(installer.embeddedAppURL()->path(), folder / "Kelvo.app");
}

TEST(InstallerPlaces, DestinationIsKelvoAppInTheDestinationFolder) {
    TempFolder folder;
    std::string previous = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    const struct {
        std::string destination;
        std::string path;
    } rows[] = {
        {"/Applications", "/Applications/Kelvo.app"},
        {"/Applications/", "/Applications/Kelvo.app"},
        {"/Applications//", "/Applications/Kelvo.app"},
        {"/", "/Kelvo.app"},
        {"/tmp/a'b", "/tmp/a'b/Kelvo.app"},
        {"Apps", folder / "Apps/Kelvo.app"},
        {"Apps/Sub/", folder / "Apps/Sub/Kelvo.app"},
        {"", folder / "Kelvo.app"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(engine::Installer({"x", "--dest", row.destination}).destinationURL().path(), row.path)
            << "destination '" << row.destination << "'";
    }
    std::filesystem::current_path(previous);
}

}  // namespace
