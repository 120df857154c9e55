// Conversions between the C++ strings of the portable code and Foundation's strings.
//
// A std::string holds UTF-8 bytes. Every text an NSString can hold survives a round trip unchanged,
// embedded NUL characters included. Callable from any thread.
#pragma once

#include <string>
#include <vector>

#ifdef __OBJC__
@class NSArray<ObjectType>;
@class NSString;
@class NSURL;
#else
class NSArray;
class NSString;
class NSURL;
#endif

namespace platform::macos {

#ifdef __OBJC__
using NSStringArray = NSArray<NSString*>;
#else
using NSStringArray = NSArray;
#endif

// `bytes` as an NSString, for text to be shown; never nil. Each maximal invalid sequence becomes
// U+FFFD (platform/utf8.h).
NSString* toNSString(const std::string& bytes);

// `bytes` as an NSString, or nil when the bytes are not UTF-8: for paths and commands, where a
// repaired text would name something other than what was asked for.
NSString* toNSStringIfUTF8(const std::string& bytes);

// The file URL of the path `bytes`; nil when the path is not UTF-8, as no macOS file name is.
NSURL* fileURLIfUTF8(const std::string& bytes);

// `string` as UTF-8 bytes; nil gives the empty string. An unpaired surrogate, which UTF-8 cannot
// carry, is replaced as Foundation's lossy conversion does.
std::string toStdString(NSString* string);

// Each element converted as by toNSString, in order.
NSStringArray* toNSStringArray(const std::vector<std::string>& strings);

// Each element of an array of NSString converted as by toStdString, in order; nil gives none.
std::vector<std::string> toStringVector(NSStringArray* strings);

}  // namespace platform::macos
