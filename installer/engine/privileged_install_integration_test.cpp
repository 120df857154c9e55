// The real privileged command, run by the real AppleScript runner under /bin/sh as root, after the
// plain copy of a whole install() has failed.
#include <gtest/gtest.h>

#include <filesystem>

#include "engine/installer.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/payload_bundle.h"
#include "support/sample_trees.h"

namespace {

using namespace testing_support;

const std::string kCopyLead = "Could not copy Kelvo to the Applications folder.\n";

class PrivilegedInstall : public testing::Test {
protected:
    void SetUp() override {
        if (auto why = ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
        if (runCommand("/usr/bin/ditto --version").output.find("Kelvo installer project") == std::string::npos) {
            GTEST_SKIP() << "/usr/bin/ditto is not this project's (tools/test.sh lays it over /usr/bin)";
        }
    }

    // A whole install into `folder`: "" on success, otherwise the error's message.
    static std::string installInto(const std::string& folder) {
        auto result = engine::Installer({"installer", "--dest", folder}).install();
        return result ? "" : result.error().localizedDescription();
    }

    TempFolder folder;
    PayloadBundle bundle;
};

// A destination folder that is not there fails the plain copy; the command makes it.
TEST_F(PrivilegedInstall, TheCommandTakesAwkwardFolderNamesAsTheyAre) {
    makeSampleBundle(bundle.payload(), 4096);
    writeFile(folder / "canary", "still here");
    const std::string names[] = {"blank name", "a'b", "a\"b", R"(a\b)", "$HOME `id` $(id)", "line\nfeed", "-dash",
                                 "K\u00e9lvo", "semi; rm -rf ..; echo", R"('\''"\")", std::string(200, 'n')};
    for (const std::string& name : names) {
        std::string destination = folder / ("Apps " + name);
        EXPECT_EQ(installInto(destination), "") << name;
        EXPECT_EQ(snapshotTree(bundle.payload()), snapshotTree(destination + "/Kelvo.app")) << name;
    }
    EXPECT_EQ(readFile(folder / "canary"), "still here");
}

TEST_F(PrivilegedInstall, FullAndReadOnlyDisksFailWithTheToolsOwnWords) {
    const std::string large = "/Kelvo.app/Contents/MacOS/Kelvo";  // the one file: its copy is the one to fail
    writeFile(bundle.bundlePath() + large, std::string(2 << 20, 'k'));
    for (const char* disk : {"full", "read-only"}) {
        std::filesystem::create_directories(folder / disk);
        ASSERT_EQ(runCommand("mount -t tmpfs -o size=1m kelvo-test " + shellWord(folder / disk)).exitStatus, 0);
    }
    writeFile(folder / "read-only/Kelvo.app/Contents/Info.plist", "old");
    ASSERT_EQ(runCommand("mount -o remount,ro " + shellWord(folder / "read-only")).exitStatus, 0);

    EXPECT_EQ(installInto(folder / "full"), kCopyLead + "ditto: Could not copy \u201C" + bundle.bundlePath() + large +
                                                "\u201D to \u201C" + folder / ("full" + large) +
                                                "\u201D: No space left on device.");
    EXPECT_EQ(installInto(folder / "read-only"), kCopyLead + "rm: cannot remove '" +
                                                     (folder / "read-only/Kelvo.app/Contents/Info.plist") +
                                                     "': Read-only file system");
    EXPECT_EQ(readFile(folder / "read-only/Kelvo.app/Contents/Info.plist"), "old");
}

}  // namespace
