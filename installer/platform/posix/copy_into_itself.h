// Telling a copy that would write into its own source, before anything is written: both backends'
// file managers and the project's ditto ask it.
#pragma once

#include <string>

#include "platform/error.h"
#include "platform/expected.h"

namespace platform::posix {

// Fails, with the error a copy of `from` to `to` stops with before anything is written, when `to`
// is `from` itself or lies inside it, however links and ".." in either path hide it ("Could not
// copy “/a” to “/a/b/c”: a folder cannot be copied into itself."). A link at `from` is copied as a
// link, so only the folders above it count there. A caller that makes folders for `to` first asks
// it before.
Expected<void, Error> ensureNotIntoItself(const std::string& from, const std::string& to);

// "Could not copy “from” to “to”: reason." The sentence every failed copy is reported in.
Error copyError(const std::string& from, const std::string& to, const std::string& reason);

}  // namespace platform::posix
