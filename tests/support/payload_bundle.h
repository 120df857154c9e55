// The real platform services, except that the installer's own bundle is a folder of the test's
// whose resources hold the Kelvo.app to install: a whole install() on the real machine, from a
// payload the test made. In force for the object's life.
#pragma once

#include <string>

#include "platform/services.h"
#include "support/temp_folder.h"

namespace testing_support {

class PayloadBundle final : public platform::MainBundle {
public:
    PayloadBundle() : scope_({.mainBundle = this}) {}

    // Where the test puts the Kelvo.app to install.
    std::string payload() const { return resources_ / "Kelvo.app"; }

    std::string bundlePath() override { return resources_.path(); }
    std::optional<platform::FileURL> resourceURL() override {
        return platform::FileURL::fileURLWithPath(resources_.path());
    }

private:
    TempFolder resources_;
    platform::ScopedServices scope_;
};

}  // namespace testing_support
