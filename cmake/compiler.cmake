# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

# Linked by every target of ours: the warnings that the project keeps clean, and the repository
# root as include directory.
add_library(ptz_warnings INTERFACE)
target_include_directories(ptz_warnings INTERFACE ${PROJECT_SOURCE_DIR})
if(MSVC)
  target_compile_options(ptz_warnings INTERFACE /W4 /utf-8)
else()
  target_compile_options(ptz_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Woverloaded-virtual -Wformat=2 -Wsuggest-override
    $<$<BOOL:${PTZ_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

if(PTZ_SANITIZE)
  # vptr is left out: it needs the type information of Qt's private classes. A report needs lines,
  # not variables, and with those everything takes a fifth longer to build.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr
    -fno-sanitize-recover=undefined -fno-omit-frame-pointer -g1)
  add_link_options(-fsanitize=address,undefined -fno-sanitize=vptr)
endif()

if(PTZ_COVERAGE)
  add_compile_options(--coverage -O0 -fprofile-update=atomic)
  add_link_options(--coverage)
endif()
