# Checks the Info.plist of the built "Install Kelvo.app": it reads as a property list and holds every
# key a Mac needs to open the bundle as an application, each with its expected value, and the
# executable and icon it names are in the bundle. The same check runs on the Linux and macOS bundles.
#   cmake -DBUNDLE="build/packaging/Install Kelvo.app" -DVERSION=1.0 -P tests/macos_api/installer_info_plist.cmake
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/property_list.cmake)

set(plist "${BUNDLE}/Contents/Info.plist")
kelvo_property_list_xml("${plist}" xml)
if(NOT xml)
  message(FATAL_ERROR "${plist} is not a property list.")
endif()

set(expected
  "CFBundleExecutable=Install Kelvo"
  "CFBundleIdentifier=com.getkelvo.installer"
  "CFBundleName=Install Kelvo"
  "CFBundlePackageType=APPL"
  "CFBundleShortVersionString=${VERSION}"
  "CFBundleVersion=${VERSION}"
  "LSMinimumSystemVersion=12.0"
  "CFBundleIconFile=AppIcon"
  "NSHighResolutionCapable=true")
set(problems "")
foreach(entry IN LISTS expected)
  string(REGEX MATCH "^([^=]+)=(.*)$" unused "${entry}")
  set(key "${CMAKE_MATCH_1}")
  set(value "${CMAKE_MATCH_2}")
  kelvo_property_list_value("${xml}" ${key} found)
  if(NOT found STREQUAL value)
    string(APPEND problems "\n  ${key} is \"${found}\", not \"${value}\"")
  endif()
endforeach()

kelvo_property_list_value("${xml}" CFBundleExecutable executable)
if(NOT EXISTS "${BUNDLE}/Contents/MacOS/${executable}")
  string(APPEND problems "\n  there is no Contents/MacOS/${executable}")
endif()
if(NOT EXISTS "${BUNDLE}/Contents/Resources/AppIcon.png" AND NOT EXISTS "${BUNDLE}/Contents/Resources/AppIcon.icns")
  string(APPEND problems "\n  there is no Contents/Resources/AppIcon.png or AppIcon.icns")
endif()
if(problems)
  message(FATAL_ERROR "${plist}:${problems}")
endif()
message("${plist}: every key is as a Mac expects it.")
