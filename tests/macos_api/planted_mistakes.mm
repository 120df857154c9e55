// Mistakes a macOS backend author is likely to make, one of each kind the Objective-C++ source check
// must reject. Checked once with -DMISTAKE=0, where the code is correct and must pass, and once per
// `#if MISTAKE == n` block below, where the check must fail with the diagnostic named after
// "expect:".
#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

@interface PlantedDelegate : NSObject <NSApplicationDelegate>
@end

@implementation PlantedDelegate

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

static NSWindow* buildWindow() {
#if MISTAKE == 2  // expect: cannot initialize a parameter of type 'NSBackingStoreType' with an rvalue of type 'int'
    return [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 460, 220) styleMask:NSWindowStyleMaskTitled backing:2 defer:NO];
#elif MISTAKE == 3  // expect: 'NSTitledWindowMask' is deprecated: first deprecated in macOS 10.12
    return [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 460, 220) styleMask:NSTitledWindowMask backing:NSBackingStoreBuffered defer:NO];
#else
    return [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 460, 220) styleMask:NSWindowStyleMaskTitled backing:NSBackingStoreBuffered defer:NO];
#endif
}

static void openApplication(NSURL* url, std::function<void(bool)> completion) {
    NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
#if MISTAKE == 4  // expect: with an rvalue of type 'void (^)(NSError *__strong)'
    [NSWorkspace.sharedWorkspace openApplicationAtURL:url configuration:configuration completionHandler:^(NSError* error) {
#else
    [NSWorkspace.sharedWorkspace openApplicationAtURL:url configuration:configuration completionHandler:^(NSRunningApplication* _Nullable, NSError* _Nullable error) {
#endif
        bool started = error == nil;
        dispatch_async(dispatch_get_main_queue(), ^{ completion(started); });
    }];
}

static std::vector<int> runningCopies(NSString* bundleIdentifier) {
    std::vector<int> identifiers;
    for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
#if MISTAKE == 5  // expect: implicit conversion from nullable pointer 'NSString * _Nullable' to non-nullable pointer type 'NSString * _Nonnull'
        if ([bundleIdentifier isEqualToString:application.bundleIdentifier]) identifiers.push_back(application.processIdentifier);
#else
        if ([application.bundleIdentifier isEqualToString:bundleIdentifier]) identifiers.push_back(application.processIdentifier);
#endif
    }
    return identifiers;
}

static void stopCopy(pid_t pid) {
#if MISTAKE == 6  // expect: no known class method for selector 'runningApplicationWithPID:'
    NSRunningApplication* application = [NSRunningApplication runningApplicationWithPID:pid];
#else
    NSRunningApplication* application = [NSRunningApplication runningApplicationWithProcessIdentifier:pid];
#endif
    if (![application terminate]) [application forceTerminate];
}

static void scheduleTermination(NSWindow* window) {
    dispatch_queue_t main = dispatch_get_main_queue();
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, static_cast<int64_t>(1.0 * NSEC_PER_SEC)), main, ^{
        [window close];
        [NSApp terminate:nil];
    });
#if MISTAKE == 7  // expect: 'dispatch_release' is unavailable: not available in automatic reference counting mode
    dispatch_release(main);
#endif
}

int main() {
    @autoreleasepool {
        NSApplication* application = NSApplication.sharedApplication;
        [application setActivationPolicy:NSApplicationActivationPolicyRegular];
        PlantedDelegate* delegate = [[PlantedDelegate alloc] init];
        application.delegate = delegate;
        NSWindow* window = buildWindow();
#if MISTAKE == 8  // expect: 'activate' is unavailable: introduced in macOS 14.0
        [NSApp activate];
#else
        [NSApp activateIgnoringOtherApps:YES];
#endif
        dispatch_async(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), ^{
            for (int pid : runningCopies(@"com.example.kelvo")) stopCopy(pid);
            openApplication([NSURL fileURLWithPath:@"/Applications/Kelvo.app"], [window](bool) { scheduleTermination(window); });
        });
        [application run];
    }
    return 0;
}
