#include <gtest/gtest.h>

#include "engine/product_identity.h"
#include "support/installer_test_access.h"
#include "support/scripted_processes.h"

namespace {

using engine::Installer;
using engine::InstallerTestAccess;
using engine::kTargetBundleIdentifier;
using engine::ProcessIdentifiers;
using testing_support::ScriptedProcess;
using testing_support::ScriptedSystem;
using testing_support::toolResult;

const std::string kInspectionLead = "Could not check for running Kelvo processes.\n";

// A process on the running-application list only (pgrep does not name it).
ScriptedProcess applicationOnly(std::int32_t pid, std::optional<std::string> bundleIdentifier,
                                std::optional<std::string> executable) {
    ScriptedProcess process;
    process.pid = pid;
    process.bundleIdentifier = std::move(bundleIdentifier);
    process.executable = std::move(executable);
    process.listedByTool = false;
    return process;
}

// A process that only pgrep names.
ScriptedProcess toolOnly(std::int32_t pid) {
    ScriptedProcess process;
    process.pid = pid;
    process.application = false;
    return process;
}

class RunningInstances : public ::testing::Test {
protected:
    platform::Expected<ProcessIdentifiers, engine::InstallError> find() {
        platform::ScopedServices scope(system.services());
        return InstallerTestAccess::runningKelvoProcessIdentifiers(Installer({"installer"}));
    }
    ProcessIdentifiers found() {
        auto result = find();
        if (!result) {
            ADD_FAILURE() << "unexpected error: " << result.error().localizedDescription();
            return {};
        }
        return result.value();
    }
    std::string failure() {
        auto result = find();
        if (result) {
            ADD_FAILURE() << "expected an error, found " << result.value().size() << " processes";
            return {};
        }
        return result.error().localizedDescription();
    }

