#include "platform/utf8.h"

#include <optional>
#include <utility>

namespace platform::utf8 {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// The allowed range of the second byte of a sequence led by `lead` (Unicode table 3-7), which
// excludes overlong forms, surrogates and values above U+10FFFF.
std::pair<unsigned char, unsigned char> secondByteRange(unsigned char lead) {
    if (lead == 0xE0) return {0xA0, 0xBF};
    if (lead == 0xED) return {0x80, 0x9F};
    if (lead == 0xF0) return {0x90, 0xBF};
    if (lead == 0xF4) return {0x80, 0x8F};
    return {0x80, 0xBF};
}

std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

// What starts at `at`: a well-formed sequence, with its code point; or an invalid one, without,
// as long as the maximal part of a sequence it begins (at least one byte).
struct Sequence {
    std::optional<char32_t> codePoint;
    std::size_t length;
};

Sequence sequenceAt(std::string_view bytes, std::size_t at) {
    unsigned char lead = static_cast<unsigned char>(bytes[at]);
    std::size_t length = sequenceLength(lead);
    if (length == 0) return {std::nullopt, 1};
    if (length == 1) return {lead, 1};
    char32_t value = lead & (0xFF >> (length + 1));
    std::size_t taken = 1;
    for (; taken < length && at + taken < bytes.size(); ++taken) {
        unsigned char byte = static_cast<unsigned char>(bytes[at + taken]);
        auto [low, high] = taken == 1 ? secondByteRange(lead) : std::pair<unsigned char, unsigned char>{0x80, 0xBF};
        if (byte < low || byte > high) break;
        value = (value << 6) | (byte & 0x3F);
    }
    if (taken < length) return {std::nullopt, taken};
    return {value, length};
}

}  // namespace

bool isValid(std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        Sequence sequence = sequenceAt(bytes, at);
        if (!sequence.codePoint) return false;
        at += sequence.length;
    }
    return true;
}

std::u32string decode(std::string_view bytes) {
    std::u32string result;
    result.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        Sequence sequence = sequenceAt(bytes, at);
        result.push_back(sequence.codePoint.value_or(kReplacement));
        at += sequence.length;
    }
    return result;
}

std::string encode(std::u32string_view codePoints) {
    std::string out;
    out.reserve(codePoints.size());
    for (char32_t c : codePoints) {
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else if (c < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else if (c < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (c >> 12)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (c >> 18)));
            out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

}  // namespace platform::utf8
