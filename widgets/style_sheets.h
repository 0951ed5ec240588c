// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The style sheets that the program sets on its buttons, each written once. A button shows its
// state by its picture; the pictures are compiled in under :/img/.
#pragma once

#include <QString>

namespace style_sheets {

/// A picture centred on a black key: "AF" stands for :/img/AF.png.
QString keyFace(const QString &picture);

QString autoFocus();
QString manualFocus();
QString framing();
QString manualFraming();

/// Camera button 1 to 5: green when selected, else black.
QString cameraFace(int number, bool selected);

QString muted();
QString notMuted();
QString onTop();
QString notOnTop();

/// The on-top button until its first click: the picture of onTop() on a transparent background.
QString onTopAtStart();

/// A button whose sign is part of the panel's background picture.
QString invisible();

} // namespace style_sheets
