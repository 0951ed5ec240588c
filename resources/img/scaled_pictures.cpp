// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/img/scaled_pictures.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QResource>
#include <QWidget>
#include <QtPlugin>

// Written by embed.cmake.
extern const unsigned char scaledPicturesArray[];
// Written by moc, of ScaledIconPlugin.
extern const QStaticPlugin qt_static_plugin_ScaledIconPlugin();

namespace {

/// A length from the window's style sheet, which draws the border of both panels.
int sheetLength(const QWidget &panel, const char *property)
{
    const QRegularExpression length(QStringLiteral("%1: (\\d+)px").arg(QLatin1String(property)));
    return length.match(panel.window()->styleSheet()).captured(1).toInt();
}

/// The style sheet draws the background of a panel unsmoothed, which drops lines at a factor of
/// 1.5, and a larger picture out of place. Draws it again on top of that, inside the border.
class SharpBackground : public QObject
{
public:
    SharpBackground(QWidget &panel, const QString &path)
        : QObject(&panel), m_panel(panel),
          m_picture(scaledPicture(path, panel.size() * panel.devicePixelRatioF()))
    {
        const int border = sheetLength(panel, "border");
        const int radius = sheetLength(panel, "border-radius") - border;
        m_inside.addRoundedRect(
            panel.rect().adjusted(border, border, -border, -border), radius, radius);
        panel.installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            QPainter painter(&m_panel);
            painter.setClipPath(m_inside);
            painter.drawPixmap(m_panel.rect(), m_picture);
        }
        return false;
    }

private:
    QWidget &m_panel;
    const QPixmap m_picture;
    QPainterPath m_inside;
};

} // namespace

void fitPictures(QWidget &leftPanel, QWidget &rightPanel)
{
    if (qGuiApp->devicePixelRatio() == 1)
        return;
    registerScaledPictures();
    new SharpBackground(leftPanel, QStringLiteral(":/img/background.png"));
    new SharpBackground(rightPanel, QStringLiteral(":/img/setting_background.png"));
}

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
