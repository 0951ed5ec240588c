// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a program under measurement writes down: a shared file that the bench reads while it grows.
#pragma once

namespace record {

/// A request that changes something at the camera is about to be made. Notes the time, and starts
/// and ends the counting of instructions where the bench wants it.
void noteSetting();

/// A request that only reads.
void noteReading();

} // namespace record
