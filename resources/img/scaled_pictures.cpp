// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/img/scaled_pictures.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <QRegularExpression>
#include <QResource>
#include <QStyle>
#include <QStyleOption>
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

class KeptBackground : public QObject
{
public:
    KeptBackground(QWidget &panel, const QString &path)
        : QObject(&panel), m_panel(panel), m_path(path)
    {
        panel.ensurePolished();
        forget();
        panel.installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange)
            forget();
        else if (event->type() == QEvent::Paint)
            paint();
        return false;
    }

private:
    // A style sheet that is applied has the toolkit draw the background at each repaint.
    void forget()
    {
        m_background = QPixmap();
        m_panel.setAttribute(Qt::WA_StyledBackground, false);
    }

    void paint()
    {
        if (m_background.isNull())
            m_background = draw();
        QPainter(&m_panel).drawPixmap(0, 0, m_background);
    }

    QPixmap draw() const
    {
        const qreal factor = m_panel.devicePixelRatioF();
        QPixmap background(m_panel.size() * factor);
        background.setDevicePixelRatio(factor);
        background.fill(Qt::transparent);
        QPainter painter(&background);
        QStyleOption option;
        option.initFrom(&m_panel);
        m_panel.style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, &m_panel);
        if (factor > 1) {
            painter.setClipPath(inside());
            painter.drawPixmap(m_panel.rect(), scaledPicture(m_path, background.size()));
        }
        return background;
    }

    QPainterPath inside() const
    {
        const int border = sheetLength(m_panel, "border");
        const int radius = sheetLength(m_panel, "border-radius") - border;
        QPainterPath path;
        path.addRoundedRect(
            m_panel.rect().adjusted(border, border, -border, -border), radius, radius);
        return path;
    }

    QWidget &m_panel;
    const QString m_path;
    QPixmap m_background;
};

} // namespace

void fitPictures(QWidget &leftPanel, QWidget &rightPanel)
{
    if (qGuiApp->devicePixelRatio() > 1)
        registerScaledPictures();
    // The two backgrounds, a megabyte at factor 1, come out of what the toolkit keeps.
    QPixmapCache::setCacheLimit(QPixmapCache::cacheLimit() - 1024);
    keepBackground(leftPanel, QStringLiteral(":/img/background.png"));
    keepBackground(rightPanel, QStringLiteral(":/img/setting_background.png"));
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

void keepBackground(QWidget &panel, const QString &path) { new KeptBackground(panel, path); }
