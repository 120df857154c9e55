// Where an executable's application bundle is, by the bundle layout ".../Name.app/Contents/MacOS/exe".
#pragma once

#include <optional>
#include <string>

namespace platform::linux_backend {

// The path of the bundle "…/Name.app" when `executablePath` lies directly in its
// "Contents/MacOS/" folder; none for any other path. Only the path's text is looked at.
std::optional<std::string> bundlePathForExecutable(const std::string& executablePath);

// The folder that holds `path` ("/" for a top-level item, "." for a bare name).
std::string parentFolder(const std::string& path);

}  // namespace platform::linux_backend