    ScriptedSystem system;
};

TEST_F(RunningInstances, AsksTheApplicationListThenPgrepForThisUserExactly) {
    system.effectiveUserId = 0;
    EXPECT_EQ(found(), ProcessIdentifiers{});
    EXPECT_EQ(system.events(), (std::vector<std::string>{"applications", "run /usr/bin/pgrep -x -u 0 Kelvo"}));

    ScriptedSystem other;
    other.effectiveUserId = 4294967294u;  // the largest uid shows as unsigned decimal
    platform::ScopedServices scope(other.services());
    (void)InstallerTestAccess::runningKelvoProcessIdentifiers(Installer({"installer"}));
    EXPECT_EQ(other.events().back(), "run /usr/bin/pgrep -x -u 4294967294 Kelvo");
}

TEST_F(RunningInstances, ApplicationScanCountsByBundleIdentifierOrExecutableName) {
    const struct {
        const char* name;
        ScriptedProcess process;
        bool counts;
    } rows[] = {
        {"target identifier, other executable",
         applicationOnly(7, kTargetBundleIdentifier, "/opt/Other.app/Contents/MacOS/Other"), true},
        {"target identifier, no executable", applicationOnly(7, kTargetBundleIdentifier, std::nullopt), true},
        {"other identifier, executable Kelvo", applicationOnly(7, "org.example.Tool", "/tmp/Kelvo"), true},
        {"no identifier, executable Kelvo", applicationOnly(7, std::nullopt, "/x/Y.app/Contents/MacOS/Kelvo"), true},
        {"no identifier, no executable", applicationOnly(7, std::nullopt, std::nullopt), false},
        {"identifier differs in case", applicationOnly(7, "com.getkelvo.kelvo", "/tmp/Other"), false},
        {"executable differs in case", applicationOnly(7, std::nullopt, "/tmp/kelvo"), false},
        {"executable longer name", applicationOnly(7, "org.example.Tool", "/tmp/Kelvo Helper"), false},
        {"Kelvo only in the folder", applicationOnly(7, std::nullopt, "/Kelvo.app/Contents/MacOS/Helper"), false},
    };
    for (const auto& row : rows) {
        ScriptedSystem scripted;
        scripted.processes = {row.process};
        platform::ScopedServices scope(scripted.services());
        auto result = InstallerTestAccess::runningKelvoProcessIdentifiers(Installer({"installer"}));
        ASSERT_TRUE(result) << row.name;
        EXPECT_EQ(result.value(), row.counts ? ProcessIdentifiers{7} : ProcessIdentifiers{}) << row.name;
    }
}

TEST_F(RunningInstances, TerminatedApplicationsDoNotCountThroughTheList) {
    ScriptedProcess terminated = applicationOnly(7, kTargetBundleIdentifier, testing_support::kKelvoExecutablePath);
    terminated.reportsTerminated = true;
    system.processes = {terminated};
    EXPECT_EQ(found(), ProcessIdentifiers{});

    // pgrep still names its process while it exists.
    system.processes[0].listedByTool = true;
    EXPECT_EQ(found(), ProcessIdentifiers{7});
}

TEST_F(RunningInstances, OwnProcessIsNeverListedByEitherSource) {
    system.ownProcessIdentifier = 300;
    system.processes = {applicationOnly(300, kTargetBundleIdentifier, testing_support::kKelvoExecutablePath),
                        toolOnly(301)};
    system.toolAnswers.push_back(toolResult(0, "300\n301\n"));
    EXPECT_EQ(found(), ProcessIdentifiers{301});
}

TEST_F(RunningInstances, MergesBothSourcesOnceEachAscending) {
    system.processes = {applicationOnly(498, kTargetBundleIdentifier, testing_support::kKelvoExecutablePath)};
    system.toolAnswers.push_back(toolResult(0, "512\n498\n"));
    EXPECT_EQ(found(), (ProcessIdentifiers{498, 512}));
}

TEST_F(RunningInstances, NoMatchKeepsTheApplicationsAscendingAndReadsNoOutput) {
    system.processes = {applicationOnly(900, kTargetBundleIdentifier, std::nullopt),
                        applicationOnly(40, std::nullopt, "/tmp/Kelvo")};
    system.toolAnswers.push_back(toolResult(1, "77\n", "ignored"));
    EXPECT_EQ(found(), (ProcessIdentifiers{40, 900}));
}

TEST_F(RunningInstances, ReadsOnlyPlainDecimalLinesOfTheToolsOutput) {
    const struct {
        const char* name;
        std::string output;
        ProcessIdentifiers expected;
    } rows[] = {
        {"LF lines", "512\n498\n", {498, 512}},
        {"CR LF lines", "512\r\n498\r\n", {498, 512}},
        {"no final line break", "512\n498", {498, 512}},
        {"empty lines", "\n\n512\n\n\n498\n\n", {498, 512}},
        {"blank before or after", " 5\n6 \n7", {7}},
        {"letters", "abc\n5a\n8", {8}},
        {"plus sign", "+5\n", {5}},
        {"outside 32 bits", "2147483648\n-2147483649\n99999999999\n2147483647", {2147483647}},
        {"other line breaks", "1\v2\f3\r4\xC2\x85" "5\xE2\x80\xA8" "6\xE2\x80\xA9" "7", {1, 2, 3, 4, 5, 6, 7}},
        {"invalid UTF-8 spoils only its line", "\xFF" "9\n10\n", {10}},
        {"duplicates", "10\n10\n", {10}},
        {"own identifier", "100\n101\n", {101}},
        {"empty output", "", {}},
    };
    for (const auto& row : rows) {
        ScriptedSystem scripted;
        scripted.toolAnswers.push_back(toolResult(0, row.output, "warnings are not read"));
        platform::ScopedServices scope(scripted.services());
        auto result = InstallerTestAccess::runningKelvoProcessIdentifiers(Installer({"installer"}));
        ASSERT_TRUE(result) << row.name;
        EXPECT_EQ(result.value(), row.expected) << row.name;
    }
}

TEST_F(RunningInstances, OtherStatusesFailWithTheTrimmedErrorOutput) {
    const struct {
        const char* name;
        std::int32_t status;
        std::string error;
        std::string detail;
    } rows[] = {
        {"status 2, padded", 2, "   pgrep: invalid user name: x\n", "pgrep: invalid user name: x"},
        {"status 2, empty", 2, "", "The process check failed."},
        {"status 2, only white space", 2, " \t\r\n\xE2\x80\xA8", "The process check failed."},
        {"inner line breaks stay", 3, "\nfirst\r\nsecond\n\n", "first\r\nsecond"},
        {"invalid UTF-8 replaced", 2, "bad \xFF\n", "bad \xEF\xBF\xBD"},
        {"signal number as status", 9, "", "The process check failed."},
        {"negative status", -1, "odd", "odd"},
    };
    for (const auto& row : rows) {
        ScriptedSystem scripted;
        scripted.processes = {applicationOnly(55, kTargetBundleIdentifier, std::nullopt)};
        scripted.toolAnswers.push_back(toolResult(row.status, "12\n", row.error));
        platform::ScopedServices scope(scripted.services());
        auto result = InstallerTestAccess::runningKelvoProcessIdentifiers(Installer({"installer"}));
        ASSERT_FALSE(result) << row.name;
        EXPECT_EQ(result.error().localizedDescription(), kInspectionLead + row.detail) << row.name;
    }
}

TEST_F(RunningInstances, ToolThatCannotStartFailsWithTheStartErrorsDescription) {
    system.processes = {applicationOnly(55, kTargetBundleIdentifier, std::nullopt)};
    const std::string reason = "The program \u201C/usr/bin/pgrep\u201D could not be started: No such file or directory.";
    system.toolAnswers.push_back(ScriptedSystem::ToolAnswer::failure(platform::Error(reason)));
    EXPECT_EQ(failure(), kInspectionLead + reason);
}

TEST_F(RunningInstances, EveryCallAsksBothSourcesAfresh) {
    system.processes = {toolOnly(20)};
    EXPECT_EQ(found(), ProcessIdentifiers{20});
    system.processes[0].exitTime = 0;
    EXPECT_EQ(found(), ProcessIdentifiers{});
    EXPECT_EQ(system.countOf("applications"), 2u);
}

}  // namespace
