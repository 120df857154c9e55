// Mistakes a macOS backend author is likely to make, one of each kind the Objective-C++ source check
// must reject. Checked once with -DMISTAKE=0, where the code is correct and must pass, and once per
// `#if MISTAKE == n` block below, where the check must fail with the diagnostic named after
// "expect:".
#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>

#include <string>

int main() {
    @autoreleasepool {
#if MISTAKE == 1  // expect: undeclared selector 'applicationShouldTerminateAfterLastWindowClosed'
        SEL quitsWithItsWindow = @selector(applicationShouldTerminateAfterLastWindowClosed);
#else
        SEL quitsWithItsWindow = @selector(applicationShouldTerminateAfterLastWindowClosed:);
#endif
        (void)quitsWithItsWindow;
        NSRect content = NSMakeRect(0, 0, 460, 220);
#if MISTAKE == 2  // expect: cannot initialize a parameter of type 'NSBackingStoreType' with an rvalue of type 'int'
        NSWindow* window = [[NSWindow alloc] initWithContentRect:content styleMask:NSWindowStyleMaskTitled backing:2 defer:NO];
#elif MISTAKE == 3  // expect: 'NSTitledWindowMask' is deprecated: first deprecated in macOS 10.12
        NSWindow* window = [[NSWindow alloc] initWithContentRect:content styleMask:NSTitledWindowMask backing:NSBackingStoreBuffered defer:NO];
#else
        NSWindow* window = [[NSWindow alloc] initWithContentRect:content styleMask:NSWindowStyleMaskTitled backing:NSBackingStoreBuffered defer:NO];
#endif
#if MISTAKE == 4  // expect: 'activate' is only available on macOS 14.0 or newer
        [NSApp activate];
#else
        if (@available(macOS 14.0, *)) {
            [NSApp activate];
        } else {
            [NSApp activateIgnoringOtherApps:YES];
        }
#endif
#if MISTAKE == 5  // expect: no known class method for selector 'runningApplicationWithPID:'
        NSRunningApplication* kelvo = [NSRunningApplication runningApplicationWithPID:501];
#else
        NSRunningApplication* kelvo = [NSRunningApplication runningApplicationWithProcessIdentifier:501];
#endif
#if MISTAKE == 6  // expect: implicit conversion from nullable pointer 'NSString * _Nullable' to non-nullable pointer type 'NSString * _Nonnull'
        if ([@"com.example.kelvo" isEqualToString:kelvo.bundleIdentifier]) [kelvo terminate];
#else
        if ([kelvo.bundleIdentifier isEqualToString:@"com.example.kelvo"]) [kelvo terminate];
#endif
        NSURL* installed = [NSURL fileURLWithPath:@"/Applications/Kelvo.app"];
        NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
#if MISTAKE == 7  // expect: with an rvalue of type 'void (^)(NSError *__strong)'
        [NSWorkspace.sharedWorkspace openApplicationAtURL:installed configuration:configuration completionHandler:^(NSError* error) {
#else
        [NSWorkspace.sharedWorkspace openApplicationAtURL:installed configuration:configuration completionHandler:^(NSRunningApplication* _Nullable, NSError* _Nullable error) {
#endif
            if (error) [window close];
        }];
        dispatch_queue_t main = dispatch_get_main_queue();
        dispatch_after(dispatch_time(DISPATCH_TIME_NOW, static_cast<int64_t>(1.0 * NSEC_PER_SEC)), main, ^{
            [NSApp terminate:nil];
        });
#if MISTAKE == 8  // expect: 'dispatch_release' is unavailable: not available in automatic reference counting mode
        dispatch_release(main);
#endif
        const std::string title = "Install Kelvo";
#if MISTAKE == 9  // expect: no viable conversion from 'const std::string'
        window.title = title;
#else
        window.title = [[NSString alloc] initWithBytes:title.data() length:title.size() encoding:NSUTF8StringEncoding] ?: @"";
#endif
#if MISTAKE == 10  // expect: requires a bridged cast
        CFIndex length = CFStringGetLength((CFStringRef)window.title);
#else
        CFIndex length = CFStringGetLength((__bridge CFStringRef)window.title);
#endif
        (void)length;
        [NSApp run];
    }
    return 0;
}
