// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace virtual_camera {

/// Programs see the emulated bus only beneath umockdev's preload library.

/// Empty when the library can be loaded, else the loader's words.
std::string preloadProblem();

/// What a program's environment needs to see the bus: "UMOCKDEV_DIR=...", "LD_PRELOAD=...". The
/// root directory is the testbed's. Throws std::runtime_error when the library that refuses to open
/// devices is missing.
std::vector<std::string> busEnvironment(const std::string &rootDirectory);
/// This process's environment with those variables; libraries that were preloaded stay so.
std::vector<std::string> environmentWith(const std::vector<std::string> &bus);

} // namespace virtual_camera
