// The stand-in Kelvo on macOS: the command line and the launch record of the Linux one (see
// command_line.h), in a real application with an event loop, so that the workspace can open it,
// list it and ask it to quit. It has no window and no Dock icon.
#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>

#include <string>
#include <thread>

#include "command_line.h"
#include "launch_record.h"
#include "quit_signals.h"
#include "volume_eject.h"

// Records why the application ends: a quit signal, or else a request to quit. With
// --ignore-sigterm it refuses requests to quit, as a copy that the installer must force does.
@interface KelvoStandInDelegate : NSObject <NSApplicationDelegate>
@property int quitSignal;  // 0 until a quit signal arrives
@property BOOL refusesQuitRequests;
@end

@implementation KelvoStandInDelegate

- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender {
    (void)sender;
    // A quit signal is not a request: SIGINT and SIGHUP still end a copy that refuses requests.
    if (self.refusesQuitRequests && self.quitSignal == 0) {
        kelvo::appendLaunchRecord("refused", {{"request", "terminate"}});
        return NSTerminateCancel;
    }
    return NSTerminateNow;
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    (void)notification;
    if (self.quitSignal != 0) {
        kelvo::appendLaunchRecord("quit", {{"signal", std::to_string(self.quitSignal)}});
    } else {
        kelvo::appendLaunchRecord("quit", {{"request", "terminate"}});
    }
}

@end

namespace {

std::string ownExecutable() {
    const char* path = NSBundle.mainBundle.executableURL.path.UTF8String;
    return path ? path : "";
}

// A quit signal ends the application the way a request to quit does, on the main thread.
void quitOnSignal(const sigset_t& quitSignals, KelvoStandInDelegate* delegate) {
    std::thread([quitSignals, delegate] {
        int received = kelvo::waitForQuitSignal(quitSignals);
        dispatch_async(dispatch_get_main_queue(), ^{
            delegate.quitSignal = received;
            [NSApp terminate:nil];
        });
    }).detach();
}

void ejectInBackground(const std::string& volume) {
    std::thread([volume] {
        std::string outcome = kelvo::ejectVolume(volume);
        kelvo::appendLaunchRecord("eject", {{"volume", volume}, {"outcome", outcome}});
    }).detach();
}

}  // namespace

int main(int argc, char** argv) {
    kelvo::Options options = kelvo::readOptions(argc, argv);
    @autoreleasepool {
        kelvo::recordStart(argc, argv, ownExecutable());
    }
    if (options.exitNow) return 0;

    sigset_t quitSignals = kelvo::blockQuitSignals(options.ignoreTerminate);
    @autoreleasepool {
        NSApplication* application = NSApplication.sharedApplication;
        [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
        KelvoStandInDelegate* delegate = [[KelvoStandInDelegate alloc] init];
        delegate.refusesQuitRequests = options.ignoreTerminate;
        application.delegate = delegate;
        quitOnSignal(quitSignals, delegate);
        if (options.ejectVolume) ejectInBackground(options.ejectVolume);
        [application run];
    }
    return 0;
}
