#include "platform/macos/file_manager/attribute_removal.h"

#include <fts.h>

namespace platform::macos {

void removeAttributeFromTree(const std::string& root, const char* name, RemoveAttribute remove) {
    std::string start = root;
    char* roots[] = {start.data(), nullptr};
    // FTS_PHYSICAL: links are met as links, never followed.
    FTS* walk = fts_open(roots, FTS_PHYSICAL | FTS_NOCHDIR, nullptr);
    if (walk == nullptr) return;
    while (FTSENT* item = fts_read(walk)) {
        if (item->fts_info == FTS_DP) continue;  // a folder met again on the way back up
        remove(item->fts_path, name);
    }
    fts_close(walk);
}

}  // namespace platform::macos
