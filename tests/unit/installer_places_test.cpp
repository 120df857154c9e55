#include <gtest/gtest.h>

#include "engine/installer.h"
#include "platform/services.h"
#include "support/scripted_main_bundle.h"

namespace {

using testing_support::ScriptedMainBundle;

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

}  // namespace
