// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The window's slots: their order, and that each control calls its own exactly once.

#include <QMetaMethod>

#include <algorithm>

#include "tests/console/panel_fixture.h"

namespace {

// With the names of the parameters.
const QByteArrayList expectedSlots = { "InitValue()", "InitWindows()", "InitConnect()",
    "InitUSBGuid()", "nativeEvent(QByteArray eventType,void* message,long* result)",
    "paintEvent(QPaintEvent* event)",
    "on_activatedSysTrayIcon(QSystemTrayIcon::ActivationReason reason)",
    "MoveEvent(BaseDevice* camera,int direction,int panSpeed,int tiltSpeed)", "MovePlace(int num)",
    "SpeedX(int num)", "SpeedY(int num)", "zoomchanged()", "zoomstop()", "focuschanged()",
    "focusstop()", "on_btn_mute_clicked()", "on_btn_top_clicked()", "on_btn_min_clicked()",
    "on_btn_close_clicked()", "on_btn_af_clicked()", "on_btn_ai_clicked()", "on_btn_push_clicked()",
    "on_btn_num1_clicked()", "on_btn_num2_clicked()", "on_btn_num3_clicked()",
    "on_btn_num4_clicked()", "on_btn_num5_clicked()", "on_btn_num6_clicked()",
    "on_btn_num7_clicked()", "on_btn_num8_clicked()", "on_btn_num9_clicked()",
    "on_btn_set_clicked()", "on_btn_num0_clicked()", "on_btn_clear_clicked()",
    "on_btn_flip_clicked()", "on_btn_home_clicked()", "on_btn_mirror_clicked()",
    "on_btn_cam1_clicked()", "on_btn_cam2_clicked()", "on_btn_cam3_clicked()",
    "on_btn_cam4_clicked()", "on_btn_cam5_clicked()", "on_btn_setting_clicked()", "TimerInit()",
    "Setting_Press(int flag)", "Warn_NoDev()", "cam2_warn()", "cam3_warn()", "cam4_warn()",
    "cam5_warn()", "warn_exit()", "on_cb_fliker_currentTextChanged(QString arg1)",
    "on_btn_default_clicked()", "on_btn_ok_clicked()", "on_slider_wb_sliderMoved(int position)",
    "on_slider_blc_sliderMoved(int position)", "on_slider_gamma_sliderMoved(int position)",
    "on_slider_contrast_sliderMoved(int position)",
    "on_slider_saturation_sliderMoved(int position)",
    "on_slider_brightness_sliderMoved(int position)",
    "on_slider_sharpness_sliderMoved(int position)", "on_slider_wb_sliderPressed()",
    "on_slider_gamma_sliderPressed()", "on_slider_contrast_sliderPressed()",
    "on_slider_saturation_sliderPressed()", "on_slider_brightness_sliderPressed()",
    "on_slider_sharpness_sliderPressed()", "on_slider_blc_sliderPressed()" };

std::vector<QMetaMethod> ownMethods()
{
    const QMetaObject &meta = MainWindow::staticMetaObject;
    std::vector<QMetaMethod> methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        methods.push_back(meta.method(index));
    return methods;
}

QByteArray signature(const QMetaMethod &method)
{
    QByteArrayList parameters;
    for (int index = 0; index < method.parameterCount(); ++index)
        parameters +=
            (method.parameterTypes()[index] + ' ' + method.parameterNames()[index]).trimmed();
    return method.name() + '(' + parameters.join(',') + ')';
}

TEST(SlotTable, HoldsSixtyEightSlotsInTheirOrderAndNoSignal)
{
    QByteArrayList declared;
    for (const QMetaMethod &method : ownMethods()) {
        EXPECT_EQ(method.methodType(), QMetaMethod::Slot) << method.name().constData();
        declared += signature(method);
    }
    EXPECT_EQ(declared.size(), 68);
    for (int index = 0; index < std::min(declared.size(), expectedSlots.size()); ++index)
        EXPECT_EQ(declared[index].toStdString(), expectedSlots[index].toStdString());
}

using ConnectedControls = PanelTest;

TEST_F(ConnectedControls, EverySlotNamedAfterAControlIsCalledByItOnce)
{
    plugIn(0);
    makeWindow();
    int named = 0;
    for (const QMetaMethod &slot : ownMethods()) {
        const QString name = slot.name();
        if (!name.startsWith("on_") || name == "on_activatedSysTrayIcon")
            continue;
        const int end = name.lastIndexOf('_');
        const QString object = name.mid(3, end - 3);
        const QByteArray signal = name.mid(end + 1).toLatin1()
            + slot.methodSignature().mid(slot.methodSignature().indexOf('('));
        const QWidget *const control = window->findChild<QWidget *>(object);
        ASSERT_NE(control, nullptr) << object.toStdString();
        ASSERT_GE(control->metaObject()->indexOfSignal(signal), 0) << name.toStdString();
        EXPECT_EQ(connectionsOf(control, "2" + signal), 1) << name.toStdString();
        ++named;
    }
    EXPECT_EQ(named, 45);
}

} // namespace
