// The workspace: the running applications of this user, handles on them, and opening applications.
#pragma once

#include <sys/types.h>

#include <AppKit/NSApplication.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSApplicationActivationOptions) {
    NSApplicationActivateAllWindows = 1 << 0,
    NSApplicationActivateIgnoringOtherApps = 1 << 1,
};

@interface NSRunningApplication : NSObject
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
@property (readonly) pid_t processIdentifier;
@property (readonly, getter=isTerminated) BOOL terminated;
@property (nullable, readonly, copy) NSString* bundleIdentifier;
@property (nullable, readonly, copy) NSURL* bundleURL;
@property (nullable, readonly, copy) NSURL* executableURL;
@property (nullable, readonly, copy) NSString* localizedName;
// Asks the application to quit; NO when the request could not be made.
- (BOOL)terminate;
// Makes the application quit at once.
- (BOOL)forceTerminate;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
- (BOOL)activateFromApplication:(NSRunningApplication*)application
                        options:(NSApplicationActivationOptions)options MACOS_INTRODUCED(14.0);
@end

// How an application is to be opened; every setting left alone keeps the system's default.
@interface NSWorkspaceOpenConfiguration : NSObject <NSCopying>
+ (instancetype)configuration;
@property BOOL activates;
@property BOOL hides;
@property BOOL promptsUserIfNeeded;
@property BOOL createsNewApplicationInstance;
// The opened application's command line, after its program path.
@property (copy) NSArray<NSString*>* arguments;
@property (copy) NSDictionary<NSString*, NSString*>* environment;
@end

typedef NS_OPTIONS(NSUInteger, NSWorkspaceLaunchOptions) {
    NSWorkspaceLaunchDefault = 0x00010000,
};

@interface NSWorkspace : NSObject
@property (class, readonly, strong) NSWorkspace* sharedWorkspace;
// A snapshot of the running applications of this user.
@property (readonly, copy) NSArray<NSRunningApplication*>* runningApplications;

// Returns at once; later calls `completionHandler` once, on a queue of its own choosing.
- (void)openApplicationAtURL:(NSURL*)applicationURL
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^_Nullable)(NSRunningApplication* _Nullable application,
                                                NSError* _Nullable error))completionHandler;

- (BOOL)launchApplication:(NSString*)appName
    MACOS_DEPRECATED("11.0", "openApplicationAtURL:configuration:completionHandler:");
- (nullable NSRunningApplication*)launchApplicationAtURL:(NSURL*)url
                                                 options:(NSWorkspaceLaunchOptions)options
                                           configuration:(NSDictionary<NSString*, id>*)configuration
                                                   error:(NSError**)error
    MACOS_DEPRECATED("11.0", "openApplicationAtURL:configuration:completionHandler:");
@property (readonly, copy) NSArray<NSDictionary*>* launchedApplications
    MACOS_DEPRECATED("10.7", "runningApplications");
@end

NS_ASSUME_NONNULL_END
