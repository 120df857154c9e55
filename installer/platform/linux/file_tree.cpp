#include "platform/linux/file_tree.h"

// Placeholder until the tree copy lands: every operation reports that it is unavailable.
namespace platform::linux_backend {

std::optional<Error> removeTree(const std::string&) { return Error("Removing files is not available yet."); }
std::optional<Error> copyTree(const std::string&, const std::string&) { return Error("Copying files is not available yet."); }

}  // namespace platform::linux_backend
