// The names that tie the installer to the one app it installs. Each is held here and nowhere else.
#pragma once

namespace engine {

// The bundle identifier of the Kelvo.app this installer carries (its Info.plist says the same).
inline constexpr const char* kTargetBundleIdentifier = "com.getkelvo.Kelvo";

// The executable and process name of Kelvo.
inline constexpr const char* kTargetExecutableName = "Kelvo";

// The file name of the app bundle, in the installer's resources and once installed.
inline constexpr const char* kAppBundleName = "Kelvo.app";

// Where the disk image can be downloaded again, named when the installer finds itself damaged.
inline constexpr const char* kProductWebAddress = "getkelvo.com";

}  // namespace engine
