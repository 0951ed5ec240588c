// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The style sheets that the program sets on its buttons, each written once. A button shows its
// state by its picture; the pictures are compiled in under :/img/.
#pragma once

#include <QString>

#include "widgets/key_face.h"

namespace style_sheets {

/// The label of camera button 1 to 5: green when selected, else black.
inline QString cameraFace(int number, bool selected)
{
    return QStringLiteral(
        "QPushButton{image: url(:/img/cam%1_%2.png);background-color:transparent;}")
        .arg(QString::number(number), selected ? QStringLiteral("green") : QStringLiteral("black"));
}

/// A picture stretched over the whole button. The stray "background-attachment" does nothing; the
/// style engine skips it.
inline QString signFace(const QString &picture)
{
    return QStringLiteral(
        "QPushButton{border-image: url(:/img/%1.png);background-attachment;border:none;}")
        .arg(picture);
}

inline QString muted() { return signFace(QStringLiteral("mute")); }
inline QString notMuted() { return signFace(QStringLiteral("no_mute")); }
inline QString onTop() { return signFace(QStringLiteral("top")); }
inline QString notOnTop() { return signFace(QStringLiteral("no_top")); }

/// What the on-top button wears until it is clicked for the first time: the same picture as
/// onTop(), over a transparent ground.
inline QString onTopAtStart()
{
    return QStringLiteral(
        "QPushButton{border-image: url(:/img/top.png);border:none;background:transparent;}");
}

/// A button without a face: its sign is part of the panel's background picture.
inline QString invisible()
{
    return QStringLiteral("QPushButton{border:none;background:transparent;}");
}

inline QString autoFocus() { return keyFace(QStringLiteral("AF")); }
inline QString manualFocus() { return keyFace(QStringLiteral("MF")); }
inline QString framing() { return keyFace(QStringLiteral("Framing")); }
inline QString manualFraming() { return keyFace(QStringLiteral("Manual")); }

} // namespace style_sheets
