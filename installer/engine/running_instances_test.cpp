// Finding the running copies of Kelvo, on the scripted machine.
#include <gtest/gtest.h>

#include "engine/installer_test_access.h"
#include "platform/testing/scripted_system.h"

namespace {

using testing_support::ScriptedProcess;
using testing_support::ScriptedSystem;

const std::string kLead = "Could not check for running Kelvo processes.\n";

// An application that pgrep does not name.
ScriptedProcess app(std::int32_t pid, std::optional<std::string> bundleIdentifier,
                    std::optional<std::string> executable) {
    return {.pid = pid, .listedByTool = false, .bundleIdentifier = bundleIdentifier, .executable = executable};
}

// The identifiers found, joined with ", ", or the message of the error.
std::string found(ScriptedSystem& system) {
    platform::ScopedServices scope(system.services());
    auto result = engine::InstallerTestAccess::runningKelvoProcessIdentifiers(engine::Installer({"x"}));
    if (!result) return result.error().localizedDescription();
    std::string text;
    for (std::int32_t pid : result.value()) text += (text.empty() ? "" : ", ") + std::to_string(pid);
    return text;
}

TEST(RunningInstances, MergesTheApplicationListAndPgrepWithoutTheInstallerItself) {
    const std::string kelvo = "/Applications/Kelvo.app/Contents/MacOS/Kelvo";
    const std::string id = engine::kTargetBundleIdentifier;
    auto tool = [](std::int32_t status, const char* output, const char* error = "") {
        return ScriptedSystem::ToolAnswer(platform::ChildProcessResult{status, output, error});
    };
    const struct {
        const char* name;
        std::vector<ScriptedProcess> applications;
        ScriptedSystem::ToolAnswer tool;
        std::string expected;
    } rows[] = {
        {"by bundle identifier or executable name",
         {app(7, id, "/opt/Other.app/Contents/MacOS/Other"), app(8, "org.example.Tool", "/tmp/Kelvo"),
          app(9, std::nullopt, std::nullopt), app(10, std::nullopt, "/tmp/kelvo"),
          app(11, std::nullopt, "/Kelvo.app/Contents/MacOS/Helper"), {.pid = 12, .listedByTool = false, .exitTime = 0}},
         tool(1, ""), "7, 8"},
        {"not itself", {app(100, id, kelvo)}, tool(0, "100\n101\n"), "101"},
        {"merged, once, ascending", {app(498, id, kelvo)}, tool(0, "512\n498\n"), "498, 512"},
        {"no match: output unread", {app(900, id, std::nullopt), app(40, std::nullopt, kelvo)}, tool(1, "77\n"),
         "40, 900"},
        {"every line break", {}, tool(0, "\n\n7\v8\f9\r10\xC2\x85" "11\xE2\x80\xA8" "12\xE2\x80\xA9" "13\r\n14"),
         "7, 8, 9, 10, 11, 12, 13, 14"},
        {"only plain decimal lines", {},
         tool(0, " 5\n6 \nabc\n5a\n+14\n2147483648\n-2147483649\n2147483647\n\xFF" "9\n"), "14, 2147483647"},
        {"failure", {app(55, id, kelvo)}, tool(2, "12\n", "   pgrep: invalid user name: x\n"),
         kLead + "pgrep: invalid user name: x"},
        {"failure, silent", {}, tool(2, "", " \t\r\n\xE2\x80\xA8"), kLead + "The process check failed."},
        {"failure, several lines", {}, tool(3, "", "\nfirst\r\nsecond \xFF\xE2\x80\n"), kLead + "first\r\nsecond \uFFFD\uFFFD"},
        {"cannot start", {app(55, id, kelvo)}, ScriptedSystem::ToolAnswer::failure(platform::Error("No pgrep.")),
         kLead + "No pgrep."},
    };
    for (const auto& row : rows) {
        ScriptedSystem system;
        system.processes = row.applications;
        system.toolAnswers = {row.tool};
        system.userId = 4294967294u;
        EXPECT_EQ(found(system), row.expected) << row.name;
        EXPECT_TRUE(system.events().ends_with("run /usr/bin/pgrep -x -u 4294967294 Kelvo")) << "this user's, by exact name";
    }
}

}  // namespace
