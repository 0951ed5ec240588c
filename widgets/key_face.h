// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace style_sheets {

/// A picture centred on a black key: "AF" stands for :/img/AF.png.
inline QString keyFace(const QString &picture)
{
    return QStringLiteral("QPushButton{image: url(:/img/%1.png);background-color:black;}")
        .arg(picture);
}

} // namespace style_sheets
