// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the window makes of its form at start. The poll, half a second later, does not come.

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTimer>

#include <gtest/gtest.h>

#include "console/console_state.h"
#include "tests/console/main_window_probe.h"
#include "tests/console/sheets.h"
#include "ui_main_window.h"
#include "widgets/no_device.h"
#include "widgets/notice_state.h"
#include "widgets/style_sheets.h"

inline void PrintTo(const QString &text, std::ostream *stream) { *stream << text.toStdString(); }

namespace {

using Probe = MainWindowProbe;

class InitialAppearance : public testing::Test
{
protected:
    InitialAppearance()
    {
        main_position_x = main_position_y = 0;
        TopFlag = Top2Flag = 0;
        right_flag = 1;
        window = std::make_unique<MainWindow>();
        Probe::timer(*window)->stop();
    }
    ~InitialAppearance() override { delete Probe::noDeviceDialog(*window); }

    const Ui::MainWindow &form() { return Probe::form(*window); }

    std::unique_ptr<MainWindow> window;
};

TEST_F(InitialAppearance, WindowIsFramelessTranslucentAndOfTheFormsSizeForGood)
{
    EXPECT_EQ(window->windowFlags(), Qt::Window | Qt::FramelessWindowHint);
    EXPECT_TRUE(window->testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_Use96Dpi));
    EXPECT_TRUE(window->isHidden()) << "main shows it";
    EXPECT_TRUE(form().Win_Right->isHidden());
    EXPECT_TRUE(form().Win_Right->isEnabled());
    EXPECT_FALSE(form().Win_Left->isHidden());
    EXPECT_EQ(right_flag, 0);
    EXPECT_FALSE(Probe::topState(*window));
    window->show();
    for (const bool settings : { false, true, false }) {
        form().Win_Right->setVisible(settings);
        QCoreApplication::processEvents();
        EXPECT_EQ(window->size(), QSize(653, 436));
        EXPECT_EQ(window->minimumSize(), window->size());
        EXPECT_EQ(window->maximumSize(), window->size());
    }
}

TEST_F(InitialAppearance, EveryButtonGetsItsFaceAndAllElseKeepsTheFormsStyle)
{
    std::map<QString, QString> faces = { { "btn_mute", sheets::sign("mute") },
        { "btn_top", sheets::topAtStart }, { "btn_min", sheets::invisible },
        { "btn_close", sheets::invisible }, { "btn_setting", sheets::invisible },
        { "btn_ai", sheets::key("Framing") }, { "btn_home", sheets::key("HOME") },
        { "btn_af", sheets::key("AF") }, { "btn_ok", sheets::key("OK") } };
    for (const QString name : { "Push", "Set", "Clear", "Flip", "Mirror", "Default" })
        faces["btn_" + name.toLower()] = sheets::key(name);
    for (int digit = 0; digit < 10; ++digit)
        faces["btn_num" + QString::number(digit)] = sheets::key(QString::number(digit));
    for (int camera = 1; camera <= 5; ++camera)
        faces["btn_cam" + QString::number(camera)] = sheets::camera(camera, false);

    QMainWindow plainWindow;
    Ui::MainWindow plainForm;
    plainForm.setupUi(&plainWindow);
    EXPECT_EQ(window->styleSheet(), plainWindow.styleSheet());
    std::size_t buttons = 0;
    for (const QWidget *plain : plainWindow.findChildren<QWidget *>()) {
        const auto *const widget = window->findChild<QWidget *>(plain->objectName());
        const auto face = faces.find(plain->objectName());
        buttons += face != faces.end() ? 1U : 0U;
        EXPECT_EQ(widget->styleSheet(), face != faces.end() ? face->second : plain->styleSheet())
            << qPrintable(plain->objectName());
    }
    EXPECT_EQ(buttons, 30U);
}

TEST_F(InitialAppearance, LensSlidersRestAt45AndTheFocusIsAutomatic)
{
    for (const QSlider *slider : { form().slider_zoom, form().slider_focus }) {
        EXPECT_EQ((std::vector{ slider->sliderPosition(), slider->value(), slider->pageStep(),
                      slider->minimum(), slider->maximum() }),
            (std::vector{ 45, 45, 0, 0, 99 }));
    }
    EXPECT_FALSE(form().slider_focus->isEnabled());
    EXPECT_TRUE(form().slider_zoom->isEnabled());
}

TEST_F(InitialAppearance, TrayIconIsShownWithItsOwnPicture)
{
    const QSystemTrayIcon *const tray = Probe::trayIcon(*window);
    EXPECT_EQ(tray->parent(), window.get());
    EXPECT_TRUE(tray->isVisible());
    const QIcon picture(":/img/min_img.ico");
    EXPECT_FALSE(picture.availableSizes().isEmpty());
    EXPECT_EQ(tray->icon().availableSizes(), picture.availableSizes());
    for (const QSize &size : picture.availableSizes())
        EXPECT_EQ(tray->icon().pixmap(size).toImage(), picture.pixmap(size).toImage());
}

TEST_F(InitialAppearance, NoCameraNoticeWaitsHidden)
{
    const NO_Device *const notice = Probe::noDeviceDialog(*window);
    ASSERT_NE(notice, nullptr);
    EXPECT_EQ(notice->parent(), nullptr);
    EXPECT_TRUE(notice->isHidden());
    EXPECT_EQ(notice->pos(), QPoint(163, 93));
    EXPECT_TRUE(notice->windowFlags().testFlag(Qt::WindowStaysOnTopHint))
        << "made after the flags were set";
}

TEST_F(InitialAppearance, EveryPictureOfAStyleSheetExists)
{
    using namespace style_sheets;
    QStringList all = { window->styleSheet(), muted(), notMuted(), onTop(), notOnTop(),
        onTopAtStart(), autoFocus(), manualFocus(), framing(), manualFraming() };
    for (const QWidget *widget : window->findChildren<QWidget *>())
        all += widget->styleSheet();
    for (int camera = 1; camera <= 5; ++camera)
        all += cameraFace(camera, true);
    auto pictures = QRegularExpression("url\\(([^)]*)\\)").globalMatch(all.join('\n'));
    int found = 0;
    for (; pictures.hasNext(); ++found) {
        const QString path = pictures.next().captured(1);
        EXPECT_TRUE(QFile::exists(path)) << qPrintable(path);
    }
    EXPECT_GT(found, 40);
}

// A flat button paints its background only while it is pressed.
TEST_F(InitialAppearance, PressedKeyIsBlackAndAFocusedOneLooksLikeAnyOther)
{
    form().Win_Right->show();
    window->show();
    QApplication::setActiveWindow(window.get());
    const auto onRed = [](QPushButton *button) {
        QImage image(button->size(), QImage::Format_RGB32);
        image.fill(Qt::red);
        button->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image;
    };
    for (QPushButton *button : window->findChildren<QPushButton *>()) {
        if (!button->styleSheet().contains("background-color:black"))
            continue;
        SCOPED_TRACE(button->objectName().toStdString());
        const QPoint corner(3, 3); // beside every label
        window->setFocus();
        const QImage idle = onRed(button);
        button->setDown(true);
        const QImage pressed = onRed(button);
        button->setDown(false);
        EXPECT_EQ(idle.pixelColor(corner), QColor(Qt::red));
        EXPECT_EQ(pressed.pixelColor(corner), QColor(Qt::black));
        button->setFocus(Qt::TabFocusReason);
        EXPECT_TRUE(button->hasFocus());
        EXPECT_EQ(onRed(button), idle);
    }
}

} // namespace
