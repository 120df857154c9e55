#include "platform/macos/ns_string.h"

#import <Foundation/Foundation.h>

#include "platform/utf8.h"

namespace platform::macos {

NSString* toNSStringIfUTF8(const std::string& bytes) {
    return [[NSString alloc] initWithBytes:bytes.data() length:bytes.size() encoding:NSUTF8StringEncoding];
}

NSURL* fileURLIfUTF8(const std::string& bytes) {
    NSString* path = toNSStringIfUTF8(bytes);
    return path != nil ? [NSURL fileURLWithPath:path] : nil;
}

NSString* toNSString(const std::string& bytes) {
    if (NSString* string = toNSStringIfUTF8(bytes)) return string;
    NSString* repaired = toNSStringIfUTF8(utf8::encode(utf8::decode(bytes)));
    return repaired != nil ? repaired : @"";
}

std::string toStdString(NSString* string) {
    NSData* bytes = [string dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
    if (bytes == nil) return {};
    return std::string(static_cast<const char*>(bytes.bytes), bytes.length);
}

NSStringArray* toNSStringArray(const std::vector<std::string>& strings) {
    NSMutableArray<NSString*>* array = [NSMutableArray arrayWithCapacity:strings.size()];
    for (const std::string& string : strings) [array addObject:toNSString(string)];
    return array;
}

std::vector<std::string> toStringVector(NSStringArray* strings) {
    std::vector<std::string> converted;
    converted.reserve(strings.count);
    for (NSString* string in strings) converted.push_back(toStdString(string));
    return converted;
}

}  // namespace platform::macos
