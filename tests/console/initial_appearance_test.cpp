// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the window makes of its form at start. No camera is looked for yet: that is half a second
// later.

#include <QFile>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstring>

#include "console/console_state.h"
#include "tests/console/form_tables.h"
#include "tests/console/main_window_probe.h"
#include "widgets/no_device.h"
#include "widgets/notice_state.h"
#include "widgets/style_sheets.h"

namespace {

using Probe = MainWindowProbe;

class StartTest : public testing::Test
{
protected:
    StartTest()
    {
        right_flag = 1;
        main_position_x = main_position_y = 0;
        TopFlag = Top2Flag = 0;
        window = std::make_unique<MainWindow>();
        Probe::timer(*window)->stop(); // no poll
    }
    ~StartTest() override { delete Probe::noDeviceDialog(*window); }

    const Ui::MainWindow &form() { return Probe::form(*window); }

    std::unique_ptr<MainWindow> window;
};

TEST_F(StartTest, WindowIsFramelessTranslucentAndOfFixedSize)
{
    EXPECT_EQ(window->windowFlags(), Qt::Window | Qt::FramelessWindowHint);
    EXPECT_TRUE(window->testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(window->size(), QSize(653, 436));
    EXPECT_EQ(window->minimumSize(), QSize(653, 436));
    EXPECT_EQ(window->maximumSize(), QSize(653, 436));
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_Use96Dpi));
    EXPECT_TRUE(window->isHidden()) << "main shows it";
}

TEST_F(StartTest, SettingsPanelIsHidden)
{
    EXPECT_TRUE(form().Win_Right->isHidden());
    EXPECT_TRUE(form().Win_Right->isEnabled());
    EXPECT_FALSE(form().Win_Left->isHidden());
    EXPECT_EQ(right_flag, 0);
    EXPECT_FALSE(Probe::topState(*window));
}

