# vael_test(NAME SOURCES... LIBS...): one GoogleTest program, each test registered with CTest.
include(GoogleTest)
function(vael_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE vael_flags ${ARG_LIBS} GTest::gtest_main)
  if(VAEL_SANITIZE)  # what is tested keeps its own optimisation; this halves the time of a build
    target_compile_options(${name} PRIVATE -O0)
  endif()
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE
    VAEL_MEASURED_DATA="${VAEL_MEASURED_DATA}"
    VAEL_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
    VAEL_BUILD_DIR="${CMAKE_BINARY_DIR}")
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
