// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

/// Puts every process-wide variable of the program back to what it is when a process starts.
void resetProcessState();
