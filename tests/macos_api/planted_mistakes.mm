// Mistakes a macOS backend author is likely to make, each of which the Objective-C++ source check
// must reject. Checked once with -DMISTAKE=0, where the code is correct and must pass, and once per
// `#if MISTAKE == n` block below, where the check must fail with the diagnostic named after
// "expect:". The correct code uses the declarations the way the backend does, so they are checked too.
#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace {

NSString* toNSString(const std::string& text) {
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding] ?: @"";
}

std::string toString(NSString* _Nullable text) {
    const char* bytes = text.UTF8String;
    return bytes ? std::string(bytes) : std::string();
}

}  // namespace

@interface PlantedDelegate : NSObject <NSApplicationDelegate>
- (instancetype)initWithLaunched:(std::function<void()>)launched;
@end

@implementation PlantedDelegate {
    std::function<void()> _launched;
}

- (instancetype)initWithLaunched:(std::function<void()>)launched {
    if ((self = [super init])) _launched = std::move(launched);
    return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    _launched();
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
    (void)sender;
    return YES;
}

- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender {
    (void)sender;
#if MISTAKE == 1  // expect: undeclared selector 'applicationShouldTerminateAfterLastWindowClosed'
    return [self respondsToSelector:@selector(applicationShouldTerminateAfterLastWindowClosed)] ? NSTerminateNow : NSTerminateLater;
#else
    return [self respondsToSelector:@selector(applicationShouldTerminateAfterLastWindowClosed:)] ? NSTerminateNow : NSTerminateLater;
#endif
}

@end

static NSWindow* buildWindow(const std::string& title) {
#if MISTAKE == 2  // expect: cannot initialize a parameter of type 'NSBackingStoreType' with an rvalue of type 'int'
    NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 460, 220) styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable backing:2 defer:NO];
#elif MISTAKE == 3  // expect: 'NSTitledWindowMask' is deprecated: first deprecated in macOS 10.12
    NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 460, 220) styleMask:NSTitledWindowMask | NSWindowStyleMaskClosable backing:NSBackingStoreBuffered defer:NO];
#else
    NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 460, 220) styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable backing:NSBackingStoreBuffered defer:NO];
#endif
#if MISTAKE == 4  // expect: no viable conversion from 'const std::string'
    window.title = title;
#else
    window.title = toNSString(title);
#endif
    NSTextField* heading = [NSTextField labelWithString:@"Installing Kelvo"];
#if MISTAKE == 5  // expect: assigning to 'NSTextAlignment' from incompatible type 'NSLineBreakMode'
    heading.alignment = NSLineBreakByWordWrapping;
#else
    heading.alignment = NSTextAlignmentCenter;
#endif
    window.contentView = heading;
    return window;
}

