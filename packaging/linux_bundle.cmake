# On Linux: the bundle with its PNG icon, and a squashfs image of it.
set(KELVO_DISK_IMAGE "${CMAKE_CURRENT_BINARY_DIR}/Install Kelvo.squashfs" CACHE INTERNAL "The disk image")

# The icon, the master as it is. It lands beside the installer's executable too, where a bare run
# from the build folder (its own bundle and resources folder) looks for it.
set(KELVO_INSTALLER_ICON ${PROJECT_BINARY_DIR}/installer/app/AppIcon.png CACHE INTERNAL
    "The installer's icon image")
add_custom_command(
  OUTPUT ${KELVO_INSTALLER_ICON}
  COMMAND ${CMAKE_COMMAND} -E copy ${KELVO_ICON_MASTER} ${KELVO_INSTALLER_ICON}
  DEPENDS ${KELVO_ICON_MASTER}
  COMMENT "Copying the installer's icon")
add_custom_target(installer_app_icon DEPENDS ${KELVO_INSTALLER_ICON})

add_dependencies(installer_app installer_app_icon)

find_program(MKSQUASHFS mksquashfs PATHS /usr/sbin /sbin REQUIRED)

set(_bundle "${KELVO_INSTALLER_BUNDLE}")
set(_icon ${KELVO_INSTALLER_ICON})
set(_plist ${KELVO_INSTALLER_INFO_PLIST})
set(_stamp ${CMAKE_CURRENT_BINARY_DIR}/bundle.stamp)

# The bundle is rebuilt whole, so nothing stale survives in it.
add_custom_command(
  OUTPUT ${_stamp}
  COMMAND ${CMAKE_COMMAND} -E rm -rf "${_bundle}"
  COMMAND ${CMAKE_COMMAND} -E make_directory "${_bundle}/Contents/MacOS" "${_bundle}/Contents/Resources"
  COMMAND cp -p "$<TARGET_FILE:installer_app>" "${_bundle}/Contents/MacOS/Install Kelvo"
  COMMAND cp -p ${_plist} "${_bundle}/Contents/Info.plist"
  COMMAND cp -p ${_icon} "${_bundle}/Contents/Resources/AppIcon.png"
  COMMAND cp -a ${KELVO_EMBEDDED_APP} "${_bundle}/Contents/Resources/Kelvo.app"
  COMMAND ${CMAKE_COMMAND} -E touch ${_stamp}
  DEPENDS installer_app ${_embedded_target} ${_plist} ${_icon} ${KELVO_EMBEDDED_APP}/Contents/Info.plist
  COMMENT "Assembling Install Kelvo.app"
  VERBATIM)
add_custom_target(installer_bundle ALL DEPENDS ${_stamp})

# The image holds the bundle at its root, owned by root as on a shipped disk image.
add_custom_command(
  OUTPUT "${KELVO_DISK_IMAGE}"
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${KELVO_VOLUME_CONTENTS}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${KELVO_VOLUME_CONTENTS}
  COMMAND cp -a "${_bundle}" ${KELVO_VOLUME_CONTENTS}/
  COMMAND ${MKSQUASHFS} ${KELVO_VOLUME_CONTENTS} "${KELVO_DISK_IMAGE}" -noappend -quiet -all-root -no-progress
  DEPENDS ${_stamp}
  COMMENT "Making the disk image Install Kelvo.squashfs"
  VERBATIM)
add_custom_target(disk_image ALL DEPENDS "${KELVO_DISK_IMAGE}")
add_dependencies(disk_image installer_bundle)
