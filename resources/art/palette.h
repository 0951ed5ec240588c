// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "resources/art/lettering.h"

// The colours and sizes of lettering that all pictures share.
namespace art {

// The panel's body, from its upper to its lower edge, and what is cut into it.
inline const Colour bodyTop = rgb(0x3a3e44);
inline const Colour bodyBottom = rgb(0x26292d);
inline const Colour cut = rgb(0x0c0d0f);
inline const Colour key = rgb(0x000000);
inline const Colour frame = rgb(0x808080);
// Light along an edge, and the shadow on its other side.
inline const Colour light = rgb(0xffffff, 0.16);
inline const Colour shade = rgb(0x000000, 0.45);

inline const Colour bright = rgb(0xf1f3f5);
inline const Colour plain = rgb(0xd3d7db);
inline const Colour quiet = rgb(0xb0b6bc);
// The accent: what is active or at rest. The lamp shines on dark grounds, the ink is printed on
// light ones.
inline const Colour lamp = rgb(0x3ddc84);
inline const Colour ink = rgb(0x00672f);
inline const Colour print = rgb(0x101214);

inline const Style digitStyle{ 9, 6, 2.0, 1.5, 1, 1.3 };
inline const Style wordStyle{ 9, 6, 1.5, 1.3, 1, 1.0 };
inline const Style labelStyle{ 7, 5, 1.25, 1.0, 1, 1.0 };
inline const Style captionStyle{ 6, 4, 1.0, 1.0, 1, 0.96 };

} // namespace art
