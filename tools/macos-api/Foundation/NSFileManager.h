// The file manager: existence tests, removal and copying of whole trees.
#pragma once

#include <Foundation/NSError.h>
#include <Foundation/NSURL.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFileManager : NSObject
@property (class, readonly, strong) NSFileManager* defaultManager;
@property (readonly, copy) NSString* currentDirectoryPath;
- (BOOL)fileExistsAtPath:(NSString*)path;
- (BOOL)fileExistsAtPath:(NSString*)path isDirectory:(nullable BOOL*)isDirectory;
// Each returns NO and sets `error` (when given) on failure.
- (BOOL)removeItemAtURL:(NSURL*)url error:(NSError**)error;
- (BOOL)copyItemAtURL:(NSURL*)sourceURL toURL:(NSURL*)destinationURL error:(NSError**)error;
- (BOOL)removeFileAtPath:(NSString*)path handler:(nullable id)handler
    MACOS_DEPRECATED("10.5", "removeItemAtURL:error:");
@end

NS_ASSUME_NONNULL_END
