# Refuses a Kelvo.app that the installer cannot carry. The installer finds running copies of Kelvo
# by their bundle identifier and by the executable name Kelvo, so the bundle must have both.
#   in a CMakeLists.txt:  kelvo_check_app_bundle(BUNDLE IDENTIFIER)
#   on its own:           cmake -DKELVO_APP=BUNDLE -DKELVO_BUNDLE_IDENTIFIER=ID -P cmake/check_app_bundle.cmake
include(${CMAKE_CURRENT_LIST_DIR}/property_list.cmake)

function(kelvo_check_app_bundle bundle identifier)
  set(plist "${bundle}/Contents/Info.plist")
  set(refused "KELVO_APP: ${bundle} cannot be the Kelvo.app the installer carries:")
  if(NOT EXISTS "${plist}")
    message(FATAL_ERROR "${refused} it has no Contents/Info.plist.")
  endif()
  kelvo_property_list_xml("${plist}" xml)
  if(NOT xml)
    message(FATAL_ERROR "${refused} its Contents/Info.plist is not a property list.")
  endif()
  kelvo_property_list_value("${xml}" CFBundleIdentifier found)
  if(NOT found STREQUAL identifier)
    message(FATAL_ERROR "${refused} its CFBundleIdentifier is \"${found}\", not the installer's "
                        "\"${identifier}\" (set KELVO_BUNDLE_IDENTIFIER to install another app).")
  endif()
  kelvo_property_list_value("${xml}" CFBundleExecutable executable)
  if(NOT executable STREQUAL "Kelvo")
    message(FATAL_ERROR "${refused} its CFBundleExecutable is \"${executable}\", not \"Kelvo\", the "
                        "name by which the installer finds running copies of Kelvo.")
  endif()
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  kelvo_check_app_bundle("${KELVO_APP}" "${KELVO_BUNDLE_IDENTIFIER}")
endif()
