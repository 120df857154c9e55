// Removing one extended attribute from every item of a tree: how a copy made from a downloaded disk
// image loses the quarantine mark that every item read from that image carries.
#pragma once

#include <string>

namespace platform::macos {

// Removes the attribute `name` from the item at `path` itself, a link included, never its target.
// Its result is not used.
using RemoveAttribute = int (*)(const char* path, const char* name);

// Removes `name` from `root` and from every item below it with `remove`, never following a link. An
// item that keeps the attribute (it had none, or may not lose it) does not stop the walk, and
// nothing is reported: an item left marked is no failure of the copy.
void removeAttributeFromTree(const std::string& root, const char* name, RemoveAttribute remove);

}  // namespace platform::macos
