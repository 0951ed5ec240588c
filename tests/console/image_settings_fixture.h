// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QTest>

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

    /// A range that differs from property to property, and each number from the others.
    static Range rangeOf(std::size_t row)
    {
        const auto n = static_cast<std::int64_t>(row);
        return { n + 1, 90 + n, 40 + n, 20 + n, 1 };
    }
    static const Range &flicker()
    {
        static const Range range{ 0, 2, 2, 1, 1 };
        return range;
    }

    static virtual_camera::CameraDescription description()
    {
        virtual_camera::CameraDescription camera;
        for (std::size_t row = 0; row < imageProperties().size(); ++row)
            camera.range(imageProperties()[row].control) = rangeOf(row);
        camera.range(Control::PowerLineFrequency) = flicker();
        return camera;
    }

    /// So many of these cameras, and a window that has polled.
    void startOnRanges(int cameras = 1)
    {
        plugIn(std::vector<virtual_camera::DeviceDescription>(static_cast<std::size_t>(cameras),
            virtual_camera::DeviceDescription::ptzCamera(description())));
        start(cameras);
    }

    QSlider *slider(const ImageProperty &row) { return form().*row.slider; }
    QString shown(const ImageProperty &row) { return (form().*row.box)->text(); }
    QComboBox *flickerChoice() { return form().cb_fliker; }

    void click(QPushButton *button) { QTest::mouseClick(button, Qt::LeftButton); }
    void openPanel()
    {
        click(form().btn_setting);
        ASSERT_TRUE(form().Win_Right->isVisible());
    }
};
