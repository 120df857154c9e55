// Portable code on the real Linux services: file URLs and the installer's places against the real
// working folder and file system, and the default options from the real command line.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "engine/installer.h"
#include "platform/file_url.h"
#include "platform/services.h"
#include "support/scripted_system.h"
#include "support/temp_folder.h"

namespace {

using platform::FileURL;
using testing_support::ScriptedSystem;
using testing_support::TempFolder;

TEST(FileURL, MakesPathsAsThePlatformDoes) {
    testing_support::TempFolder folder;
    std::string previous = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    const struct {
        std::string path;
        std::string appended;
        std::string expected;
    } rows[] = {
        {"/Applications", "Kelvo.app", "/Applications/Kelvo.app"},
        {"/Applications/", "Kelvo.app", "/Applications/Kelvo.app"},
        {"/", "Kelvo.app", "/Kelvo.app"},
        {"/a/Kelvo.app", "Contents/Info.plist", "/a/Kelvo.app/Contents/Info.plist"},
        {"/a", "/b/", "/a/b"},
        {"rel", "x", folder / "rel/x"},
        {"./rel", "x", folder / "./rel/x"},
        {"", "x", folder / "x"},
        {"/with blank/and\"quote", "K", "/with blank/and\"quote/K"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FileURL::fileURLWithPath(row.path).appendingPathComponent(row.appended).path(),
                  row.expected)
            << row.path << " + " << row.appended;
    }
    // The working directory is read when the URL is made, not when its path is asked for.
    FileURL made = FileURL::fileURLWithPath("Apps");
    std::filesystem::current_path("/");
    EXPECT_EQ(made.path(), folder / "Apps");
    std::filesystem::current_path(previous);
}

// getcwd fails once the working folder has been removed (or a folder above it cannot be read).
TEST(FileURL, ARelativePathNeverLandsBelowTheRootWhenTheWorkingFolderIsUnknown) {
    std::string previous = std::filesystem::current_path();
    {
        testing_support::TempFolder folder;
        std::filesystem::current_path(folder.path());
    }
    std::string apps = FileURL::fileURLWithPath("Apps").appendingPathComponent("Kelvo.app").path();
    std::string empty = FileURL::fileURLWithPath("").appendingPathComponent("Kelvo.app").path();
    std::filesystem::current_path(previous);
    EXPECT_EQ(apps, "Apps/Kelvo.app");
    EXPECT_EQ(empty, "Kelvo.app");
}

TEST(InstallerOptions, DefaultConstructionReadsThisProcessesArguments) {
    // The test program runs with gtest's own options; none of them is --dest or --no-launch.
    engine::Installer installer;
    EXPECT_EQ(installer.destinationDir(), "/Applications");
    EXPECT_TRUE(installer.launchAfterInstall());
}

TEST(InstallerPlaces, EmbeddedAppIsWhateverIsNamedKelvoAppInTheResources) {
    TempFolder folder;
    ScriptedSystem bundle;
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
