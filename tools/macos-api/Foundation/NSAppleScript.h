// Running AppleScript source, and the descriptors a script returns.
#pragma once

#include <Foundation/NSDictionary.h>
#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

// Keys of a failed script's error information: the message text and the error number.
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorMessage;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorNumber;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorBriefMessage;

@interface NSAppleEventDescriptor : NSObject <NSCopying>
@property (nullable, readonly, copy) NSString* stringValue;
@property (readonly) int int32Value;
@end

@interface NSAppleScript : NSObject <NSCopying>
// None when the source cannot be taken.
- (nullable instancetype)initWithSource:(NSString*)source NS_DESIGNATED_INITIALIZER;
// Runs the script and blocks until it has finished (an administrator prompt included). On failure,
// fills `errorInfo` when given.
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo;
@end

NS_ASSUME_NONNULL_END
