// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QSlider>

#include <utility>

#include "console/console_state.h"
#include "tests/console/image_property_rows.h"
#include "tests/console/panel_fixture.h"

/// The settings panel of a window on cameras with the ranges below.
class SettingsTest : public PanelTest
{
protected:
    using Control = virtual_camera::Control;
    using RequestCode = virtual_camera::RequestCode;
    using Range = virtual_camera::Range;

    /// Each number differs from all others.
    static Range rangeOf(const ImageProperty &row)
    {
        const std::int64_t n = &row - imageProperties().data();
        return { n + 1, 90 + n, 40 + n, 20 + n, 1 };
    }
    static Range flicker() { return { 0, 2, 2, 1, 1 }; }

    /// Plugs in cameras with these ranges, but for `others`.
    void plugInOnRanges(int cameras, const std::vector<std::pair<Control, Range>> &others = {})
    {
        virtual_camera::CameraDescription camera;
        for (const ImageProperty &row : imageProperties())
            camera.range(row.control) = rangeOf(row);
        camera.range(Control::PowerLineFrequency) = flicker();
        for (const auto &[control, range] : others)
            camera.range(control) = range;
        plugIn(std::vector<virtual_camera::DeviceDescription>(static_cast<std::size_t>(cameras),
            virtual_camera::DeviceDescription::ptzCamera(camera)));
    }
    void startOnRanges(int cameras = 1)
    {
        plugInOnRanges(cameras);
        start(cameras);
    }
    void openPanel()
    {
        click(form().btn_setting);
        ASSERT_TRUE(form().Win_Right->isVisible());
    }

    /// Notes from now on what changes on the panel.
    const std::vector<std::string> &noteOrder()
    {
        const auto note = [this](const QString &what) { changes.push_back(what.toStdString()); };
        for (const ImageProperty &row : imageProperties()) {
            const QString name = row.name;
            QObject::connect(slider(row), &QSlider::rangeChanged, window.get(),
                [=](int min, int max) { note(QString("%1 %2..%3").arg(name).arg(min).arg(max)); });
            QObject::connect(slider(row), &QSlider::valueChanged, window.get(),
                [=](int value) { note(QString("%1 at %2").arg(name).arg(value)); });
            QObject::connect(box(row), &QLineEdit::textChanged, window.get(),
                [=](const QString &text) { note(name + " shows " + text); });
        }
        QObject::connect(flickerChoice(), &QComboBox::currentTextChanged, window.get(),
            [=](const QString &text) { note("choice " + text); });
        return changes;
    }

    QSlider *slider(const ImageProperty &row)
    {
        return window->findChild<QSlider *>(QString("slider_") + row.widget);
    }
    QLineEdit *box(const ImageProperty &row)
    {
        return window->findChild<QLineEdit *>(QString("v_") + row.widget);
    }
    QString shown(const ImageProperty &row) { return box(row)->text(); }
    QComboBox *flickerChoice() { return form().cb_fliker; }

private:
    std::vector<std::string> changes;
};
