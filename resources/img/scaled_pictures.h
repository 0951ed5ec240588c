// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPixmap>
#include <QString>

class QWidget;

/// Adds the pictures at two and three times their size to `:/img`, under the names by which the
/// toolkit looks for them on a scaled desktop (`@2x`, `@3x`), and sees to it that they come out in
/// the right size. Call before the first picture is loaded.
void registerScaledPictures();

/// A picture of the panel at this size in device pixels, made from a larger one. `path` is that of
/// the plain picture.
QPixmap scaledPicture(const QString &path, const QSize &size);

/// The style sheet draws the background of a panel unsmoothed, which drops lines at a factor of
/// 1.5, and a larger picture out of place. Draws it again on top of that, inside the border.
void drawBackgroundSharply(QWidget &panel, const QString &path);
