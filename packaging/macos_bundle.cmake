# On macOS: the bundle with its .icns icon and PkgInfo, signed, and a compressed HFS+ disk image.
set(KELVO_DISK_IMAGE "${CMAKE_CURRENT_BINARY_DIR}/Install Kelvo.dmg" CACHE INTERNAL "The disk image")
set(KELVO_SIGNING_IDENTITY "-" CACHE STRING
    "What signs the bundle and its Kelvo.app: - (ad hoc), or a Developer ID Application identity")

if(NOT TARGET installer_app)
  message(STATUS "No installer application target yet: the disk image is not built")
  return()
endif()

find_program(CODESIGN codesign REQUIRED)
find_program(DITTO ditto REQUIRED)

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

# Ad hoc, or with a real identity under the hardened runtime and with a secure timestamp, as
# notarization asks. Kelvo.app is signed first, then the bundle around it; a Kelvo.app brought
# signed keeps its own entitlements.
if(KELVO_SIGNING_IDENTITY STREQUAL "-")
  set(_sign ${CODESIGN} --force --deep --sign -)
else()
  set(_sign ${CODESIGN} --force --deep --options runtime --timestamp --sign ${KELVO_SIGNING_IDENTITY})
endif()
list(APPEND _sign --preserve-metadata=entitlements)

# The bundle is rebuilt whole, so nothing stale survives in it.
add_custom_command(
  OUTPUT ${_stamp}
  COMMAND ${CMAKE_COMMAND} -E rm -rf "${_bundle}"
  COMMAND ${CMAKE_COMMAND} -E make_directory "${_bundle}/Contents/MacOS" "${_bundle}/Contents/Resources"
  COMMAND ${DITTO} "$<TARGET_FILE:installer_app>" "${_bundle}/Contents/MacOS/Install Kelvo"
  COMMAND ${DITTO} ${KELVO_INSTALLER_INFO_PLIST} "${_bundle}/Contents/Info.plist"
  COMMAND ${DITTO} ${_pkginfo} "${_bundle}/Contents/PkgInfo"
  COMMAND ${DITTO} ${_icon} "${_bundle}/Contents/Resources/AppIcon.icns"
  COMMAND ${DITTO} ${KELVO_EMBEDDED_APP} "${_bundle}/Contents/Resources/Kelvo.app"
  COMMAND ${_sign} "${_bundle}/Contents/Resources/Kelvo.app"
  COMMAND ${_sign} "${_bundle}"
  COMMAND ${CMAKE_COMMAND} -E touch ${_stamp}
  DEPENDS installer_app ${_embedded_target} ${KELVO_INSTALLER_INFO_PLIST} ${_icon}
          ${KELVO_EMBEDDED_APP}/Contents/Info.plist
  COMMENT "Assembling and signing Install Kelvo.app"
  VERBATIM)
add_custom_target(installer_bundle ALL DEPENDS ${_stamp})

# The image holds the bundle at its root. A real identity signs the image too.
set(_sign_image "")
if(NOT KELVO_SIGNING_IDENTITY STREQUAL "-")
  set(_sign_image COMMAND ${CODESIGN} --force --timestamp --sign ${KELVO_SIGNING_IDENTITY} "${KELVO_DISK_IMAGE}")
endif()
add_custom_command(
  OUTPUT "${KELVO_DISK_IMAGE}"
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${KELVO_VOLUME_CONTENTS}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${KELVO_VOLUME_CONTENTS}
  COMMAND ${DITTO} "${_bundle}" "${KELVO_VOLUME_CONTENTS}/Install Kelvo.app"
  COMMAND bash ${CMAKE_CURRENT_SOURCE_DIR}/make_dmg.sh ${KELVO_VOLUME_CONTENTS} ${KELVO_VOLUME_NAME} "${KELVO_DISK_IMAGE}"
  ${_sign_image}
  DEPENDS ${_stamp} ${CMAKE_CURRENT_SOURCE_DIR}/make_dmg.sh
  COMMENT "Making the disk image Install Kelvo.dmg"
  VERBATIM)
add_custom_target(disk_image ALL DEPENDS "${KELVO_DISK_IMAGE}")
add_dependencies(disk_image installer_bundle)
