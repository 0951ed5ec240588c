# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

find_package(GTest REQUIRED)
find_package(Qt5 5.15 REQUIRED COMPONENTS Test)
find_program(UMOCKDEV_WRAPPER umockdev-wrapper)

set(PTZ_TEST_ENVIRONMENT
  QT_QPA_PLATFORM=offscreen
  QT_FONT_DPI=72
  QT_DPI_ADJUSTMENT_POLICY=AdjustDpi
  # umockdev's preload library stands before the sanitizer's runtime; that order works.
  "ASAN_OPTIONS=verify_asan_link_order=0:detect_stack_use_after_return=0"
  "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/kept_on_purpose.supp:print_suppressions=0"
  "UBSAN_OPTIONS=print_stacktrace=1")

# What a GoogleTest program of the name needs. With CAMERA it runs beneath umockdev's preload library,
# so that it can plug in virtual cameras.
function(ptz_add_test_program program)
  cmake_parse_arguments(ARG "CAMERA" "TIMEOUT" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${program} ${ARG_SOURCES})
  # What is tested is built as it is shipped, or with sanitizers; the tests themselves quickly.
  target_compile_options(${program} PRIVATE
    $<$<CONFIG:Release>:-O0> $<$<BOOL:${PTZ_SANITIZE}>:-fno-sanitize=all>)
  target_link_libraries(${program} PRIVATE ptz_warnings GTest::gmock GTest::gtest ${ARG_LIBRARIES})
  if(ARG_CAMERA)
    target_link_libraries(${program} PRIVATE virtual_camera_testbed)
  endif()
endfunction()

# ptz_add_test(<name> SOURCES <file>... [LIBRARIES <target>...] [CAMERA] [TIMEOUT <s>])
#
# A GoogleTest program as one CTest test of that name.
function(ptz_add_test name)
  ptz_add_test_program(${name} ${ARGN})
  ptz_run_test(${name} ${name} "*" ${ARGN})
endfunction()

# ptz_add_tests(<program> SOURCES <file>... ...)
#
# A GoogleTest program of which each source is a CTest test of its name, in a process of its own. The
# suites are looked for in the sources; whatever is not found there runs with the first.
function(ptz_add_tests program)
  cmake_parse_arguments(ARG "CAMERA" "TIMEOUT" "SOURCES;LIBRARIES" ${ARGN})
  ptz_add_test_program(${program} ${ARGN})
  list(POP_FRONT ARG_SOURCES first)
  set(found "")
  foreach(source IN LISTS ARG_SOURCES)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
    file(STRINGS ${source} suites REGEX "^(TYPED_)?TEST(_F|_P)?\\(")
    list(TRANSFORM suites REPLACE "^[A-Z_]+\\(([A-Za-z0-9_]+).*" "\\1.*:*/\\1.*:\\1/*")
    list(REMOVE_DUPLICATES suites)
    list(JOIN suites ":" filter)
    list(APPEND found ${filter})
    get_filename_component(name ${source} NAME_WE)
    ptz_run_test(${name} ${program} "${filter}" ${ARGN})
  endforeach()
  list(JOIN found ":" others)
  get_filename_component(name ${first} NAME_WE)
  ptz_run_test(${name} ${program} "*-${others}" ${ARGN})
endfunction()

function(ptz_run_test name program filter)
  cmake_parse_arguments(ARG "CAMERA" "TIMEOUT" "" ${ARGN})
  if(ARG_CAMERA)
    set(wrapper ${UMOCKDEV_WRAPPER})
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_test(NAME ${name} COMMAND ${wrapper} $<TARGET_FILE:${program}> --gtest_filter=${filter})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "${PTZ_TEST_ENVIRONMENT}" TIMEOUT ${ARG_TIMEOUT} LABELS unit)
endfunction()
