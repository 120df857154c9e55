#include "engine/text_lines.h"

namespace engine::text {
namespace {

bool isLineBreak(char32_t c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool isSpaceSeparator(char32_t c) {
    return c == 0x20 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F ||
           c == 0x205F || c == 0x3000;
}

}  // namespace

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
