// Reading bundle identifiers from other people's Info.plist files: only what is a plain file of a
// plausible size is read, never waiting on what lies there instead.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <future>
#include <new>

#include "platform/linux/property_list.h"
#include "support/temp_folder.h"

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

}  // namespace
