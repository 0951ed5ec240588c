// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPixmap>
#include <QString>

class QWidget;

/// On a scaled desktop, shows the panel's pictures at its resolution. Call before the panels are
/// shown.
void fitPictures(QWidget &leftPanel, QWidget &rightPanel);

/// Adds the pictures at two and three times their size to `:/img`, under the names by which the
/// toolkit looks for them on a scaled desktop (`@2x`, `@3x`), and sees to it that they come out in
/// the right size. Call before the first picture is loaded.
void registerScaledPictures();

/// A picture of the panel at this size in device pixels, made from a larger one. `path` is that of
/// the plain picture.
QPixmap scaledPicture(const QString &path, const QSize &size);
