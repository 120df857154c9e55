#include "platform/macos/apple_script.h"

#import <Foundation/Foundation.h>

#include "platform/macos/ns_string.h"

namespace platform::macos {
namespace {

// The number AppleScript reports for a failure it gives no number of its own ("errOSAGeneralError").
constexpr std::int64_t kGeneralErrorNumber = -2700;

void onMainThread(dispatch_block_t block) {
    if (NSThread.isMainThread) {
        block();
    } else {
        dispatch_sync(dispatch_get_main_queue(), block);
    }
}

// The message and number of a script's error information, under the installer's own keys. Never
// empty.
AppleScriptErrorInfo errorInfoFrom(NSDictionary<NSString*, id>* dictionary) {
    AppleScriptErrorInfo info;
    id message = dictionary[NSAppleScriptErrorMessage];
    if ([message isKindOfClass:[NSString class]]) info[kAppleScriptErrorMessage] = toStdString(message);
    id number = dictionary[NSAppleScriptErrorNumber];
    if ([number isKindOfClass:[NSNumber class]]) {
        info[kAppleScriptErrorNumber] = static_cast<std::int64_t>([number longLongValue]);
    } else {
        info[kAppleScriptErrorNumber] = kGeneralErrorNumber;
    }
    return info;
}

class MacAppleScript final : public AppleScript {
public:
    explicit MacAppleScript(NSAppleScript* script) : script_(script) {}

    ~MacAppleScript() override {
        // The last reference goes with the block, which is released on the main thread.
        NSAppleScript* script = script_;
        script_ = nil;
        dispatch_async(dispatch_get_main_queue(), ^{
          (void)script;
        });
    }

    std::optional<AppleScriptErrorInfo> execute() override {
        __block NSDictionary<NSString*, id>* failure = nil;
        NSAppleScript* script = script_;
        onMainThread(^{
          @autoreleasepool {
              NSDictionary<NSString*, id>* errorInfo = nil;
              [script executeAndReturnError:&errorInfo];
              failure = errorInfo;
          }
        });
        if (failure == nil) return std::nullopt;
        @autoreleasepool {
            return errorInfoFrom(failure);
        }
    }

private:
    NSAppleScript* script_;
};

}  // namespace

std::unique_ptr<AppleScript> MacAppleScriptRunner::scriptWithSource(const std::string& source) {
    NSString* text = toNSStringIfUTF8(source);
    if (text == nil) return nullptr;
    __block NSAppleScript* script = nil;
    onMainThread(^{
      script = [[NSAppleScript alloc] initWithSource:text];
    });
    if (script == nil) return nullptr;
    return std::make_unique<MacAppleScript>(script);
}

}  // namespace platform::macos
