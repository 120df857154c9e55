#include "engine/text_lines.h"

namespace engine::text {
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

int sequenceLength(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

bool isLineBreak(char32_t c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool isSpaceSeparator(char32_t c) {
    return c == 0x20 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F ||
           c == 0x205F || c == 0x3000;
}

}  // namespace

std::u32string decodeUTF8(std::string_view bytes) {
    std::u32string result;
    result.reserve(bytes.size());
    std::size_t i = 0;
    while (i < bytes.size()) {
        unsigned char lead = static_cast<unsigned char>(bytes[i]);
        if (lead < 0x80) {
            result.push_back(lead);
            ++i;
            continue;
        }
        int length = sequenceLength(lead);
        if (length == 0) {
            result.push_back(kReplacement);
            ++i;
            continue;
        }
        char32_t value = lead & (0xFF >> (length + 1));
        std::size_t taken = 1;
        for (; taken < static_cast<std::size_t>(length) && i + taken < bytes.size(); ++taken) {
            unsigned char byte = static_cast<unsigned char>(bytes[i + taken]);
            auto [low, high] = taken == 1 ? secondByteRange(lead) : std::pair<unsigned char, unsigned char>{0x80, 0xBF};
            if (byte < low || byte > high) break;
            value = (value << 6) | (byte & 0x3F);
        }
        result.push_back(taken == static_cast<std::size_t>(length) ? value : kReplacement);
        i += taken;
    }
    return result;
}

std::string encodeUTF8(std::u32string_view codePoints) {
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

std::vector<std::u32string> nonEmptyLines(std::u32string_view text) {
    // CR LF is one break; since empty pieces are dropped, treating it as two gives the same lines.
    std::vector<std::u32string> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !isLineBreak(text[i])) continue;
        if (i > start) lines.emplace_back(text.substr(start, i - start));
        start = i + 1;
    }
    return lines;
}

std::u32string trimmedOfWhitespaceAndNewlines(std::u32string_view text) {
    auto blank = [](char32_t c) { return c == U'\t' || isLineBreak(c) || isSpaceSeparator(c); };
    std::size_t first = 0;
    std::size_t last = text.size();
    while (first < last && blank(text[first])) ++first;
    while (last > first && blank(text[last - 1])) --last;
    return std::u32string(text.substr(first, last - first));
}

std::optional<std::int32_t> parseInt32(std::u32string_view text) {
    bool negative = false;
    if (!text.empty() && (text.front() == U'+' || text.front() == U'-')) {
        negative = text.front() == U'-';
        text.remove_prefix(1);
    }
    if (text.empty()) return std::nullopt;
    constexpr std::int64_t kLimit = std::int64_t{1} << 31;  // |INT32_MIN|
    std::int64_t magnitude = 0;
    for (char32_t c : text) {
        if (c < U'0' || c > U'9') return std::nullopt;
        magnitude = magnitude * 10 + (c - U'0');
        if (magnitude > kLimit) return std::nullopt;
    }
    if (!negative && magnitude == kLimit) return std::nullopt;
    return static_cast<std::int32_t>(negative ? -magnitude : magnitude);
}

}  // namespace engine::text
