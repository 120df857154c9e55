// When the installer's bundle path is mapped back to where the user opened it, and when it stays.
#include "platform/macos/main_bundle/translocation.h"

#include <gtest/gtest.h>

namespace {

using platform::macos::pathAsOpened;
using platform::macos::TranslocationLookup;

const std::string kTranslocated = "/private/var/folders/x/T/AppTranslocation/1234/d/Install Kelvo.app";
const std::string kOriginal = "/Volumes/Install Kelvo/Install Kelvo.app";

TEST(Translocation, OnlyATranslocatedPathWithAKnownOriginalIsMappedBack) {
    const struct {
        const char* name;
        std::optional<bool> translocated;
        std::optional<std::string> original;
        bool lookedUp;  // false: the Security framework lacks the functions
        std::string result;
    } rows[] = {
        {"translocated", true, kOriginal, true, kOriginal},
        {"not translocated", false, kOriginal, true, kTranslocated},
        {"cannot tell whether translocated", std::nullopt, kOriginal, true, kTranslocated},
        {"original unknown", true, std::nullopt, true, kTranslocated},
        {"functions missing", true, kOriginal, false, kTranslocated},
    };
    for (const auto& row : rows) {
        TranslocationLookup lookup;
        if (row.lookedUp) {
            lookup.isTranslocated = [&](const std::string& path) { return path == kTranslocated ? row.translocated : false; };
            lookup.originalPath = [&](const std::string&) { return row.original; };
        }
        EXPECT_EQ(pathAsOpened(kTranslocated, lookup), row.result) << row.name;
    }
}

}  // namespace
