# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
  message(FATAL_ERROR "Only clang has a fuzzer; configure with: cmake --preset fuzz")
endif()

# Everything reports what it compares to the fuzzer, and stops at the first thing that is wrong.
add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
  -fno-omit-frame-pointer)
add_link_options(-fsanitize=fuzzer-no-link,address,undefined)
# A container that is read past its end says so.
add_compile_definitions(_GLIBCXX_ASSERTIONS)
foreach(layer camera usb usbfs command)
  add_subdirectory(virtual_camera/${layer} EXCLUDE_FROM_ALL)
endforeach()
add_subdirectory(tests/fuzz)
