// Finding and stopping real copies of Kelvo: real processes, the real /proc scan checked against
// pgrep and its reading of their Info.plist files, real signals, and a whole install() around
// them. Each test runs in its own process namespace, whose first process reaps what the tests
// start once it ends.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <future>
#include <new>
#include <set>
#include <sstream>

#include "engine/installer.h"
#include "engine/product_identity.h"
#include "platform/linux/property_list.h"
#include "platform/posix/process_signals.h"
#include "platform/services.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/payload_bundle.h"

static std::atomic<std::size_t> largestAllocation{0};

// Every allocation of this test program, recorded by size. (GCC takes malloc and free inside the
// replacement operators for a mismatch.)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void* operator new(std::size_t size) {
    std::size_t largest = largestAllocation.load();
    while (size > largest && !largestAllocation.compare_exchange_weak(largest, size)) {}
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using namespace testing_support;
using namespace std::chrono_literals;

const std::string kStandInKelvo = buildFolder() + "/kelvo/Kelvo.app/Contents/MacOS/Kelvo";

// Waits up to two seconds for `ready`.
void waitUntil(const std::function<bool()>& ready) {
    for (int tries = 0; tries < 1000 && !ready(); ++tries) usleep(2000);
}

// Starts `program` with `arguments` (shell words) in the background; its process id, once it runs
// the program.
pid_t start(const std::string& program, const std::string& arguments = "") {
    pid_t pid = std::stoi(runCommand(shellWord(program) + " " + arguments + " >/dev/null 2>&1 & echo $!").output);
    std::error_code notYet;
    waitUntil([&] { return std::filesystem::equivalent("/proc/" + std::to_string(pid) + "/exe", program, notYet); });
    return pid;
}

// Whether the stand-in Kelvo `pid` has set up its handling of SIGTERM (blocked or ignored).
bool takesSigterm(pid_t pid) {
    std::istringstream status(readFile("/proc/" + std::to_string(pid) + "/status"));
    for (std::string line; std::getline(status, line);) {
        bool mask = line.starts_with("SigBlk:\t") || line.starts_with("SigIgn:\t");
        if (mask && (std::stoull(line.substr(8), nullptr, 16) >> (SIGTERM - 1)) & 1) return true;
    }
    return false;
}

class RunningCopies : public testing::Test {
protected:
    void SetUp() override {
        if (auto why = ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
    }

    TempFolder folder;
    PayloadBundle payload;
};

// A program named Kelvo in no bundle is pgrep's to find, not the scan's.
TEST_F(RunningCopies, TheScanListsTheBundleCopiesAndNothingElse) {
    std::filesystem::copy(buildFolder() + "/kelvo/Kelvo.app", folder / "Copy.app", std::filesystem::copy_options::recursive);
    std::string infoPlist = shellWord(folder / "Copy.app/Contents/Info.plist");
    ASSERT_EQ(runCommand("plistutil -f bin -i " + infoPlist + " -o " + infoPlist).exitStatus, 0) << "a binary Info.plist";
    std::filesystem::copy_file("/bin/sleep", folder / "Kelvo");
    pid_t first = start(kStandInKelvo), second = start(folder / "Copy.app/Contents/MacOS/Kelvo");
    pid_t plain = start(folder / "Kelvo", "1000");

    std::set<pid_t> bundled;
    for (const auto& application : platform::workspace().runningApplications()) {
        if (application->bundleIdentifier() == engine::kTargetBundleIdentifier) bundled.insert(application->processIdentifier());
    }
    EXPECT_EQ(bundled, (std::set<pid_t>{first, second}));
    for (pid_t pid : {getpid(), plain, 0, -1}) {
        EXPECT_EQ(platform::workspace().runningApplicationWithProcessIdentifier(pid), nullptr) << pid;
    }
}

TEST_F(RunningCopies, AnApplicationOnAStalledMountHoldsTheScanUpNoLonger) {
    std::string bundle = folder / "Other.app";
    std::filesystem::create_directories(bundle + "/Contents/MacOS");
    std::filesystem::copy_file("/bin/sleep", bundle + "/Contents/MacOS/other");
    pid_t other = start(bundle + "/Contents/MacOS/other", "1000");
    // A FUSE file system whose server never answers, as a network mount whose server went away.
    int server = open("/dev/fuse", O_RDWR | O_CLOEXEC);
    std::string options = "fd=" + std::to_string(server) + ",rootmode=40000,user_id=0,group_id=0";
    if (server < 0 || mount("kelvo-test", (bundle + "/Contents").c_str(), "fuse.stalled", 0, options.c_str()) != 0) {
        GTEST_SKIP() << "no FUSE mount here: " << std::strerror(errno);
    }
    auto scan = std::async(std::launch::async, [] { return platform::workspace().runningApplications(); });
    bool quick = scan.wait_for(2s) == std::future_status::ready;
    close(server);  // fails whatever still waits on the mount
    ASSERT_TRUE(quick) << "the scan waited on the stalled mount";
    for (const auto& application : scan.get()) {
        EXPECT_TRUE(application->processIdentifier() != other || !application->bundleIdentifier()) << "read on the mount";
    }
}

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
        pid_t kelvo = start(row.program, row.arguments);
        if (row.program == kStandInKelvo) waitUntil([kelvo] { return takesSigterm(kelvo); });
        auto begin = std::chrono::steady_clock::now();
        auto result = engine::Installer({"installer", "--dest", folder.path()}).install();
        double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        EXPECT_EQ(result ? "" : result.error().localizedDescription(), "") << row.name;
        EXPECT_TRUE(seconds >= row.atLeast && seconds < row.below) << row.name << ": " << seconds << " s";
    }
}

