// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/img/scaled_icon.h"

#include <QImageReader>
#include <QPainter>

#include "resources/img/scaled_pictures.h"

void ScaledIcon::addFile(
    const QString &file, const QSize & /*size*/, QIcon::Mode /*mode*/, QIcon::State /*state*/)
{
    // The toolkit adds the plain picture first, then the larger one.
    if (!m_path.isEmpty())
        return;
    m_path = file;
    m_size = QImageReader(file).size();
}

QSize ScaledIcon::actualSize(const QSize &size, QIcon::Mode /*mode*/, QIcon::State /*state*/)
{
    const bool fits = m_size.width() <= size.width() && m_size.height() <= size.height();
    return fits ? m_size : m_size.scaled(size, Qt::KeepAspectRatio);
}

void ScaledIcon::paint(
    QPainter *painter, const QRect &rect, QIcon::Mode /*mode*/, QIcon::State /*state*/)
{
    painter->drawPixmap(
        rect, scaledPicture(m_path, rect.size() * painter->device()->devicePixelRatioF()));
}

QPixmap ScaledIcon::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    return scaledPicture(m_path, actualSize(size, mode, state));
}

QIconEngine *ScaledIconPlugin::create(const QString &file)
{
    // Null leaves all other icons to the toolkit.
    return file.startsWith(QLatin1String(":/img/")) ? new ScaledIcon : nullptr;
}
