#include <gtest/gtest.h>

#include "engine/text_lines.h"

namespace {

using namespace engine::text;

// "\uFFFD" as UTF-8.
const std::string kReplacement = "\xEF\xBF\xBD";

std::string decodedAgain(const std::string& bytes) { return encodeUTF8(decodeUTF8(bytes)); }

TEST(TextLines, DecodingPutsOneReplacementInPlaceOfEachInvalidSequence) {
    const struct {
        const char* name;
        std::string bytes;
        std::string expected;
    } rows[] = {
        {"empty", "", ""},
        {"ascii", "pgrep: 42\n", "pgrep: 42\n"},
        {"two, three and four byte forms", "\xC3\xA9\xE2\x80\xA8\xF0\x9F\x98\x80", "\xC3\xA9\xE2\x80\xA8\xF0\x9F\x98\x80"},
        {"lone continuation byte", "1\x80" "2", "1" + kReplacement + "2"},
        {"byte never used in UTF-8", "\xFF", kReplacement},
        {"overlong two-byte form", "\xC0\xAF", kReplacement + kReplacement},
        {"overlong three-byte form", "\xE0\x80\xAF", kReplacement + kReplacement + kReplacement},
        {"surrogate", "\xED\xA0\x80", kReplacement + kReplacement + kReplacement},
        {"above U+10FFFF", "\xF4\x90\x80\x80", kReplacement + kReplacement + kReplacement + kReplacement},
        {"truncated three-byte form is one sequence", "\xE2\x80" "5", kReplacement + "5"},
        {"truncated at the end", "7\xF0\x9F\x98", "7" + kReplacement},
        {"NUL is kept", std::string("a\0b", 3), std::string("a\0b", 3)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(decodedAgain(row.bytes), row.expected) << row.name;
    }
}

TEST(TextLines, SplitsAtEveryLineBreakAndDropsEmptyPieces) {
    const struct {
        const char* name;
        std::string text;
        std::vector<std::string> lines;
    } rows[] = {
        {"empty", "", {}},
        {"only breaks", "\n\r\n\n", {}},
        {"no final break", "512\n498", {"512", "498"}},
        {"LF", "1\n2\n", {"1", "2"}},
        {"CR LF", "1\r\n2\r\n", {"1", "2"}},
        {"lone CR", "1\r2", {"1", "2"}},
        {"VT and FF", "1\v2\f3", {"1", "2", "3"}},
        {"U+0085", "1\xC2\x85" "2", {"1", "2"}},
        {"U+2028 and U+2029", "1\xE2\x80\xA8" "2\xE2\x80\xA9" "3", {"1", "2", "3"}},
        {"blanks stay in the line", " 1 \n\t2", {" 1 ", "\t2"}},
        {"empty lines between", "1\n\n\n2", {"1", "2"}},
        {"tab is no break", "1\t2", {"1\t2"}},
    };
    for (const auto& row : rows) {
        std::vector<std::string> lines;
        for (const std::u32string& line : nonEmptyLines(decodeUTF8(row.text))) lines.push_back(encodeUTF8(line));
        EXPECT_EQ(lines, row.lines) << row.name;
    }
}

TEST(TextLines, TrimsWhiteSpaceAndLineBreaksAtBothEndsOnly) {
    const struct {
        const char* name;
        std::string text;
        std::string trimmed;
    } rows[] = {
        {"empty", "", ""},
        {"only white space", " \t\r\n\v\f", ""},
        {"blanks before, line break after", "   pgrep: invalid user name\n", "pgrep: invalid user name"},
        {"inner line breaks stay", "\nfirst\nsecond\n", "first\nsecond"},
        {"no-break space and ideographic space", "\xC2\xA0x\xE3\x80\x80", "x"},
        {"en quad to hair space", "\xE2\x80\x80x\xE2\x80\x8A", "x"},
        {"U+0085, U+2028, U+2029", "\xC2\x85x\xE2\x80\xA8\xE2\x80\xA9", "x"},
        {"zero width space is not white space", "\xE2\x80\x8Bx", "\xE2\x80\x8Bx"},
        {"inner blanks stay", " a  b ", "a  b"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(encodeUTF8(trimmedOfWhitespaceAndNewlines(decodeUTF8(row.text))), row.trimmed) << row.name;
    }
}

TEST(TextLines, ParsesOnlyPlainDecimal32BitIntegers) {
    const struct {
        const char* text;
        std::optional<std::int32_t> value;
    } rows[] = {
        {"512", 512},
        {"+5", 5},
        {"-7", -7},
        {"0", 0},
        {"007", 7},
        {"2147483647", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"2147483648", std::nullopt},
        {"-2147483649", std::nullopt},
        {"99999999999999999999", std::nullopt},
        {"", std::nullopt},
        {"+", std::nullopt},
        {"-", std::nullopt},
        {"+-5", std::nullopt},
        {" 5", std::nullopt},
        {"5 ", std::nullopt},
        {"5\t", std::nullopt},
        {"5a", std::nullopt},
        {"abc", std::nullopt},
        {"1e3", std::nullopt},
        {"0x1F", std::nullopt},
        {"1,000", std::nullopt},
        {"\xD9\xA3", std::nullopt},          // ARABIC-INDIC DIGIT THREE
        {"\xEF\xBC\x95", std::nullopt},      // FULLWIDTH DIGIT FIVE
    };
    for (const auto& row : rows) {
        EXPECT_EQ(parseInt32(decodeUTF8(row.text)), row.value) << "\"" << row.text << "\"";
    }
}

}  // namespace