const std::string kInfoPlist =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
    "<key>CFBundleIdentifier</key><string>com.example.Other</string></dict></plist>\n";

// The identifier read at `path`; a read still going after two seconds is a failure, and is ended
// by giving a FIFO there a writer that closes at once.
std::optional<std::string> identifierAt(const std::string& path) {
    auto read = std::async(std::launch::async, [path] { return platform::linux_backend::propertyListString(path, "CFBundleIdentifier"); });
    if (read.wait_for(std::chrono::seconds(2)) == std::future_status::timeout) {
        ADD_FAILURE() << path << ": the read blocked";
        close(open(path.c_str(), O_WRONLY | O_NONBLOCK));
    }
    return read.get();
}

// Only a regular file of a plausible size is read, into a buffer of its own size.
TEST(PropertyList, OnlyARegularFileOfAPlausibleSizeIsReadIntoASmallBuffer) {
    TempFolder folder;
    writeFile(folder / "Info.plist", kInfoPlist);
    ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0644), 0);
    ASSERT_EQ(mkdir((folder / "folder").c_str(), 0755), 0);
    ASSERT_EQ(symlink((folder / "Info.plist").c_str(), (folder / "link").c_str()), 0);
    writeFile(folder / "huge", kInfoPlist + std::string(4 << 20, ' '));
    const struct {
        const char* name;
        std::optional<std::string> identifier;
    } rows[] = {
        {"Info.plist", "com.example.Other"}, {"fifo", std::nullopt}, {"folder", std::nullopt},
        {"link", std::nullopt},              {"huge", std::nullopt}, {"missing", std::nullopt},
    };
    for (const auto& row : rows) {
        largestAllocation = 0;
        EXPECT_EQ(identifierAt(folder / row.name), row.identifier) << row.name;
        EXPECT_LT(largestAllocation.load(), 64u * 1024) << row.name;
    }
}

// kill(2) reads 0 as "my process group" and -1 as "every process I may signal": a pgrep line of
// "0" or "-1" must not become a signal to all of them. Probed with signal 0, which harms nothing.
TEST(ProcessSignals, IdentifiersThatNameNoProcessAreTakenAsGone) {
    for (std::int32_t pid : {0, -1}) {
        auto probe = platform::posix::PosixProcessSignals().kill(pid, 0);
        EXPECT_EQ(probe ? 0 : probe.error().errorNumber(), ESRCH) << pid;
    }
}

}  // namespace
