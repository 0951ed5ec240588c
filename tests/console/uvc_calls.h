// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the window asked of libuvc, in a form that does not depend on the tests before.
#pragma once

#include <string>
#include <vector>

/// Every call since the recorder was cleared; contexts, lists, descriptors and handles are
/// numbered from 1 in the order in which these calls name them.
std::vector<std::string> callsRenumbered();

/// Opening and closing alone: "open 2" for entry 2 of the list of cameras, "open 2 failed",
/// "close".
std::vector<std::string> opensAndCloses();
