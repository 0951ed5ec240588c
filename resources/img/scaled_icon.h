// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QIconEngine>
#include <QIconEnginePlugin>

/// A picture that keeps its size on the panel whatever it is drawn from. The toolkit's own icons
/// take a larger version for a larger picture, and fill the button with it.
class ScaledIcon : public QIconEngine
{
public:
    void addFile(
        const QString &file, const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override { return new ScaledIcon(*this); }

private:
    QString m_path;
    QSize m_size;
};

/// Makes the toolkit use ScaledIcon for the pictures of the panel.
class ScaledIconPlugin : public QIconEnginePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QIconEngineFactoryInterface_iid FILE "scaled_icon.json")

public:
    QIconEngine *create(const QString &file) override;
};
