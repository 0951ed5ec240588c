// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace desktop {

/// Has the X server send a held key as press, press, press, and one release at the end. By itself
/// it sends a release before each repeated press, and the toolkit tells such a release from a real
/// one by the press behind it: when it looks before that press has arrived, which on a busy
/// machine is most of the time, the camera would stop and start again. Call once the application
/// object is there. True when every release is a real one from now on; the toolkit still takes one
/// for a repeat when the same key is pressed again within ten milliseconds. Does nothing elsewhere
/// than on X11; false.
bool withoutReleases();

/// What the clock shows now by which X11 dates events, in milliseconds; 0 elsewhere than on X11.
/// Asks the X server and waits for the answer.
std::uint32_t serverTime();

} // namespace desktop
