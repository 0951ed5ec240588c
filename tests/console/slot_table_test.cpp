// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The window's slots: their order, and that each control calls its own exactly once.

#include <QMetaMethod>

#include <map>

#include "tests/console/connections.h"
#include "tests/console/panel_fixture.h"

namespace {

const char *const slotSignatures[] = {
    "InitValue()",
    "InitWindows()",
    "InitConnect()",
    "InitUSBGuid()",
    "nativeEvent(QByteArray,void*,long*)",
    "paintEvent(QPaintEvent*)",
    "on_activatedSysTrayIcon(QSystemTrayIcon::ActivationReason)",
    "MoveEvent(BaseDevice*,int,int,int)",
    "MovePlace(int)",
    "SpeedX(int)",
    "SpeedY(int)",
    "zoomchanged()",
    "zoomstop()",
    "focuschanged()",
    "focusstop()",
    "on_btn_mute_clicked()",
    "on_btn_top_clicked()",
    "on_btn_min_clicked()",
    "on_btn_close_clicked()",
    "on_btn_af_clicked()",
    "on_btn_ai_clicked()",
    "on_btn_push_clicked()",
    "on_btn_num1_clicked()",
    "on_btn_num2_clicked()",
    "on_btn_num3_clicked()",
    "on_btn_num4_clicked()",
    "on_btn_num5_clicked()",
    "on_btn_num6_clicked()",
    "on_btn_num7_clicked()",
    "on_btn_num8_clicked()",
    "on_btn_num9_clicked()",
    "on_btn_set_clicked()",
    "on_btn_num0_clicked()",
    "on_btn_clear_clicked()",
    "on_btn_flip_clicked()",
    "on_btn_home_clicked()",
    "on_btn_mirror_clicked()",
    "on_btn_cam1_clicked()",
    "on_btn_cam2_clicked()",
    "on_btn_cam3_clicked()",
    "on_btn_cam4_clicked()",
    "on_btn_cam5_clicked()",
    "on_btn_setting_clicked()",
    "TimerInit()",
    "Setting_Press(int)",
    "Warn_NoDev()",
    "cam2_warn()",
    "cam3_warn()",
    "cam4_warn()",
    "cam5_warn()",
    "warn_exit()",
    "on_cb_fliker_currentTextChanged(QString)",
    "on_btn_default_clicked()",
    "on_btn_ok_clicked()",
    "on_slider_wb_sliderMoved(int)",
    "on_slider_blc_sliderMoved(int)",
    "on_slider_gamma_sliderMoved(int)",
    "on_slider_contrast_sliderMoved(int)",
    "on_slider_saturation_sliderMoved(int)",
    "on_slider_brightness_sliderMoved(int)",
    "on_slider_sharpness_sliderMoved(int)",
    "on_slider_wb_sliderPressed()",
    "on_slider_gamma_sliderPressed()",
    "on_slider_contrast_sliderPressed()",
    "on_slider_saturation_sliderPressed()",
    "on_slider_brightness_sliderPressed()",
    "on_slider_sharpness_sliderPressed()",
    "on_slider_blc_sliderPressed()",
};

std::vector<QMetaMethod> ownMethods()
{
    const QMetaObject &meta = MainWindow::staticMetaObject;
    std::vector<QMetaMethod> methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        methods.push_back(meta.method(index));
    return methods;
}

TEST(SlotTable, HoldsSixtyEightSlotsInTheirOrderAndNoSignal)
{
    std::vector<std::string> declared;
    for (const QMetaMethod &method : ownMethods()) {
        EXPECT_EQ(method.methodType(), QMetaMethod::Slot) << method.methodSignature().constData();
        declared.push_back(method.methodSignature().toStdString());
    }
    EXPECT_EQ(declared.size(), 68U);
    EXPECT_EQ(
        declared, std::vector<std::string>(std::begin(slotSignatures), std::end(slotSignatures)));
}

TEST(SlotTable, ParametersHaveTheirNames)
{
    const std::map<std::string, QByteArrayList> expected = {
        { "nativeEvent", { "eventType", "message", "result" } },
        { "paintEvent", { "event" } },
        { "on_activatedSysTrayIcon", { "reason" } },
        { "MovePlace", { "num" } },
        { "Setting_Press", { "flag" } },
        { "on_cb_fliker_currentTextChanged", { "arg1" } },
    };
    std::size_t found = 0;
    for (const QMetaMethod &method : ownMethods()) {
        const std::string name = method.name().toStdString();
        if (const auto row = expected.find(name); row != expected.end()) {
            EXPECT_EQ(method.parameterNames(), row->second) << name;
            ++found;
        }
        if (method.name().endsWith("sliderMoved")) {
            EXPECT_EQ(method.parameterNames(), QByteArrayList{ "position" }) << name;
        }
    }
    EXPECT_EQ(found, expected.size());
}

class ConnectedControls : public PanelTest
{ };

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
        const QByteArray signature = name.mid(end + 1).toLatin1()
            + slot.methodSignature().mid(slot.methodSignature().indexOf('('));
        const QWidget *const control = window->findChild<QWidget *>(object);
        ASSERT_NE(control, nullptr) << object.toStdString();
        ASSERT_GE(control->metaObject()->indexOfSignal(signature), 0) << name.toStdString();
        EXPECT_EQ(connectionsOf(control, "2" + signature), 1) << name.toStdString();
        ++named;
    }
    EXPECT_EQ(named, 45);
}

} // namespace
