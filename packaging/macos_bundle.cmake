# On macOS: the bundle with its .icns icon and PkgInfo, signed from the inside out, and a compressed
# HFS+ disk image, signed and notarized when a Developer ID identity and a notary profile are given.
# macos_package.sh makes every call to codesign, hdiutil, notarytool, stapler and spctl.
set(KELVO_DISK_IMAGE "${CMAKE_CURRENT_BINARY_DIR}/Install Kelvo.dmg" CACHE INTERNAL "The disk image")
set(KELVO_SIGNING_IDENTITY "-" CACHE STRING
    "What signs the installer and the stand-in Kelvo: - (ad hoc), or a Developer ID Application identity")
set(KELVO_NOTARY_PROFILE "" CACHE STRING
    "The notarytool keychain profile with which the disk image is notarized (empty: not notarized)")
set(_package bash ${CMAKE_CURRENT_SOURCE_DIR}/macos_package.sh)

if(NOT KELVO_NOTARY_PROFILE STREQUAL "" AND KELVO_SIGNING_IDENTITY STREQUAL "-")
  message(FATAL_ERROR "KELVO_NOTARY_PROFILE is \"${KELVO_NOTARY_PROFILE}\" but KELVO_SIGNING_IDENTITY "
                      "is - (ad hoc): the notary service accepts only code signed with a Developer ID "
                      "Application identity. Set KELVO_SIGNING_IDENTITY to \"Developer ID Application: "
                      "Your Company (TEAMID)\", or leave KELVO_NOTARY_PROFILE empty.")
endif()

# A Kelvo.app brought by its team keeps its own signature, so the installer has to carry the same
# Team ID for macOS 13 and later to let it replace an installed Kelvo.
if(KELVO_APP)
  execute_process(
    COMMAND ${_package} check-team --identity "${KELVO_SIGNING_IDENTITY}" "${KELVO_EMBEDDED_APP}"
    OUTPUT_VARIABLE _team_warning
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
  if(NOT _team_warning STREQUAL "")
    message(WARNING "${_team_warning}")
  endif()
endif()


set(_bundle "${KELVO_INSTALLER_BUNDLE}")
set(_icon ${CMAKE_CURRENT_BINARY_DIR}/AppIcon.icns)
set(_pkginfo ${CMAKE_CURRENT_BINARY_DIR}/PkgInfo)
set(_stamp ${CMAKE_CURRENT_BINARY_DIR}/bundle.stamp)
file(WRITE ${_pkginfo} "APPL????")

add_custom_command(
  OUTPUT ${_icon}
  COMMAND bash ${CMAKE_CURRENT_SOURCE_DIR}/make_icns.sh ${KELVO_ICON_MASTER} ${_icon}
  DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/make_icns.sh ${KELVO_ICON_MASTER}
  COMMENT "Making the installer's icon AppIcon.icns"
  VERBATIM)

# A brought Kelvo.app is embedded again whenever it is signed again.
set(_kelvo_files ${KELVO_EMBEDDED_APP}/Contents/Info.plist)
if(KELVO_APP)
  set(_kelvo --kelvo-app ${KELVO_EMBEDDED_APP})
  if(EXISTS ${KELVO_EMBEDDED_APP}/Contents/_CodeSignature/CodeResources)
    list(APPEND _kelvo_files ${KELVO_EMBEDDED_APP}/Contents/_CodeSignature/CodeResources)
  endif()
else()
  set(_kelvo --stand-in ${KELVO_EMBEDDED_APP})
endif()

# The bundle is rebuilt whole, so nothing stale survives in it.
add_custom_command(
  OUTPUT ${_stamp}
  COMMAND ${_package} bundle --identity "${KELVO_SIGNING_IDENTITY}" ${_kelvo}
          --executable $<TARGET_FILE:installer_app> --info-plist ${KELVO_INSTALLER_INFO_PLIST}
          --pkginfo ${_pkginfo} --icon ${_icon} "${_bundle}"
  COMMAND ${CMAKE_COMMAND} -E touch ${_stamp}
  DEPENDS installer_app ${_embedded_target} ${KELVO_INSTALLER_INFO_PLIST} ${_icon} ${_kelvo_files}
          ${CMAKE_CURRENT_SOURCE_DIR}/macos_package.sh
  COMMENT "Assembling and signing Install Kelvo.app"
  VERBATIM)
add_custom_target(installer_bundle ALL DEPENDS ${_stamp})

set(_notarize "")
if(NOT KELVO_NOTARY_PROFILE STREQUAL "")
  set(_notarize --notary-profile ${KELVO_NOTARY_PROFILE})
endif()
add_custom_command(
  OUTPUT "${KELVO_DISK_IMAGE}"
  COMMAND ${_package} image --identity "${KELVO_SIGNING_IDENTITY}" --volume-name "${KELVO_VOLUME_NAME}"
          --staging ${KELVO_VOLUME_CONTENTS} ${_notarize} "${_bundle}" "${KELVO_DISK_IMAGE}"
  DEPENDS ${_stamp} ${CMAKE_CURRENT_SOURCE_DIR}/macos_package.sh
  COMMENT "Making the disk image Install Kelvo.dmg"
  VERBATIM)
add_custom_target(disk_image ALL DEPENDS "${KELVO_DISK_IMAGE}")
add_dependencies(disk_image installer_bundle)