static void openApplication(NSURL* url, std::optional<std::string> volume,
                            std::function<void(std::optional<std::string>)> completion) {
    NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
    if (volume) configuration.arguments = @[ @"--eject-installer-volume", toNSString(*volume) ];
#if MISTAKE == 6  // expect: with an rvalue of type 'void (^)(NSError *__strong)'
    [NSWorkspace.sharedWorkspace openApplicationAtURL:url configuration:configuration completionHandler:^(NSError* error) {
#else
    [NSWorkspace.sharedWorkspace openApplicationAtURL:url configuration:configuration completionHandler:^(NSRunningApplication* _Nullable, NSError* _Nullable error) {
#endif
        std::optional<std::string> failure;
        if (error) failure = toString(error.localizedDescription);
        dispatch_async(dispatch_get_main_queue(), ^{ completion(failure); });
    }];
}

static std::vector<int> runningCopies(NSString* bundleIdentifier) {
    std::vector<int> identifiers;
    for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
        if (application.processIdentifier == NSProcessInfo.processInfo.processIdentifier || application.terminated) continue;
#if MISTAKE == 7  // expect: implicit conversion from nullable pointer 'NSString * _Nullable' to non-nullable pointer type 'NSString * _Nonnull'
        if ([bundleIdentifier isEqualToString:application.bundleIdentifier]) identifiers.push_back(application.processIdentifier);
#else
        if ([application.bundleIdentifier isEqualToString:bundleIdentifier]) identifiers.push_back(application.processIdentifier);
#endif
        else if ([application.executableURL.lastPathComponent isEqualToString:@"Kelvo"]) identifiers.push_back(application.processIdentifier);
    }
    return identifiers;
}

static void stopCopy(pid_t pid) {
#if MISTAKE == 8  // expect: no known class method for selector 'runningApplicationWithPID:'
    NSRunningApplication* application = [NSRunningApplication runningApplicationWithPID:pid];
#else
    NSRunningApplication* application = [NSRunningApplication runningApplicationWithProcessIdentifier:pid];
#endif
    if (![application terminate]) [application forceTerminate];
}

static std::optional<std::string> runTool(const std::string& path, NSArray<NSString*>* arguments, std::string& output) {
    NSTask* task = [[NSTask alloc] init];
    task.executableURL = [NSURL fileURLWithPath:toNSString(path)];
    task.arguments = arguments;
    NSPipe* pipe = [NSPipe pipe];
    task.standardOutput = pipe;
    task.standardError = [NSFileHandle fileHandleWithNullDevice];
    NSMutableData* collected = [NSMutableData data];
    NSFileHandle* reader = pipe.fileHandleForReading;
    dispatch_group_t drained = dispatch_group_create();
    dispatch_group_enter(drained);
#if MISTAKE == 9  // expect: variable is not assignable (missing __block type specifier)
    BOOL reachedEnd = NO;
#else
    __block BOOL reachedEnd = NO;
#endif
    reader.readabilityHandler = ^(NSFileHandle* handle) {
#if MISTAKE == 10  // expect: capturing 'reader' strongly in this block is likely to lead to a retain cycle
        NSData* chunk = reader.availableData;
#else
        NSData* chunk = handle.availableData;
#endif
        if (chunk.length > 0) {
            [collected appendData:chunk];
            return;
        }
        reachedEnd = YES;
        handle.readabilityHandler = nil;
        dispatch_group_leave(drained);
    };
#if MISTAKE == 11  // expect: 'launch' is deprecated: first deprecated in macOS 10.13
    [task launch];
#else
    NSError* error = nil;
    if (![task launchAndReturnError:&error]) return toString(error.localizedDescription);
#endif
    [task waitUntilExit];
    dispatch_group_wait(drained, DISPATCH_TIME_FOREVER);
    if (!reachedEnd) return "The output was cut short.";
    output.assign(static_cast<const char*>(collected.bytes), collected.length);
    return task.terminationStatus == 0 ? std::nullopt : std::optional<std::string>("failed");
}

static CFIndex characterCount(NSString* text) {
#if MISTAKE == 12  // expect: requires a bridged cast
    return CFStringGetLength((CFStringRef)text);
#else
    return CFStringGetLength((__bridge CFStringRef)text);
#endif
}

static void scheduleTermination(NSWindow* window) {
    dispatch_queue_t main = dispatch_get_main_queue();
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, static_cast<int64_t>(1.0 * NSEC_PER_SEC)), main, ^{
        [window close];
        [NSApp terminate:nil];
    });
#if MISTAKE == 13  // expect: 'dispatch_release' is unavailable: not available in automatic reference counting mode
    dispatch_release(main);
#elif MISTAKE == 14  // expect: ARC forbids explicit message send of 'release'
    [window release];
#endif
}

int main() {
    @autoreleasepool {
        NSApplication* application = NSApplication.sharedApplication;
        [application setActivationPolicy:NSApplicationActivationPolicyRegular];
        NSTextField* status = [NSTextField labelWithString:@"Copying Kelvo to your Applications folder…"];
        NSProgressIndicator* progress = [[NSProgressIndicator alloc] init];
        PlantedDelegate* delegate = [[PlantedDelegate alloc] initWithLaunched:[status, progress] {
            NSWindow* window = buildWindow("Install Kelvo");
#if MISTAKE == 15  // expect: 'activate' is unavailable: introduced in macOS 14.0
            [NSApp activate];
#else
            [NSApp activateIgnoringOtherApps:YES];
#endif
            dispatch_async(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), ^{
                std::string output;
                std::optional<std::string> failure = runTool("/usr/bin/pgrep", @[ @"-x", @"Kelvo" ], output);
                for (int pid : runningCopies(@"com.example.kelvo")) stopCopy(pid);
                NSURL* destination = [NSURL fileURLWithPath:@"/Applications/Kelvo.app"];
                dispatch_async(dispatch_get_main_queue(), ^{
                    [progress stopAnimation:nil];
                    status.stringValue = toNSString(failure.value_or(std::to_string(characterCount(NSBundle.mainBundle.bundlePath))));
                    openApplication(destination, std::nullopt, [window](std::optional<std::string>) { scheduleTermination(window); });
                });
            });
        }];
        application.delegate = delegate;
        [application run];
    }
    return 0;
}
