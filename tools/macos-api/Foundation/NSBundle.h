// Application bundles: the running program's own, or one at a given location.
#pragma once

#include <Foundation/NSDictionary.h>
#include <Foundation/NSURL.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSBundle : NSObject
@property (class, readonly, strong) NSBundle* mainBundle;
+ (nullable instancetype)bundleWithURL:(NSURL*)url;
@property (readonly, copy) NSURL* bundleURL;
@property (readonly, copy) NSString* bundlePath;
@property (nullable, readonly, copy) NSURL* resourceURL;
@property (nullable, readonly, copy) NSURL* executableURL;
@property (nullable, readonly, copy) NSString* bundleIdentifier;
@property (nullable, readonly, copy) NSDictionary<NSString*, id>* infoDictionary;
- (nullable id)objectForInfoDictionaryKey:(NSString*)key;
@end

NS_ASSUME_NONNULL_END
