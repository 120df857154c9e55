// install() step by step on scripted services: which steps run, in which order, and what it fails with.
#include <gtest/gtest.h>

#include "engine/installer.h"
#include "platform/services.h"
#include "support/install_event_log.h"
#include "support/no_running_kelvo.h"
#include "support/scripted_apple_script.h"
#include "support/scripted_file_manager.h"
#include "support/scripted_main_bundle.h"

namespace {

using namespace testing_support;

const std::string kResources = "/Volumes/Kelvo/Install Kelvo.app/Contents/Resources";
const std::string kSource = kResources + "/Kelvo.app";
const std::string kDestination = "/Apps/Kelvo.app";
const std::string kCopyEvent = "copy " + kSource + " -> " + kDestination;
const std::string kRemoveEvent = "remove " + kDestination;
const std::string kCopyLead = "Could not copy Kelvo to the Applications folder.\n";
const std::string kIncomplete = kCopyLead + "The copy appeared to succeed but the app is incomplete.";

// One install on scripted services: an embedded bundle, nothing running, an empty destination.
struct ScriptedInstall {
    InstallEventLog log;
    ScriptedMainBundle bundle;
    ScriptedFileManager files{log};
    ScriptedAppleScriptRunner scripts{log};
    NoKelvoWorkspace workspace{log};
    NoKelvoProcessTool processTool{log};
    ScriptedUserProcessInfo processInfo{log};

    ScriptedInstall() {
        bundle.resources = kResources;
        files.existing = {kResources, kSource, kSource + "/Contents/Info.plist"};
        scripts.onSuccess = [this] { files.existing.insert(kDestination + "/Contents/Info.plist"); };
    }

    // None on success, otherwise the message of the error install() ended with.
    std::optional<std::string> run() {
        platform::ScopedServices scope({.processInfo = &processInfo, .mainBundle = &bundle, .fileManager = &files,
                                        .workspace = &workspace, .childProcesses = &processTool,
                                        .appleScript = &scripts});
        auto result = engine::Installer({"Install Kelvo", "--dest", "/Apps"}).install();
        if (result) return std::nullopt;
        return result.error().localizedDescription();
    }

