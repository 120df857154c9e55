// Stopping real copies of Kelvo: real processes, real pgrep, real signals, and a whole install()
// around them. Each test program runs in its own process namespace, whose first process reaps what
// the tests start once it ends.
#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "engine/installer.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/payload_bundle.h"
#include "support/signal_state.h"

namespace {

using namespace testing_support;

const std::string kStandInKelvo = buildFolder() + "/kelvo/Kelvo.app/Contents/MacOS/Kelvo";

// Whether the stand-in Kelvo `pid` has set up its handling of SIGTERM (blocked or ignored).
bool takesSigterm(pid_t pid) {
    SignalState state = signalStateOf(pid);
    return state.blocked.contains(SIGTERM) || state.ignored.contains(SIGTERM);
}

class RunningCopies : public testing::Test {
protected:
    void SetUp() override {
        if (auto why = ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
    }

    TempFolder folder;
    PayloadBundle payload;
};

// A whole install of a small payload around each.
TEST_F(RunningCopies, AnInstallAsksThemToQuitThenForcesThem) {
    writeFile(payload.payload() + "/Contents/Info.plist", "<plist/>");
    std::filesystem::copy_file("/bin/sleep", folder / "Kelvo");
    const struct {
        const char* name;
        std::string program, arguments;
        double atLeast, below;  // seconds; a forced quit comes after the first wait of 2
    } rows[] = {
        {"a copy that quits when asked", kStandInKelvo, "", 0, 1.5},
        {"a copy that ignores the request", kStandInKelvo, "--ignore-sigterm", 1.9, 3.5},
        {"a program named Kelvo in no bundle", folder / "Kelvo", "1000", 0, 1.5},
    };
    for (const auto& row : rows) {
        pid_t kelvo = startInBackground(row.program, row.arguments);
        if (row.program == kStandInKelvo) waitUntil([kelvo] { return takesSigterm(kelvo); });
        auto begin = std::chrono::steady_clock::now();
        auto result = engine::Installer({"installer", "--dest", folder.path()}).install();
        double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        EXPECT_EQ(result ? "" : result.error().localizedDescription(), "") << row.name;
        EXPECT_TRUE(seconds >= row.atLeast && seconds < row.below) << row.name << ": " << seconds << " s";
    }
}

}  // namespace
