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

# ptz_add_test(<name> SOURCES <file>... [LIBRARIES <target>...] [CAMERA] [TIMEOUT <s>] [LABELS <l>...])
#
# A GoogleTest program as one CTest test of that name. With CAMERA the program runs beneath
# umockdev's preload library, so that it can plug in virtual cameras.
function(ptz_add_test name)
  cmake_parse_arguments(ARG "CAMERA" "TIMEOUT" "SOURCES;LIBRARIES;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  # What is tested is built as it is shipped; the tests themselves had better be built soon.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O0>)
  target_link_libraries(${name} PRIVATE ptz_warnings GTest::gmock GTest::gtest ${ARG_LIBRARIES})
  if(ARG_CAMERA)
    target_link_libraries(${name} PRIVATE virtual_camera_testbed)
    add_test(NAME ${name} COMMAND ${UMOCKDEV_WRAPPER} $<TARGET_FILE:${name}>)
  else()
    add_test(NAME ${name} COMMAND ${name})
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "${PTZ_TEST_ENVIRONMENT}" TIMEOUT ${ARG_TIMEOUT} LABELS "unit;${ARG_LABELS}")
endfunction()
