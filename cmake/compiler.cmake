# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

# The warnings that the project keeps clean.
add_library(ptz_flags INTERFACE)
if(MSVC)
  target_compile_options(ptz_flags INTERFACE /W4 /utf-8)
else()
  target_compile_options(ptz_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Woverloaded-virtual -Wformat=2 -Wsuggest-override
    $<$<BOOL:${PTZ_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

# The same for what may include any header of the repository, such as tests.
add_library(ptz_warnings INTERFACE)
target_link_libraries(ptz_warnings INTERFACE ptz_flags)
target_include_directories(ptz_warnings INTERFACE ${PROJECT_SOURCE_DIR})

# ptz_layer(<folder>): the target named after the folder (a/b: a_b) is a layer. It sees the headers of
# its own folder and of the layers that it links; to include any other does not compile.
function(ptz_layer folder)
  string(REPLACE / _ target ${folder})
  set(view ${CMAKE_BINARY_DIR}/layers/${target})
  get_filename_component(parent ${view}/${folder} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${view}/${folder} SYMBOLIC)
  target_include_directories(${target} PUBLIC ${view})
  target_link_libraries(${target} PRIVATE ptz_flags)
endfunction()

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
