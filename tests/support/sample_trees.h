// Trees for copy tests: a sample app bundle with everything a copy must keep, and an independent
// description of a tree to compare copies with.
#pragma once

#include <string>

namespace testing_support {

// Makes an app bundle at `path` (which must not exist): Contents/Info.plist, an executable, a
// framework with Versions/Current and its top-level links, a dangling and an absolute link, an
// empty folder, a read-only folder, extended attributes on files and folders, a setuid file of
// another owner with file capabilities (when root), a file of `largeFileSize` bytes, a sparse
// file, a file with two names (hard links), awkward names, and times to the nanosecond on every
// item.
void makeSampleBundle(const std::string& path, std::size_t largeFileSize = 1 << 20);

// Every item below `root` (the root itself as "."), one line each by relative path: its kind, link
// target, permission bits, owner, size, contents digest, number of names (hard links), whether it is
// sparse, extended attributes and modification time. Made with std::filesystem and l* system
// calls, never with the code under test.
std::string snapshotTree(const std::string& root);

}  // namespace testing_support
