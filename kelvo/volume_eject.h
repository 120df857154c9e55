// Ejecting the installer's volume once the installer has let go of it.
#pragma once

#include <string>

namespace kelvo {

// Unmounts the volume mounted at `mountPoint`. The installer still runs from it for a moment after
// it has started Kelvo, so while the volume is busy this tries again every 100 ms, for up to 15 s.
// Returns "ejected", or why the volume could not be ejected.
std::string ejectVolume(const std::string& mountPoint);

}  // namespace kelvo
