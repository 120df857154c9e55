# The tests: GoogleTest programs whose every test is a CTest test. Each test lies beside what it
# tests (foo.cpp, foo_test.cpp) and each folder's CMakeLists.txt makes its own test programs; the
# machine the tests run on (namespaces, displays, other users, polkit) is in tests/support.
find_package(GTest REQUIRED)
include(GoogleTest)

# kelvo_add_test(NAME SOURCES ... [LIBRARIES ...])
# One GoogleTest program. On Linux, as root, it runs in process and mount namespaces of its own
# (tests/support/own_namespaces.sh) whose first process reaps the orphans it leaves.
function(kelvo_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest GTest::gtest_main GTest::gmock)
  if(APPLE)
    # Homebrew's GoogleTest is built for this Mac's processor alone, and so are the tests.
    set_target_properties(${name} PROPERTIES OSX_ARCHITECTURES ${CMAKE_HOST_SYSTEM_PROCESSOR})
  else()
    set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR
      "${PROJECT_SOURCE_DIR}/tests/support/own_namespaces.sh;${PROJECT_BINARY_DIR}/tests/support/subreaper")
    add_dependencies(${name} subreaper)
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
