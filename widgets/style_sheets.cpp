// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "widgets/style_sheets.h"

namespace style_sheets {

namespace {

// A picture stretched over the whole button. The style engine ignores "background-attachment;"; the
// text is required.
QString signFace(const char *picture)
{
    return QStringLiteral(
        "QPushButton{border-image: url(:/img/%1.png);background-attachment;border:none;}")
        .arg(QLatin1String(picture));
}

} // namespace

QString keyFace(const QString &picture)
{
    return QStringLiteral("QPushButton{image: url(:/img/%1.png);background-color:black;}")
        .arg(picture);
}

QString autoFocus() { return keyFace(QStringLiteral("AF")); }
QString manualFocus() { return keyFace(QStringLiteral("MF")); }
QString framing() { return keyFace(QStringLiteral("Framing")); }
QString manualFraming() { return keyFace(QStringLiteral("Manual")); }

QString cameraFace(int number, bool selected)
{
    return QStringLiteral(
        "QPushButton{image: url(:/img/cam%1_%2.png);background-color:transparent;}")
        .arg(QString::number(number), selected ? QStringLiteral("green") : QStringLiteral("black"));
}

QString muted() { return signFace("mute"); }
QString notMuted() { return signFace("no_mute"); }
QString onTop() { return signFace("top"); }
QString notOnTop() { return signFace("no_top"); }

QString onTopAtStart()
{
    return QStringLiteral(
        "QPushButton{border-image: url(:/img/top.png);border:none;background:transparent;}");
}

QString invisible() { return QStringLiteral("QPushButton{border:none;background:transparent;}"); }

} // namespace style_sheets
