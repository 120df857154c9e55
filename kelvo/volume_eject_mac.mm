#include "volume_eject.h"

#import <Foundation/Foundation.h>

#include <chrono>
#include <optional>
#include <thread>

namespace kelvo {
namespace {

constexpr auto kBusyRetryInterval = std::chrono::milliseconds(100);
// A browsable image can be held busy by Spotlight indexing it for most of a minute.
constexpr auto kBusyGiveUpAfter = std::chrono::seconds(60);
constexpr const char* kEjected = "ejected";

// Detaches the disk image mounted at `mountPoint` with hdiutil, the way the Finder's Eject does.
// Returns nothing once it is detached, or hdiutil's complaint.
std::optional<std::string> detach(const std::string& mountPoint) {
    @autoreleasepool {
        NSTask* task = [[NSTask alloc] init];
        task.executableURL = [NSURL fileURLWithPath:@"/usr/bin/hdiutil"];
        task.arguments = @[ @"detach", [NSString stringWithUTF8String:mountPoint.c_str()] ?: @"" ];
        NSPipe* errors = [NSPipe pipe];
        task.standardOutput = [NSFileHandle fileHandleWithNullDevice];
        task.standardError = errors;
        NSError* failure = nil;
        if (![task launchAndReturnError:&failure]) return std::string("hdiutil could not be started");
        NSData* text = [errors.fileHandleForReading readDataToEndOfFile];
        [task waitUntilExit];
        if (task.terminationStatus == 0) return std::nullopt;
        std::string complaint(static_cast<const char*>(text.bytes), text.length);
        while (!complaint.empty() && complaint.back() == '\n') complaint.pop_back();
        return complaint.empty() ? "hdiutil detach failed" : complaint;
    }
}

}  // namespace

std::string ejectVolume(const std::string& mountPoint) {
    const auto giveUpAt = std::chrono::steady_clock::now() + kBusyGiveUpAfter;
    for (;;) {
        std::optional<std::string> complaint = detach(mountPoint);
        if (!complaint) return kEjected;
        if (std::chrono::steady_clock::now() >= giveUpAt) return "not ejected: " + *complaint;
        std::this_thread::sleep_for(kBusyRetryInterval);
    }
}

}  // namespace kelvo
