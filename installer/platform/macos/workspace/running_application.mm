#include "platform/macos/workspace/running_application.h"

#import <AppKit/AppKit.h>

#include "platform/macos/ns_string.h"

namespace platform::macos {
namespace {

class MacRunningApplication final : public RunningApplication {
public:
    explicit MacRunningApplication(NSRunningApplication* application) : application_(application) {}

    std::int32_t processIdentifier() const override { return application_.processIdentifier; }

    bool isTerminated() const override { return application_.terminated; }

    std::optional<std::string> bundleIdentifier() const override {
        @autoreleasepool {
            NSString* identifier = application_.bundleIdentifier;
            if (identifier == nil) return std::nullopt;
            return toStdString(identifier);
        }
    }

    std::optional<FileURL> executableURL() const override {
        @autoreleasepool {
            NSString* path = application_.executableURL.path;
            if (path == nil) return std::nullopt;
            return FileURL::fileURLWithPath(toStdString(path));
        }
    }

    bool terminate() override { return [application_ terminate]; }

    bool forceTerminate() override { return [application_ forceTerminate]; }

private:
    NSRunningApplication* application_;
};

}  // namespace

std::shared_ptr<RunningApplication> makeRunningApplication(NSRunningApplication* application) {
    if (application == nil) return nullptr;
    return std::make_shared<MacRunningApplication>(application);
}

}  // namespace platform::macos