TEST_F(StartTest, SettingsPanelLeavesTheWindowsSizeAlone)
{
    window->show();
    form().Win_Right->setVisible(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(window->size(), QSize(653, 436));
    form().Win_Right->setVisible(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(window->size(), QSize(653, 436));
}

TEST_F(StartTest, EveryButtonWearsItsFace)
{
    const auto sheetOf = [this](const char *name) {
        return window->findChild<QPushButton *>(QLatin1String(name))->styleSheet().toStdString();
    };
    const struct
    {
        const char *name;
        const char *sheet;
    } rows[] = {
        { "btn_mute",
            "QPushButton{border-image: url(:/img/mute.png);background-attachment;border:none;}" },
        { "btn_top",
            "QPushButton{border-image: "
            "url(:/img/top.png);border:none;background:transparent;}" },
        { "btn_min", "QPushButton{border:none;background:transparent;}" },
        { "btn_close", "QPushButton{border:none;background:transparent;}" },
        { "btn_af", "QPushButton{image: url(:/img/AF.png);background-color:black;}" },
        { "btn_ai", "QPushButton{image: url(:/img/Framing.png);background-color:black;}" },
        { "btn_push", "QPushButton{image: url(:/img/Push.png);background-color:black;}" },
        { "btn_num0", "QPushButton{image: url(:/img/0.png);background-color:black;}" },
        { "btn_num1", "QPushButton{image: url(:/img/1.png);background-color:black;}" },
        { "btn_num2", "QPushButton{image: url(:/img/2.png);background-color:black;}" },
        { "btn_num3", "QPushButton{image: url(:/img/3.png);background-color:black;}" },
        { "btn_num4", "QPushButton{image: url(:/img/4.png);background-color:black;}" },
        { "btn_num5", "QPushButton{image: url(:/img/5.png);background-color:black;}" },
        { "btn_num6", "QPushButton{image: url(:/img/6.png);background-color:black;}" },
        { "btn_num7", "QPushButton{image: url(:/img/7.png);background-color:black;}" },
        { "btn_num8", "QPushButton{image: url(:/img/8.png);background-color:black;}" },
        { "btn_num9", "QPushButton{image: url(:/img/9.png);background-color:black;}" },
        { "btn_set", "QPushButton{image: url(:/img/Set.png);background-color:black;}" },
        { "btn_clear", "QPushButton{image: url(:/img/Clear.png);background-color:black;}" },
        { "btn_flip", "QPushButton{image: url(:/img/Flip.png);background-color:black;}" },
        { "btn_home", "QPushButton{image: url(:/img/HOME.png);background-color:black;}" },
        { "btn_mirror", "QPushButton{image: url(:/img/Mirror.png);background-color:black;}" },
        { "btn_setting", "QPushButton{border:none;background:transparent;}" },
        { "btn_default", "QPushButton{image: url(:/img/Default.png);background-color:black;}" },
        { "btn_ok", "QPushButton{image: url(:/img/OK.png);background-color:black;}" },
        { "btn_cam1",
            "QPushButton{image: url(:/img/cam1_black.png);background-color:transparent;}" },
        { "btn_cam2",
            "QPushButton{image: url(:/img/cam2_black.png);background-color:transparent;}" },
        { "btn_cam3",
            "QPushButton{image: url(:/img/cam3_black.png);background-color:transparent;}" },
        { "btn_cam4",
            "QPushButton{image: url(:/img/cam4_black.png);background-color:transparent;}" },
        { "btn_cam5",
            "QPushButton{image: url(:/img/cam5_black.png);background-color:transparent;}" },
    };
    for (const auto &row : rows)
        EXPECT_EQ(sheetOf(row.name), row.sheet) << row.name;
    EXPECT_EQ(std::size(rows), 30U);
}

TEST_F(StartTest, EverythingButAButtonKeepsTheFormsStyle)
{
    EXPECT_EQ(window->styleSheet(), form_tables::windowSheet);
    auto rows = form_tables::leftPanel(form());
    const auto right = form_tables::rightPanel(form());
    rows.insert(rows.end(), right.begin(), right.end());
    int kept = 0;
    for (const auto &row : rows) {
        if (std::strcmp(row.className, form_tables::button) == 0)
            continue;
        EXPECT_EQ(row.widget->styleSheet(), row.styleSheet) << row.name;
        ++kept;
    }
    EXPECT_EQ(kept, 19);
}

TEST_F(StartTest, LensSlidersRestAt45AndTheFocusIsAutomatic)
{
    for (const QSlider *slider : { form().slider_zoom, form().slider_focus }) {
        EXPECT_EQ(slider->sliderPosition(), 45);
        EXPECT_EQ(slider->value(), 45);
        EXPECT_EQ(slider->pageStep(), 0);
        EXPECT_EQ(slider->minimum(), 0);
        EXPECT_EQ(slider->maximum(), 99);
    }
    EXPECT_FALSE(form().slider_focus->isEnabled());
    EXPECT_TRUE(form().slider_zoom->isEnabled());
}

TEST_F(StartTest, TrayIconIsShown)
{
    const QSystemTrayIcon *icon = Probe::trayIcon(*window);
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(icon->parent(), window.get());
    EXPECT_TRUE(icon->isVisible());
    EXPECT_FALSE(icon->icon().isNull());
    EXPECT_TRUE(icon->icon().availableSizes().contains(QSize(16, 16)));
}

TEST_F(StartTest, NoCameraNoticeWaitsHidden)
{
    const NO_Device *notice = Probe::noDeviceDialog(*window);
    ASSERT_NE(notice, nullptr);
    EXPECT_EQ(notice->parent(), nullptr);
    EXPECT_TRUE(notice->isHidden());
    EXPECT_EQ(notice->pos(), QPoint(163, 93));
    EXPECT_TRUE(notice->windowFlags().testFlag(Qt::WindowStaysOnTopHint))
        << "made after the window has asked for notices on top";
    EXPECT_EQ(Probe::noMoreCameraDialog(*window), nullptr);
}

TEST_F(StartTest, EverySlotConnectedByNameHasItsControlAndSignal)
{
    const QMetaObject &meta = MainWindow::staticMetaObject;
    int connected = 0;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QByteArray slot = meta.method(index).methodSignature();
        // on_activatedSysTrayIcon belongs to no widget.
        const int separator = slot.lastIndexOf('_', slot.indexOf('('));
        if (!slot.startsWith("on_") || separator <= 3)
            continue;
        const QByteArray object = slot.mid(3, separator - 3);
        const QByteArray signal = slot.mid(separator + 1);
        const auto *control = window->findChild<QWidget *>(QLatin1String(object));
        ASSERT_NE(control, nullptr) << slot.constData();
        // A slot may leave out the signal's arguments, as those for clicked(bool) do.
        EXPECT_NE(control->metaObject()->indexOfSignal(signal), -1) << slot.constData();
        ++connected;
    }
    EXPECT_EQ(connected, 45);
}

// Pictures ---------------------------------------------------------------------------------------

void expectPicturesOf(const QString &sheet)
{
    QRegularExpressionMatchIterator paths =
        QRegularExpression(QStringLiteral("url\\(([^)]*)\\)")).globalMatch(sheet);
    while (paths.hasNext()) {
        const QString path = paths.next().captured(1);
        EXPECT_TRUE(QFile::exists(path)) << qPrintable(path);
    }
}

TEST_F(StartTest, EveryPictureOfAStyleSheetExists)
{
    expectPicturesOf(window->styleSheet());
    for (const QWidget *widget : window->findChildren<QWidget *>())
        expectPicturesOf(widget->styleSheet());

    for (const char *sheet : { form_tables::settingSlider, form_tables::focusSlider,
             form_tables::zoomSlider, form_tables::windowSheet })
        expectPicturesOf(QLatin1String(sheet));

    for (const QString &sheet :
        { style_sheets::muted(), style_sheets::notMuted(), style_sheets::onTop(),
            style_sheets::notOnTop(), style_sheets::onTopAtStart(), style_sheets::autoFocus(),
            style_sheets::manualFocus(), style_sheets::framing(), style_sheets::manualFraming() })
        expectPicturesOf(sheet);
    for (int camera = 1; camera <= 5; ++camera) {
        expectPicturesOf(style_sheets::cameraFace(camera, true));
        expectPicturesOf(style_sheets::cameraFace(camera, false));
    }
}

TEST(StyleSheets, ReadToTheCharacter)
{
    using namespace style_sheets;
    const struct
    {
        QString sheet;
        const char *text;
    } rows[] = {
        { muted(),
            "QPushButton{border-image: url(:/img/mute.png);background-attachment;border:none;}" },
        { notMuted(),
            "QPushButton{border-image: "
            "url(:/img/no_mute.png);background-attachment;border:none;}" },
        { onTop(),
            "QPushButton{border-image: url(:/img/top.png);background-attachment;border:none;}" },
        { notOnTop(),
            "QPushButton{border-image: "
            "url(:/img/no_top.png);background-attachment;border:none;}" },
        { autoFocus(), "QPushButton{image: url(:/img/AF.png);background-color:black;}" },
        { manualFocus(), "QPushButton{image: url(:/img/MF.png);background-color:black;}" },
        { framing(), "QPushButton{image: url(:/img/Framing.png);background-color:black;}" },
        { manualFraming(), "QPushButton{image: url(:/img/Manual.png);background-color:black;}" },
        { cameraFace(3, true),
            "QPushButton{image: url(:/img/cam3_green.png);background-color:transparent;}" },
        { cameraFace(5, false),
            "QPushButton{image: url(:/img/cam5_black.png);background-color:transparent;}" },
    };
    for (const auto &row : rows)
        EXPECT_EQ(row.sheet.toStdString(), row.text);
}

} // namespace
