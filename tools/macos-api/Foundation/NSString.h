// Text: NSString, with the path and encoding operations the installer uses, and character sets
// for trimming.
#pragma once

#include <Foundation/NSObject.h>

@class NSArray<ObjectType>;
@class NSData;

NS_ASSUME_NONNULL_BEGIN

typedef NSUInteger NSStringEncoding;
static const NSStringEncoding NSUTF8StringEncoding = 4;

@interface NSCharacterSet : NSObject <NSCopying>
@property (class, readonly, copy) NSCharacterSet* whitespaceAndNewlineCharacterSet;
@property (class, readonly, copy) NSCharacterSet* newlineCharacterSet;
@end

@interface NSString : NSObject <NSCopying>
@property (readonly) NSUInteger length;
+ (instancetype)string;
+ (nullable instancetype)stringWithUTF8String:(const char*)nullTerminatedCString;
+ (instancetype)stringWithFormat:(NSString*)format, ... NS_FORMAT_FUNCTION(1, 2);
- (nullable instancetype)initWithBytes:(const void*)bytes
                                length:(NSUInteger)length
                              encoding:(NSStringEncoding)encoding;
+ (nullable instancetype)stringWithCString:(const char*)bytes
    MACOS_DEPRECATED("10.4", "stringWithUTF8String:");

@property (nullable, readonly) const char* UTF8String NS_RETURNS_INNER_POINTER;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;

- (BOOL)isEqualToString:(NSString*)string;
- (BOOL)hasPrefix:(NSString*)prefix;
- (NSString*)stringByAppendingString:(NSString*)string;
- (NSString*)stringByTrimmingCharactersInSet:(NSCharacterSet*)set;
- (NSArray<NSString*>*)componentsSeparatedByString:(NSString*)separator;

@property (readonly, copy) NSArray<NSString*>* pathComponents;
@property (readonly, copy) NSString* lastPathComponent;
@property (readonly, copy) NSString* stringByDeletingLastPathComponent;
- (NSString*)stringByAppendingPathComponent:(NSString*)component;
@property (readonly) const char* fileSystemRepresentation NS_RETURNS_INNER_POINTER;
@end

NS_ASSUME_NONNULL_END
