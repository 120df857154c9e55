// UTF-8, read the way the platform's strings read it. Every text the installer handles is UTF-8;
// what comes from outside (a tool's output, a path) may not be.
#pragma once

#include <string>
#include <string_view>

namespace platform::utf8 {

// True when `bytes` is well-formed UTF-8: no overlong form, no surrogate, nothing past U+10FFFF.
bool isValid(std::string_view bytes);

// The code points of `bytes`, with U+FFFD in place of each maximal invalid sequence, as Foundation's
// lossy decoding puts it.
std::u32string decode(std::string_view bytes);

// `codePoints` as UTF-8.
std::string encode(std::u32string_view codePoints);

}  // namespace platform::utf8