    bool touchedFiles() const { return log.contains(kRemoveEvent) || log.contains(kCopyEvent); }
};

TEST(InstallOrder, MissingEmbeddedAppEndsBeforeAnyProcessIsListedOrFileTouched) {
    ScriptedInstall install;
    install.files.existing.erase(kSource);
    install.files.existing.insert(kDestination);

    EXPECT_EQ(install.run(), engine::InstallError::embeddedAppMissing().localizedDescription());
    EXPECT_FALSE(install.log.contains("list applications"));
    EXPECT_FALSE(install.log.contains("run /usr/bin/pgrep"));
    EXPECT_FALSE(install.log.contains("lock " + kDestination));
    EXPECT_FALSE(install.touchedFiles());
    EXPECT_TRUE(install.scripts.sources.empty());
}

// Another installer may be replacing the same bundle: the turn is taken before running copies are
// stopped and kept until the fallback and the completeness test are done.
TEST(InstallOrder, TheDestinationIsLockedFromBeforeStoppingKelvoToTheEnd) {
    ScriptedInstall install;
    install.files.copyError = platform::Error("Read-only file system.");

    EXPECT_EQ(install.run(), std::nullopt);
    EXPECT_LT(install.log.firstIndex("exists " + kSource), install.log.firstIndex("lock " + kDestination));
    EXPECT_LT(install.log.firstIndex("lock " + kDestination), install.log.firstIndex("list applications"));
    EXPECT_LT(install.log.firstIndex("execute"), install.log.firstIndex("unlock " + kDestination));
    EXPECT_EQ(install.log.events.back(), "unlock " + kDestination);
}

TEST(InstallOrder, FailedProcessCheckEndsTheInstallBeforeAnyFileIsTouched) {
    ScriptedInstall install;
    install.files.existing.insert(kDestination);
    install.processTool.terminationStatus = 2;
    install.processTool.standardError = "pgrep: cannot read /proc\n";

    EXPECT_EQ(install.run(), "Could not check for running Kelvo processes.\npgrep: cannot read /proc");
    EXPECT_FALSE(install.touchedFiles());
    EXPECT_TRUE(install.scripts.sources.empty());
}

TEST(InstallOrder, NothingAtTheDestinationMeansNoRemovalAndNoFallback) {
    ScriptedInstall install;

    EXPECT_EQ(install.run(), std::nullopt);
    EXPECT_FALSE(install.log.contains(kRemoveEvent));
    EXPECT_TRUE(install.log.contains(kCopyEvent));
    EXPECT_TRUE(install.scripts.sources.empty()) << "no privileged command is built";
    EXPECT_LT(install.log.lastIndex("run /usr/bin/pgrep"), install.log.firstIndex(kCopyEvent));
    EXPECT_LT(install.log.lastIndex("effective user id"), install.log.firstIndex(kCopyEvent))
        << "no user id is read for a fallback that does not run";
}

TEST(InstallOrder, AnOldBundleIsRemovedBeforeTheCopy) {
    ScriptedInstall install;
    install.files.existing.insert(kDestination);

    EXPECT_EQ(install.run(), std::nullopt);
    EXPECT_LT(install.log.firstIndex(kRemoveEvent), install.log.firstIndex(kCopyEvent));
    EXPECT_TRUE(install.scripts.sources.empty());
}

TEST(InstallOrder, FailedRemovalGoesToTheFallbackWithoutACopy) {
    ScriptedInstall install;
    install.files.existing.insert(kDestination);
    install.files.removalError = platform::Error("Permission denied.");

    EXPECT_EQ(install.run(), std::nullopt);
    EXPECT_FALSE(install.log.contains(kCopyEvent));
    ASSERT_EQ(install.scripts.sources.size(), 1u);
    EXPECT_TRUE(install.log.contains("execute"));
}

TEST(InstallOrder, UserIdForTheFallbackIsReadOnlyAfterThePlainCopyFailed) {
    ScriptedInstall install;
    install.files.copyError = platform::Error("Read-only file system.");
    install.processInfo.userId = 777;

    EXPECT_EQ(install.run(), std::nullopt);
    std::size_t copy = install.log.firstIndex(kCopyEvent);
    std::size_t script = install.log.firstIndex("script");
    std::size_t read = install.log.lastIndex("effective user id");
    EXPECT_LT(copy, read);
    EXPECT_LT(read, script);
    EXPECT_TRUE(install.scripts.sources.at(0).starts_with("do shell script \"uid='777'; "));
}

TEST(InstallOrder, FallbackFailuresGiveTheRightDetail) {
    const std::string plainError = "Could not copy \u201C/a\u201D to \u201C/b\u201D: Permission denied.";
    const struct {
        const char* name;
        bool refuseSource;
        std::optional<platform::AppleScriptErrorInfo> failure;
        std::string detail;
    } rows[] = {
        {"script cannot be created", true, std::nullopt, plainError},
        {"script error with a message text", false,
         platform::AppleScriptErrorInfo{{platform::kAppleScriptErrorMessage, std::string("Kelvo is still running.")},
                                        {platform::kAppleScriptErrorNumber, std::int64_t{1}}},
         "Kelvo is still running."},
        {"script error with an empty message text", false,
         platform::AppleScriptErrorInfo{{platform::kAppleScriptErrorMessage, std::string()}}, ""},
        {"script error without a message", false,
         platform::AppleScriptErrorInfo{{platform::kAppleScriptErrorNumber, std::int64_t{-128}}}, plainError},
        {"script error whose message is not text", false,
         platform::AppleScriptErrorInfo{{platform::kAppleScriptErrorMessage, std::int64_t{5}}}, plainError},
    };
    for (const auto& row : rows) {
        ScriptedInstall install;
        install.files.copyError = platform::Error(plainError);
        install.scripts.refuseSource = row.refuseSource;
        install.scripts.failure = row.failure;

        EXPECT_EQ(install.run(), kCopyLead + row.detail) << row.name;
        EXPECT_EQ(install.log.contains("execute"), !row.refuseSource) << row.name;
        EXPECT_FALSE(install.log.contains("exists " + kDestination + "/Contents/Info.plist"))
            << row.name << ": no completeness test after a failed fallback";
    }
}

TEST(InstallOrder, IncompleteCopyFailsAfterThePlainCopyAndAfterTheFallback) {
    ScriptedInstall plain;
    plain.files.copiedItemContents.clear();
    EXPECT_EQ(plain.run(), kIncomplete) << "after the plain copy";
    EXPECT_TRUE(plain.scripts.sources.empty());

    ScriptedInstall fallback;
    fallback.files.copyError = platform::Error("No space left on device.");
    fallback.scripts.onSuccess = [] {};
    EXPECT_EQ(fallback.run(), kIncomplete) << "after the fallback";
    EXPECT_TRUE(fallback.log.contains("execute"));
}

TEST(InstallOrder, AnyItemAtInfoPlistCountsAsComplete) {
    ScriptedInstall install;
    install.files.copiedItemContents = {"Contents/Info.plist"};
    EXPECT_EQ(install.run(), std::nullopt);
    EXPECT_EQ(install.log.events.end()[-2], "exists " + kDestination + "/Contents/Info.plist");
}

}  // namespace
