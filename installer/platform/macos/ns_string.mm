#include "platform/macos/ns_string.h"

#import <Foundation/Foundation.h>

#include <cstddef>
#include <cstdint>

namespace platform::macos {
namespace {

constexpr char kReplacementCharacter[] = "\xEF\xBF\xBD";  // U+FFFD in UTF-8

// The length of the well-formed UTF-8 sequence at `at` (Unicode's table of well-formed byte
// sequences: no overlong forms, no surrogates, nothing past U+10FFFF); 0 when it is not one.
std::size_t wellFormedSequenceLength(const std::string& bytes, std::size_t at) {
    const auto byte = [&](std::size_t i) -> unsigned {
        return at + i < bytes.size() ? static_cast<std::uint8_t>(bytes[at + i]) : 0x100;
    };
    const auto continuation = [&](std::size_t i, unsigned low, unsigned high) {
        return byte(i) >= low && byte(i) <= high;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return continuation(1, 0x80, 0xBF) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
        const unsigned high = lead == 0xED ? 0x9F : 0xBF;
        return continuation(1, low, high) && continuation(2, 0x80, 0xBF) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
        const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
        return continuation(1, low, high) && continuation(2, 0x80, 0xBF) &&
                       continuation(3, 0x80, 0xBF)
                   ? 4
                   : 0;
    }
    return 0;
}

// `bytes` with every byte that starts no well-formed sequence replaced by U+FFFD.
std::string repairedUTF8(const std::string& bytes) {
    std::string repaired;
    repaired.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = wellFormedSequenceLength(bytes, at);
        if (length == 0) {
            repaired += kReplacementCharacter;
            at += 1;
        } else {
            repaired.append(bytes, at, length);
            at += length;
        }
    }
    return repaired;
}

}  // namespace

NSString* toNSStringIfUTF8(const std::string& utf8) {
    return [[NSString alloc] initWithBytes:utf8.data() length:utf8.size() encoding:NSUTF8StringEncoding];
}

NSString* toNSString(const std::string& utf8) {
    if (NSString* string = toNSStringIfUTF8(utf8)) return string;
    NSString* repaired = toNSStringIfUTF8(repairedUTF8(utf8));
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
