// The application bundle the running executable belongs to.
//
// An executable at ".../Name.app/Contents/MacOS/exe" belongs to the bundle "Name.app", whose
// resources folder is "Name.app/Contents/Resources". A bare executable outside any bundle is its
// own bundle: its folder serves as both the bundle path and the resources folder.
#pragma once

#include <optional>
#include <string>

#include "platform/file_url.h"

namespace platform {

class MainBundle {
public:
    virtual ~MainBundle() = default;

    // The path of the bundle folder the user opened.
    virtual std::string bundlePath() = 0;

    // The bundle's resources folder; none when it does not exist.
    virtual std::optional<FileURL> resourceURL() = 0;
};

}  // namespace platform
