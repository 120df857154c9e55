// A main bundle whose location a test sets.
#pragma once

#include "platform/main_bundle.h"

namespace testing_support {

class ScriptedMainBundle final : public platform::MainBundle {
public:
    std::string bundle = "/Volumes/Kelvo/Install Kelvo.app";
    std::optional<std::string> resources;  // none: the bundle has no resources folder

    std::string bundlePath() override { return bundle; }
    std::optional<platform::FileURL> resourceURL() override {
        if (!resources) return std::nullopt;
        return platform::FileURL::fileURLWithPath(*resources);
    }
};

}  // namespace testing_support
