// Child processes, and the pipes and file handles their output is read through.
#pragma once

#include <Foundation/NSData.h>
#include <Foundation/NSError.h>
#include <Foundation/NSURL.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFileHandle : NSObject
+ (NSFileHandle*)fileHandleWithNullDevice;
@property (readonly) int fileDescriptor;
@property (readonly, copy) NSData* availableData;
// Called on a background queue each time data can be read (empty data at end of file); set it to
// nil to stop.
@property (nullable, copy) void (^readabilityHandler)(NSFileHandle* handle);
// Raises an Objective-C exception when the read fails.
- (NSData*)readDataToEndOfFile;
// Nil, with the error, when the read fails.
- (nullable NSData*)readDataToEndOfFileAndReturnError:(NSError**)error MACOS_INTRODUCED(10.15);
- (void)closeFile;
@end

@interface NSPipe : NSObject
+ (NSPipe*)pipe;
@property (readonly, retain) NSFileHandle* fileHandleForReading;
@property (readonly, retain) NSFileHandle* fileHandleForWriting;
@end

typedef NS_ENUM(NSInteger, NSTaskTerminationReason) {
    NSTaskTerminationReasonExit = 1,
    NSTaskTerminationReasonUncaughtSignal = 2,
};

@interface NSTask : NSObject
@property (nullable, copy) NSURL* executableURL;
@property (nullable, copy) NSArray<NSString*>* arguments;
@property (nullable, copy) NSDictionary<NSString*, NSString*>* environment;
@property (nullable, copy) NSURL* currentDirectoryURL;
// Each an NSPipe or an NSFileHandle; nil inherits the parent's.
@property (nullable, retain) id standardInput;
@property (nullable, retain) id standardOutput;
@property (nullable, retain) id standardError;

// Starts the program; NO with the reason in `error` when it cannot be started.
- (BOOL)launchAndReturnError:(NSError**)error;
- (void)waitUntilExit;
- (void)terminate;
@property (readonly) int processIdentifier;
@property (readonly, getter=isRunning) BOOL running;
// The exit status, or the signal number when terminationReason says a signal ended it.
@property (readonly) int terminationStatus;
@property (readonly) NSTaskTerminationReason terminationReason;
@property (nullable, copy) void (^terminationHandler)(NSTask* task);

@property (nullable, copy) NSString* launchPath MACOS_DEPRECATED("10.13", "executableURL");
- (void)launch MACOS_DEPRECATED("10.13", "launchAndReturnError:, which reports a failed start as an error");
@end

NS_ASSUME_NONNULL_END
