// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The style sheets that buttons get at run time, to the character.
#pragma once

#include <QString>

namespace sheets {

/// A key: "AF", "5".
inline QString key(const QString &picture)
{
    return "QPushButton{image: url(:/img/" + picture + ".png);background-color:black;}";
}

/// Mute and on-top: "mute", "no_top".
inline QString sign(const QString &picture)
{
    return "QPushButton{border-image: url(:/img/" + picture
        + ".png);background-attachment;border:none;}";
}

inline QString camera(int number, bool selected)
{
    return "QPushButton{image: url(:/img/cam" + QString::number(number)
        + (selected ? "_green" : "_black") + ".png);background-color:transparent;}";
}

inline const char *const topAtStart =
    "QPushButton{border-image: url(:/img/top.png);border:none;background:transparent;}";
inline const char *const invisible = "QPushButton{border:none;background:transparent;}";

} // namespace sheets
