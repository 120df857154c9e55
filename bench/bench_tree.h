// The benchmark's bundle: about 400 MB in about 12,000 files, made the same way on every run.
#pragma once

#include <cstdint>
#include <string>

namespace bench {

struct TreeTotals {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
};

// Makes "Kelvo.app" in `folder`: a large main executable, frameworks with Versions/Current and
// their top-level links, thousands of small resources in nested folders, medium and large files,
// and extended attributes on every tenth file. Contents are half random, half repeated, so that
// the image compresses about as an app does. Deterministic: the same tree every time.
TreeTotals makeBenchmarkBundle(const std::string& folder);

}  // namespace bench
