# Reading an Info.plist, XML or binary alike: plutil converts it on macOS, plistutil (Debian's
# libplist-utils) elsewhere.

# kelvo_property_list_xml(FILE OUT_VAR)
# Sets OUT_VAR to FILE as an XML property list, or to nothing when FILE is not a property list.
function(kelvo_property_list_xml file out)
  find_program(KELVO_PLUTIL plutil)
  find_program(KELVO_PLISTUTIL plistutil)
  if(KELVO_PLUTIL)
    set(command ${KELVO_PLUTIL} -convert xml1 -o - "${file}")
  elseif(KELVO_PLISTUTIL)
    set(command ${KELVO_PLISTUTIL} -i "${file}" -f xml)
  else()
    message(FATAL_ERROR "Reading ${file} needs plutil (macOS) or plistutil (Debian: libplist-utils).")
  endif()
  execute_process(COMMAND ${command} OUTPUT_VARIABLE xml ERROR_QUIET RESULT_VARIABLE status)
  if(NOT status EQUAL 0 OR NOT xml MATCHES "<plist")
    set(xml "")
  endif()
  set(${out} "${xml}" PARENT_SCOPE)
endfunction()

# kelvo_property_list_value(XML KEY OUT_VAR)
# Sets OUT_VAR to KEY's value in XML: a string's text, or "true" or "false"; nothing when the key
# is missing or holds another kind of value.
function(kelvo_property_list_value xml key out)
  set(value "")
  if(xml MATCHES "<key>${key}</key>[ \t\r\n]*<string>([^<]*)</string>")
    set(value "${CMAKE_MATCH_1}")
    string(REPLACE "&lt;" "<" value "${value}")
    string(REPLACE "&gt;" ">" value "${value}")
    string(REPLACE "&amp;" "&" value "${value}")
  elseif(xml MATCHES "<key>${key}</key>[ \t\r\n]*<(true|false)/>")
    set(value "${CMAKE_MATCH_1}")
  endif()
  set(${out} "${value}" PARENT_SCOPE)
endfunction()
