// The root class and the protocol every object answers.
#pragma once

#include <objc/objc.h>
#include <macos_availability.h>

@class NSString;

#pragma clang assume_nonnull begin

@protocol NSObject
- (BOOL)isEqual:(nullable id)object;
@property (readonly) unsigned long hash;
- (Class)class;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)conformsToProtocol:(Protocol*)aProtocol;
- (BOOL)respondsToSelector:(SEL)selector;
- (nullable id)performSelector:(SEL)selector withObject:(nullable id)object;
- (instancetype)retain MACOS_ARC_UNAVAILABLE;
- (oneway void)release MACOS_ARC_UNAVAILABLE;
- (instancetype)autorelease MACOS_ARC_UNAVAILABLE;
- (unsigned long)retainCount MACOS_ARC_UNAVAILABLE;
@property (readonly, copy) NSString* description;
@end

__attribute__((objc_root_class))
@interface NSObject <NSObject>
+ (instancetype)alloc;
+ (instancetype)new;
- (instancetype)init __attribute__((objc_designated_initializer));
- (void)dealloc;
- (id)copy;
+ (Class)class;
@end

#pragma clang assume_nonnull end
