// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPixmap>
#include <QString>

class QWidget;

/// Keeps the backgrounds of both panels and, on a scaled desktop, shows the panel's pictures at its
/// resolution. Call before the panels are shown.
void fitPictures(QWidget &leftPanel, QWidget &rightPanel);

/// Adds the pictures at two and three times their size to `:/img`, under the names by which the
/// toolkit looks for them on a scaled desktop (`@2x`, `@3x`), and sees to it that they come out in
/// the right size. Call before the first picture is loaded.
void registerScaledPictures();

/// A picture of the panel at this size in device pixels, made from a larger one. `path` is that of
/// the plain picture.
QPixmap scaledPicture(const QString &path, const QSize &size);

/// Has the style sheet draw the background of a panel once and keeps the picture: its border and
/// round corners would cost most of each repaint of anything in the panel. On a scaled desktop the
/// style sheet draws the background unsmoothed, which drops lines at a factor of 1.5, and a larger
/// picture out of place; there the picture of that path is drawn again inside the border.
void keepBackground(QWidget &panel, const QString &path);
