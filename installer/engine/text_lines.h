// Reading a tool's text output the way the platform's string functions do, once it is decoded
// (platform/utf8.h): splitting at every kind of line break, trimming white space and strict integer
// parsing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace engine::text {

// The non-empty pieces of `text` between line breaks: LF, VT, FF, CR, CR LF (one break), U+0085,
// U+2028, U+2029.
std::vector<std::u32string> nonEmptyLines(std::u32string_view text);

// `text` without white space and line breaks at either end: the Unicode space separators, tab,
// LF, VT, FF, CR, U+0085, U+2028 and U+2029. Inner ones stay.
std::u32string trimmedOfWhitespaceAndNewlines(std::u32string_view text);

// The value of `text` when it is exactly an optional "+" or "-" followed by one or more ASCII
// digits and lies within the 32-bit signed range; none otherwise (blanks included).
std::optional<std::int32_t> parseInt32(std::u32string_view text);

}  // namespace engine::text
