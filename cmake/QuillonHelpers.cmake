# Shared build settings for every Quillon target.

add_library(quillon_warnings INTERFACE)
target_compile_options(quillon_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align
  -Woverloaded-virtual -Wdouble-promotion -Wformat=2 -Wimplicit-fallthrough)
if(QUILLON_WERROR)
  target_compile_options(quillon_warnings INTERFACE -Werror)
endif()

if(QUILLON_SANITIZE)
  # GCC's uninitialised-use analysis is unreliable with the sanitizers' instrumentation.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
                      -Wno-maybe-uninitialized)
  add_link_options(-fsanitize=address,undefined -fno-sanitize-recover=all)
endif()

if(QUILLON_FUZZ)
  # Everything is instrumented for coverage; only the fuzz targets link the fuzzer's main.
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()

find_package(GTest REQUIRED)
include(GoogleTest)

# The public C headers (include/quillon), for the parts that implement or speak the C interface.
add_library(quillon_c_headers INTERFACE)
target_include_directories(quillon_c_headers INTERFACE ${PROJECT_SOURCE_DIR}/include)

# quillon_expose_headers(target)
# Gives the target an include root of its own that holds only the headers of its folder: for
# src/ui/qt, BUILD/include/<target>/ui/qt/*.h, each a link to the header in the source tree. So
# "ui/qt/X.h" resolves for the target and for whoever links it, and a subsystem sees no header of
# a layer that it does not link. A header added to the folder is picked up at the next build.
function(quillon_expose_headers name)
  file(RELATIVE_PATH sub ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  set(root ${PROJECT_BINARY_DIR}/include/${name})
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${sub})
  file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  foreach(header IN LISTS headers)
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${root}/${sub}/${header} SYMBOLIC)
  endforeach()
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${root}>)
endfunction()

# quillon_add_library(name SOURCES... [DEPS targets...])
# One static library per subsystem. It exposes its own headers and links the layers below it
# that it needs (DEPS), whose headers it then sees as well.
function(quillon_add_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  quillon_expose_headers(${name})
  target_link_libraries(${name} PUBLIC ${ARG_DEPS} PRIVATE quillon_warnings)
endfunction()

# quillon_discover_tests(target [LABELS labels...] [PROPERTIES name value...])
# One CTest test per GoogleTest case of the program, each with every label given. Tests that need
# OpenGL carry the label gl, so that `ctest -L gl` runs them and `ctest -LE gl` the rest; tests
# that open windows carry window as well. gtest_discover_tests passes a property only one value,
# so the labels are set by a script that CTest runs after the discovered tests are added.
function(quillon_discover_tests target)
  cmake_parse_arguments(ARG "" "" "LABELS;PROPERTIES" ${ARGN})
  gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 TEST_LIST ${target}_TESTS PROPERTIES ${ARG_PROPERTIES})
  if(ARG_LABELS)
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}_labels.cmake)
    file(WRITE ${script} "if(DEFINED ${target}_TESTS)\n"
                         "  set_tests_properties(\${${target}_TESTS} PROPERTIES LABELS \"${ARG_LABELS}\")\n"
                         "endif()\n")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${script})
  endif()
endfunction()

# quillon_add_test(name SOURCES... [DEPS targets...] [LABELS labels...])
# A GoogleTest executable; each test case becomes one CTest test. In builds that look for
# OpenGL errors (QUILLON_CHECK_GL) a test fails on any that the library reports.
function(quillon_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS;LABELS" ${ARGN})
  if(QUILLON_FUZZ)
    return()
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} GTest::gtest GTest::gtest_main GTest::gmock quillon_warnings)
  target_compile_definitions(${name} PRIVATE QUILLON_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  quillon_discover_tests(${name} LABELS ${ARG_LABELS} PROPERTIES FAIL_REGULAR_EXPRESSION "quillon: OpenGL error")
endfunction()

# quillon_add_fuzzer(name SOURCE file CORPUS dir [DEPS targets...] [SECONDS n])
# A libFuzzer target, built only with QUILLON_FUZZ; its CTest test runs it from the seed corpus,
# with the dictionary name.dict beside the CMakeLists.txt when there is one. Each target is also
# listed in BUILD/fuzzers/name.txt (program, corpus, dictionary) for longer campaigns.
function(quillon_add_fuzzer name)
  cmake_parse_arguments(ARG "" "SOURCE;CORPUS;SECONDS" "DEPS" ${ARGN})
  if(NOT QUILLON_FUZZ)
    return()
  endif()
  if(NOT ARG_SECONDS)
    set(ARG_SECONDS 30)
  endif()
  add_executable(${name} ${ARG_SOURCE})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} quillon_warnings)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  add_dependencies(fuzzers ${name})
  set(work ${CMAKE_CURRENT_BINARY_DIR}/${name}-corpus)
  set(dict ${CMAKE_CURRENT_SOURCE_DIR}/${name}.dict)
  set(dict_option)
  if(EXISTS ${dict})
    set(dict_option -dict=${dict})
  else()
    set(dict "")
  endif()
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/fuzzers/${name}.txt
    CONTENT "$<TARGET_FILE:${name}>\n${ARG_CORPUS}\n${dict}\n")
  add_test(NAME ${name}
    COMMAND ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=1
            $<TARGET_FILE:${name}> -max_total_time=${ARG_SECONDS} -timeout=10 -rss_limit_mb=2048
            -print_final_stats=1 ${dict_option} ${work} ${ARG_CORPUS})
  set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT 600
    FIXTURES_REQUIRED ${name}-corpus)
  add_test(NAME ${name}-corpus COMMAND ${CMAKE_COMMAND} -E make_directory ${work})
  set_tests_properties(${name}-corpus PROPERTIES LABELS fuzz FIXTURES_SETUP ${name}-corpus)
endfunction()
