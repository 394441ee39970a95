# One interface target carries every flag of the build.
add_library(vael_flags INTERFACE)
target_compile_options(vael_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual
  -Werror=return-type
  -ffp-contract=off)          # no fused operations: results are the same on every machine
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(vael_flags INTERFACE -Wno-restrict)  # false alarms of g++ 12 in std::string
endif()
target_include_directories(vael_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(VAEL_SANITIZE)
  target_compile_options(vael_flags INTERFACE -fsanitize=${VAEL_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  target_link_options(vael_flags INTERFACE -fsanitize=${VAEL_SANITIZE})
endif()
if(VAEL_COVERAGE)
  target_compile_options(vael_flags INTERFACE --coverage -O0)
  target_link_options(vael_flags INTERFACE --coverage)
endif()

# The modules of levels 0 to 2: implicit conversions that lose something are errors there.
add_library(vael_strict INTERFACE)
target_link_libraries(vael_strict INTERFACE vael_flags)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(vael_strict INTERFACE -Wconversion -Wfloat-conversion -Werror=conversion
    -Werror=float-conversion)
endif()
if(VAEL_FUZZ)
  target_compile_options(vael_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined
    -fno-sanitize-recover=all -g1)
  target_link_options(vael_flags INTERFACE -fsanitize=address,undefined)
endif()
