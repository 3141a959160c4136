# The things a folder of this tree declares: a library, a program, a test program, a benchmark or fuzz target.
# Sources of a library are whatever .cpp files lie directly in the folder.

# quorvane_library(NAME [DEPENDS target...]): the folder's sources as the static library quorvane_NAME.
# A folder with headers alone becomes an interface library.
function(quorvane_library name)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp)
  list(FILTER sources EXCLUDE REGEX "/main[^/]*\\.cpp$")
  if(sources)
    add_library(quorvane_${name} STATIC ${sources})
    target_link_libraries(quorvane_${name} PUBLIC quorvane_options ${arg_DEPENDS})
  else()
    add_library(quorvane_${name} INTERFACE)
    target_link_libraries(quorvane_${name} INTERFACE quorvane_options ${arg_DEPENDS})
  endif()
endfunction()

# quorvane_program(NAME [WIN32] SOURCE...): an executable; on Windows with icon, manifest and version, and with
# WIN32 one without a console.
function(quorvane_program name)
  add_executable(${name} ${ARGN})
  if(WIN32)
    set(resources ${CMAKE_SOURCE_DIR}/platform/windows/resources)
    target_sources(${name} PRIVATE ${resources}/quorvane.rc)
    set_source_files_properties(${resources}/quorvane.rc PROPERTIES
      OBJECT_DEPENDS "${resources}/quorvane.ico;${resources}/quorvane.manifest")
  endif()
endfunction()

# quorvane_test(NAME [OPTIMISED] [DEPENDS target...]): tests/NAME/*.cpp as one GoogleTest program and one ctest
# entry. Half a build's time went into optimising assertions, so only a test that computes much itself is OPTIMISED.
function(quorvane_test name)
  cmake_parse_arguments(arg "OPTIMISED" "" "DEPENDS" ${ARGN})
  string(REPLACE "/" "_" target ${name})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  quorvane_program(test_${target} ${sources})
  if(NOT arg_OPTIMISED)
    target_compile_options(test_${target} PRIVATE -O0)
  endif()
  target_link_libraries(test_${target} PRIVATE ${arg_DEPENDS} GTest::gtest GTest::gtest_main)
  add_test(NAME ${target} COMMAND test_${target} --gtest_brief=1)
  set_tests_properties(${target} PROPERTIES TIMEOUT 300)
  if(QUORVANE_SANITIZE)
    set_property(TEST ${target} APPEND PROPERTY ENVIRONMENT
      "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/cmake/leaks.supp:print_suppressions=0")
  endif()
endfunction()

# quorvane_bench(NAME [DEPENDS target...]): bench/NAME.cpp as a Google Benchmark program.
function(quorvane_bench name)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  add_executable(bench_${name} ${name}.cpp)
  target_link_libraries(bench_${name} PRIVATE ${arg_DEPENDS} benchmark::benchmark benchmark::benchmark_main)
endfunction()

# quorvane_fuzz(NAME [DEPENDS target...]): fuzz/NAME.cpp as a libFuzzer program (preset linux-fuzz only). The
# target `fuzzers` is all of them.
function(quorvane_fuzz name)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  add_executable(fuzz_${name} ${name}.cpp)
  target_link_libraries(fuzz_${name} PRIVATE ${arg_DEPENDS})
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  if(NOT TARGET fuzzers)
    add_custom_target(fuzzers)
  endif()
  add_dependencies(fuzzers fuzz_${name})
endfunction()
