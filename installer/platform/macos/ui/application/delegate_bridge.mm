#include "platform/macos/ui/application/delegate_bridge.h"

#import <AppKit/AppKit.h>

namespace platform::macos {
namespace {

// noexcept: an exception from the delegate ends the process here, before it reaches AppKit.
void didFinishLaunching(ui::ApplicationDelegate& delegate) noexcept {
    delegate.applicationDidFinishLaunching();
}

bool shouldTerminateAfterLastWindowClosed(ui::ApplicationDelegate& delegate,
                                          ui::Application& application) noexcept {
    return delegate.applicationShouldTerminateAfterLastWindowClosed(application);
}

}  // namespace
}  // namespace platform::macos

NS_ASSUME_NONNULL_BEGIN

@interface PlatformApplicationDelegateBridge : NSObject <NSApplicationDelegate>
- (instancetype)initWithApplication:(platform::ui::Application*)application
                           delegate:(platform::ui::ApplicationDelegate*)delegate
    NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;
@end

@implementation PlatformApplicationDelegateBridge {
    platform::ui::Application* _application;
    platform::ui::ApplicationDelegate* _delegate;
}

- (instancetype)initWithApplication:(platform::ui::Application*)application
                           delegate:(platform::ui::ApplicationDelegate*)delegate {
    if ((self = [super init])) {
        _application = application;
        _delegate = delegate;
    }
    return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    platform::macos::didFinishLaunching(*_delegate);
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
    (void)sender;
    bool shouldTerminate =
        platform::macos::shouldTerminateAfterLastWindowClosed(*_delegate, *_application);
    return shouldTerminate ? YES : NO;
}

@end

NS_ASSUME_NONNULL_END

namespace platform::macos {

struct ApplicationDelegateBridge::Forwarder {
    PlatformApplicationDelegateBridge* object;
};

ApplicationDelegateBridge::ApplicationDelegateBridge(ui::Application& application,
                                                     ui::ApplicationDelegate& delegate)
    : forwarder_(std::make_unique<Forwarder>(
          Forwarder{[[PlatformApplicationDelegateBridge alloc] initWithApplication:&application
                                                                          delegate:&delegate]})) {
    NSApplication.sharedApplication.delegate = forwarder_->object;
}

ApplicationDelegateBridge::~ApplicationDelegateBridge() {
    NSApplication* application = NSApplication.sharedApplication;
    if (application.delegate == forwarder_->object) application.delegate = nil;
}

}  // namespace platform::macos
