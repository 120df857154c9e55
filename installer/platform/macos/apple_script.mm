#include "platform/macos/apple_script.h"

#import <Foundation/Foundation.h>

#include "platform/macos/ns_string.h"

namespace platform::macos {
namespace {

void onMainThread(dispatch_block_t block) {
    if (NSThread.isMainThread) {
        block();
    } else {
        dispatch_sync(dispatch_get_main_queue(), block);
    }
}

// The failure a script's error information tells: its message and number, under the installer's
// own keys; the message, when it has one, is also the description.
Error failureFrom(NSDictionary<NSString*, id>* dictionary) {
    Error::Info info;
    std::int64_t number = kAppleScriptGeneralErrorNumber;
    id numberEntry = dictionary[NSAppleScriptErrorNumber];
    if ([numberEntry isKindOfClass:[NSNumber class]]) number = [numberEntry longLongValue];
    info[kAppleScriptErrorNumber] = number;
    std::string description = "AppleScript error " + std::to_string(number) + ".";
    id message = dictionary[NSAppleScriptErrorMessage];
    if ([message isKindOfClass:[NSString class]]) {
        description = toStdString(message);
        info[kAppleScriptErrorMessage] = description;
    }
    return Error(description, std::move(info));
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

    Expected<void, Error> execute() override {
        __block NSDictionary<NSString*, id>* failure = nil;
        NSAppleScript* script = script_;
        onMainThread(^{
          @autoreleasepool {
              NSDictionary<NSString*, id>* errorInfo = nil;
              [script executeAndReturnError:&errorInfo];
              failure = errorInfo;
          }
        });
        if (failure == nil) return {};
        @autoreleasepool {
            return Expected<void, Error>::failure(failureFrom(failure));
        }
    }

private:
    NSAppleScript* script_;
};

}  // namespace

Expected<std::unique_ptr<AppleScript>, Error> MacAppleScriptRunner::scriptWithSource(const std::string& source) {
    using Made = Expected<std::unique_ptr<AppleScript>, Error>;
    NSString* text = toNSStringIfUTF8(source);
    if (text == nil) return Made::failure(Error("The script is not valid UTF-8."));
    __block NSAppleScript* script = nil;
    onMainThread(^{
      script = [[NSAppleScript alloc] initWithSource:text];
    });
    if (script == nil) return Made::failure(Error("AppleScript could not take the script."));
    return Made(std::make_unique<MacAppleScript>(script));
}

}  // namespace platform::macos
