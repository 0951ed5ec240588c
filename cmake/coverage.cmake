# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

# Stands in for the C library's raise in every program that has the panel in it.
add_library(coverage_at_signal STATIC ${CMAKE_CURRENT_LIST_DIR}/coverage_at_signal.cpp)
target_link_libraries(desktop PUBLIC coverage_at_signal)
