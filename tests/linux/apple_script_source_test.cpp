// Reading do-shell-script sources: what is accepted, how the literal is unescaped, what is refused.
#include <gtest/gtest.h>

#include "engine/installer.h"
#include "platform/linux/apple_script_source.h"
#include "platform/services.h"
#include "support/installer_test_access.h"
#include "support/scripted_system.h"

namespace {

using platform::linux_backend::parseShellScriptSource;

TEST(AppleScriptSource, AcceptedSourcesAndTheirCommands) {
    const struct {
        std::string source;
        std::string command;
        bool privileged;
    } rows[] = {
        {R"(do shell script "true")", "true", false},
        {R"(do shell script "true" with administrator privileges)", "true", true},
        {R"(do shell script "")", "", false},
        {R"(do shell script "a\\b")", R"(a\b)", false},
        {R"(do shell script "say \"hi\"")", R"(say "hi")", false},
        {R"(do shell script "\\\"")", R"(\")", false},
        {R"(do shell script "1\n2\t3\r")", "1\n2\t3\r", false},
        {"do shell script \"raw\nline\"", "raw\nline", false},
        {R"(do shell script "'$x' `y` \\n")", R"('$x' `y` \n)", false},
        {"do shell script \"K\u00e9lvo \u2026\"", "K\u00e9lvo \u2026", false},
    };
    for (const auto& row : rows) {
        auto parsed = parseShellScriptSource(row.source);
        ASSERT_TRUE(parsed) << row.source << ": " << parsed.error().message;
        EXPECT_EQ(parsed.value().command, row.command) << row.source;
        EXPECT_EQ(parsed.value().withAdministratorPrivileges, row.privileged) << row.source;
    }
}

TEST(AppleScriptSource, RefusedSources) {
    const std::string rows[] = {
        "",
        "true",
        R"(do shell script true)",
        R"(do  shell script "true")",
        R"( do shell script "true")",
        R"(Do shell script "true")",
        R"(do shell script "true)",
        R"(do shell script "true\")",
        R"(do shell script "a\qb")",
        R"(do shell script "a\)",
        R"(do shell script "true" )",
        "do shell script \"true\"\n",
        R"(do shell script "true" with administrator privileges )",
        R"(do shell script "true"  with administrator privileges)",
        R"(do shell script "true" with administrator privileges and password "x")",
        R"(do shell script "true" & "false")",
        R"(do shell script "a" "b")",
    };
    for (const std::string& source : rows) {
        auto parsed = parseShellScriptSource(source);
        ASSERT_FALSE(parsed) << "accepted: " << source;
        EXPECT_FALSE(parsed.error().message.empty()) << source;
    }
}

TEST(AppleScriptSource, Utf8Validity) {
    const struct {
        std::string text;
        bool valid;
    } rows[] = {
        {"plain", true},     {"K\u00e9lvo \u2026 \U0001F600", true}, {"\xff", false},
        {"\xc3", false},     {"\xc0\xaf", false} /* overlong */,      {"\xed\xa0\x80", false} /* surrogate */,
        {"\xf4\x90\x80\x80", false} /* past U+10FFFF */,              {std::string("a\0b", 3), true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(platform::linux_backend::isValidUTF8(row.text), row.valid) << "row: " << row.text;
    }
}

// The engine's escaping and this reading are two halves: together they give back the command.
TEST(AppleScriptSource, ReadingTheEnginesScriptGivesBackItsCommand) {
    const std::string awkwardPaths[] = {
        R"(/tmp/a'b)", R"(/tmp/a"b)", R"(/tmp/a\b)", R"(/tmp/\\"'\'\")", "/tmp/$HOME `id` $(id)",
        "/tmp/line\nfeed", "/tmp/tab\there", "/tmp/K\u00e9lvo", "/tmp/-leading", "/tmp/ends with \\",
    };
    for (const std::string& folder : awkwardPaths) {
        testing_support::ScriptedSystem system;
        platform::ScopedServices scope(system.services());
        std::string source = folder + "/Kelvo.app";
        std::string destination = folder + "/dest/Kelvo.app";
        (void)engine::InstallerTestAccess::runPrivilegedInstall(engine::Installer({"x"}), source, destination,
                                                                platform::Error("failed"));
        auto parsed = parseShellScriptSource(system.scriptSources.at(0));
        ASSERT_TRUE(parsed) << folder;
        EXPECT_EQ(parsed.value().command,
                  engine::InstallerTestAccess::privilegedInstallCommand(source, destination, system.userId))
            << folder;
        EXPECT_TRUE(parsed.value().withAdministratorPrivileges) << folder;
    }
}

}  // namespace
