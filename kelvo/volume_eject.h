// Ejecting the installer's volume once the installer has let go of it.
#pragma once

#include <string>

namespace kelvo {

// Ejects the volume mounted at `mountPoint`: on Linux it unmounts it, on macOS it detaches its disk
// image with hdiutil. The installer still runs from it for a moment after it has started Kelvo, so
// while the volume is busy this tries again every 100 ms, for up to 60 s (on macOS, where hdiutil
// does not tell busy from other failures, after any failure). Returns "ejected", or why the volume
// could not be ejected.
std::string ejectVolume(const std::string& mountPoint);

}  // namespace kelvo
