// Keyed collections, such as a bundle's information and a script's error information.
#pragma once

#include <Foundation/NSArray.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
@property (readonly) NSUInteger count;
- (nullable ObjectType)objectForKey:(KeyType)key;
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)key;
@property (readonly, copy) NSArray<KeyType>* allKeys;
+ (instancetype)dictionary;
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType <NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary<KeyType, ObjectType>
- (void)setObject:(ObjectType)object forKey:(KeyType <NSCopying>)key;
- (void)setObject:(nullable ObjectType)object forKeyedSubscript:(KeyType <NSCopying>)key;
- (void)removeObjectForKey:(KeyType)key;
@end

NS_ASSUME_NONNULL_END
