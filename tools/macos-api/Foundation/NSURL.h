// File URLs: locations in the file system.
#pragma once

#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSURL : NSObject <NSCopying>
+ (NSURL*)fileURLWithPath:(NSString*)path;
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDirectory;
@property (nullable, readonly, copy) NSString* path;
@property (nullable, readonly, copy) NSString* lastPathComponent;
@property (readonly, getter=isFileURL) BOOL fileURL;
@property (readonly) const char* fileSystemRepresentation NS_RETURNS_INNER_POINTER;
- (nullable NSURL*)URLByAppendingPathComponent:(NSString*)component;
- (nullable NSURL*)URLByAppendingPathComponent:(NSString*)component isDirectory:(BOOL)isDirectory;
@property (nullable, readonly, copy) NSURL* URLByDeletingLastPathComponent;
@end

NS_ASSUME_NONNULL_END
