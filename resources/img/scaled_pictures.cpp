// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/img/scaled_pictures.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QResource>
#include <QWidget>
#include <QtPlugin>

// Written by embed.cmake.
extern const unsigned char scaledPicturesArray[];
// Written by moc, of ScaledIconPlugin.
extern const QStaticPlugin qt_static_plugin_ScaledIconPlugin();

namespace {

class SharpBackground : public QObject
{
public:
    SharpBackground(QWidget &panel, const QString &path)
        : QObject(&panel), m_panel(panel),
          m_picture(scaledPicture(path, panel.size() * panel.devicePixelRatioF()))
    {
        panel.installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            paint();
        return false;
    }

private:
    void paint() const
    {
        // The border is 2 pixels wide and has a radius of 32 outside.
        QPainterPath inside;
        inside.addRoundedRect(m_panel.rect().adjusted(2, 2, -2, -2), 30, 30);
        QPainter painter(&m_panel);
        painter.setClipPath(inside);
        painter.drawPixmap(m_panel.rect(), m_picture);
    }

    QWidget &m_panel;
    const QPixmap m_picture;
};

} // namespace

void registerScaledPictures()
{
    // The tray icon, of which one file holds all sizes.
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QResource::registerResource(scaledPicturesArray);
    qRegisterStaticPluginFunction(qt_static_plugin_ScaledIconPlugin());
}

QPixmap scaledPicture(const QString &path, const QSize &size)
{
    const QString name = path.chopped(4);
    const QPixmap twice(name + QStringLiteral("@2x.png"));
    if (twice.size() == size)
        return twice;
    // Between the factors the largest keeps most.
    return QPixmap(name + QStringLiteral("@3x.png"))
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void drawBackgroundSharply(QWidget &panel, const QString &path)
{
    new SharpBackground(panel, path);
}
