// What the running process knows about itself.
#pragma once

#include <Foundation/NSDictionary.h>
#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSProcessInfo : NSObject
@property (class, readonly, strong) NSProcessInfo* processInfo;
// Every argument, the program's path first.
@property (readonly, copy) NSArray<NSString*>* arguments;
@property (readonly, copy) NSDictionary<NSString*, NSString*>* environment;
@property (readonly) int processIdentifier;
@end

NS_ASSUME_NONNULL_END
