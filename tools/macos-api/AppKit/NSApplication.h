// The application object, its event loop and its delegate.
#pragma once

#include <AppKit/NSImage.h>
#include <AppKit/NSWindow.h>

@class NSApplication;
@class NSRunningApplication;

NS_ASSUME_NONNULL_BEGIN

// The application object, once +sharedApplication has made it.
APPKIT_EXTERN __kindof NSApplication* _Null_unspecified NSApp;

typedef NSInteger NSModalResponse;
static const NSModalResponse NSModalResponseOK = 1;
static const NSModalResponse NSModalResponseCancel = 0;

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular,
    NSApplicationActivationPolicyAccessory,
    NSApplicationActivationPolicyProhibited,
};

typedef NS_ENUM(NSUInteger, NSApplicationTerminateReply) {
    NSTerminateCancel = 0,
    NSTerminateNow = 1,
    NSTerminateLater = 2,
};

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender;
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender;
- (void)applicationWillTerminate:(NSNotification*)notification;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application;
@end

@interface NSApplication : NSResponder
@property (class, readonly, strong) __kindof NSApplication* sharedApplication;
// Not owned: whoever sets the delegate keeps it alive.
@property (nullable, weak) id<NSApplicationDelegate> delegate;
@property (null_resettable, strong) NSImage* applicationIconImage;
@property (readonly, copy) NSArray<NSWindow*>* windows;
@property (readonly, getter=isRunning) BOOL running;

- (NSApplicationActivationPolicy)activationPolicy;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)run;
- (void)stop:(nullable id)sender;
- (void)terminate:(nullable id)sender;
// Answers an applicationShouldTerminate: that returned NSTerminateLater.
- (void)replyToApplicationShouldTerminate:(BOOL)shouldTerminate;
// Has no effect from macOS 14 on, where only -activate brings an application forward.
- (void)activateIgnoringOtherApps:(BOOL)ignoringOtherApps;

- (void)activate MACOS_INTRODUCED(14.0);
- (void)yieldActivationToApplication:(NSRunningApplication*)application MACOS_INTRODUCED(14.0);
@end

NS_ASSUME_NONNULL_END
