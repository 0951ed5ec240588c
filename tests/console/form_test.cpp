// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The form as the form compiler builds it, before the window changes anything.

#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QTranslator>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "ui_main_window.h"

inline void PrintTo(const QString &text, std::ostream *stream) { *stream << text.toStdString(); }

namespace {

struct Row
{
    const char *name;
    QRect geometry;
};

// In the order of creation: a later sibling lies above an earlier one.
const std::vector<Row> leftPanel = { { "btn_push", { 224, 198, 70, 26 } },
    { "label_ptz", { 42, 56, 116, 116 } }, { "btn_mirror", { 224, 342, 70, 26 } },
    { "btn_ai", { 129, 198, 70, 26 } }, { "btn_num3", { 224, 226, 70, 26 } },
    { "btn_num4", { 33, 255, 70, 26 } }, { "btn_cam3", { 132, 386, 63, 52 } },
    { "btn_num9", { 224, 284, 70, 26 } }, { "btn_num1", { 33, 226, 70, 26 } },
    { "btn_cam1", { -1, 386, 74, 52 } }, { "btn_set", { 33, 312, 70, 26 } },
    { "btn_num2", { 129, 226, 70, 26 } }, { "btn_num8", { 129, 284, 70, 26 } },
    { "btn_cam4", { 193, 386, 63, 52 } }, { "btn_min", { 248, 6, 25, 20 } },
    { "btn_clear", { 224, 312, 70, 26 } }, { "btn_home", { 129, 342, 70, 26 } },
    { "btn_mute", { 184, 12, 20, 13 } }, { "btn_setting", { 295, 360, 21, 21 } },
    { "slider_focus", { 278, 50, 22, 120 } }, { "btn_close", { 280, 6, 25, 20 } },
    { "btn_cam2", { 71, 386, 63, 52 } }, { "btn_num0", { 129, 312, 70, 26 } },
    { "slider_zoom", { 226, 50, 22, 120 } }, { "btn_top", { 218, 10, 17, 17 } },
    { "btn_cam5", { 254, 386, 74, 52 } }, { "btn_num6", { 224, 255, 70, 26 } },
    { "btn_af", { 33, 198, 70, 26 } }, { "widget", { 42, 56, 116, 116 } },
    { "btn_flip", { 33, 342, 70, 26 } }, { "btn_num5", { 129, 255, 70, 26 } },
    { "btn_num7", { 33, 284, 70, 26 } } };
const std::vector<Row> rightPanel = { { "cb_fliker", { 230, 330, 65, 22 } },
    { "slider_blc", { 95, 32, 149, 22 } }, { "slider_contrast", { 95, 117, 149, 22 } },
    { "v_blc", { 280, 32, 40, 22 } }, { "v_saturation", { 280, 160, 40, 22 } },
    { "slider_sharpness", { 95, 246, 149, 22 } }, { "v_gamma", { 280, 74, 40, 22 } },
    { "btn_ok", { 175, 398, 88, 25 } }, { "v_contrast", { 280, 117, 40, 22 } },
    { "slider_gamma", { 95, 74, 149, 22 } }, { "v_brightness", { 280, 202, 40, 22 } },
    { "slider_brightness", { 95, 202, 149, 22 } }, { "v_wb", { 280, 289, 40, 22 } },
    { "slider_wb", { 95, 289, 149, 22 } }, { "btn_default", { 62, 398, 88, 25 } },
    { "slider_saturation", { 95, 160, 149, 22 } }, { "v_sharpness", { 280, 246, 40, 22 } } };

const char *const grayText = "color: rgb(205, 205, 205);";
const char *const valueBox = "background-color: rgb(90, 89, 89);\ncolor: rgb(255, 255, 255);\n"
                             "border-radius:3px;qproperty-alignment:AlignHCenter;";
const char *const settingSlider =
    "QSlider::groove:horizontal {\n    border-image: url(:/img/slider_bg.png) 1 1;\n"
    "    background-attachment;\n    border-width: 1 1;\n    height:5px; \n}\n\n"
    "QSlider::handle:horizontal {\n     border: 0px ;                           \n"
    "     border-image:  url(:/img/slider_button.png);\n    background-attachment;    \n"
    "     width: 24px;                               \n     margin: -5px 0px -5px -2px;\n\n} \n\n"
    "QSlider::sub-page:horizontal {\n    background: qlineargradient(spread:pad, x1:0, y1:1, x2:0, "
    "y2:0, stop:0 #cacaca,  stop:1 #ffffff); \n}";
const char *const focusSlider =
    "QSlider::groove:vertical  {\n        height: 120px;\n        background: transparent       "
    "\n}\n"
    "QSlider::handle:vertical  {\n        image: url(:/img/slider_af.png);\n}";
const char *const zoomSlider =
    "QSlider::groove:vertical  {\n        height: 120px;\n        background: transparent       "
    "\n}\n"
    "QSlider::handle:vertical  {\n        image: url(:/img/slider_af.png);\n"
    "        background-attachment: ;\n}";

/// One panel's part of the window's style sheet.
QString panelSheet(const QString &panel, const QString &picture)
{
    return "#" + panel + "{\n\tbackground-image: url(:/img/" + picture
        + ".png);\n\tborder: 2px solid gray ;\n\tbackground-repeat:no-repeat;\n"
          "\tbackground-position:center; \n\tborder-radius: 32px;\n}\n";
}

struct Font
{
    const char *family; ///< null for the toolkit's default; without a size the form sets no font
    int pointSize = 0;
    bool bold = true;
    bool kerning = true;
};

/// What is common to all widgets whose names begin alike; the first match counts.
struct Kind
{
    const char *prefix;
    const char *className;
    Font font;
    const char *styleSheet;
    Qt::FocusPolicy focus;
};

const Kind kinds[] = {
    { "btn_cam", "QPushButton", { "AvantGarde CE", 10, false, false }, "", Qt::TabFocus },
    { "btn_min", "QPushButton", {}, "", Qt::TabFocus },
    { "btn_mute", "QPushButton", {}, "", Qt::TabFocus },
    { "btn_setting", "QPushButton", {}, "", Qt::TabFocus },
    { "btn_close", "QPushButton", {}, "", Qt::TabFocus },
    { "btn_top", "QPushButton", {}, "", Qt::TabFocus },
    { "btn_", "QPushButton", { "Arial Narrow", 10 }, grayText, Qt::TabFocus },
    { "slider_focus", "QSlider", {}, focusSlider, Qt::NoFocus },
    { "slider_zoom", "QSlider", {}, zoomSlider, Qt::NoFocus },
    { "slider_", "QSlider", {}, settingSlider, Qt::NoFocus },
    { "v_", "QLineEdit", { "Arial Narrow", 12 }, valueBox, Qt::NoFocus },
    { "cb_fliker", "QComboBox", { nullptr, 12 }, "", Qt::TabFocus },
    { "label_ptz", "QLabel", {}, "", Qt::NoFocus },
    { "widget", "RockerHandle", {}, "", Qt::NoFocus },
};

const Kind &kindOf(const QWidget *widget)
{
    const auto kind = std::find_if(std::begin(kinds), std::end(kinds), [&](const Kind &one) {
        return widget->objectName().startsWith(QLatin1String(one.prefix));
    });
    if (kind == std::end(kinds))
        throw std::logic_error(widget->objectName().toStdString());
    return *kind;
}

class FormTest : public testing::Test
{
protected:
    FormTest() { form.setupUi(&window); }

    /// Every widget of both panels, in the order of creation.
    std::vector<QWidget *> widgets()
    {
        std::vector<QWidget *> all;
        for (const QWidget *panel : { form.Win_Left, form.Win_Right })
            for (QObject *child : panel->children())
                all.push_back(qobject_cast<QWidget *>(child));
        return all;
    }
    void expectPanel(const QWidget *panel, const QRect &geometry, const std::vector<Row> &rows)
    {
        EXPECT_STREQ(panel->metaObject()->className(), "QWidget");
        EXPECT_EQ(panel->geometry(), geometry);
        EXPECT_EQ(panel->styleSheet(), "");
        ASSERT_EQ(panel->children().size(), static_cast<int>(rows.size()));
        for (std::size_t index = 0; index < rows.size(); ++index) {
            const auto *widget =
                qobject_cast<QWidget *>(panel->children()[static_cast<int>(index)]);
            const Row &row = rows[index];
            EXPECT_EQ(widget->objectName(), row.name) << "created as number " << index;
            EXPECT_STREQ(widget->metaObject()->className(), kindOf(widget).className) << row.name;
            EXPECT_EQ(widget->geometry(), row.geometry) << row.name;
        }
    }

    QMainWindow window;
    Ui::MainWindow form;
};

TEST_F(FormTest, CreatesEveryWidgetInItsPanelInOrderAndAtItsPlace)
{
    EXPECT_EQ(window.objectName(), "MainWindow");
    EXPECT_EQ(window.size(), QSize(653, 436));
    EXPECT_EQ(window.windowTitle(), "MainWindow");
    EXPECT_EQ(window.focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(window.styleSheet(),
        panelSheet("Win_Left", "background") + "\n"
            + panelSheet("Win_Right", "setting_background"));
    EXPECT_EQ(window.centralWidget(), form.centralwidget);
    EXPECT_EQ(form.centralwidget->objectName(), "centralwidget");
    EXPECT_STREQ(form.centralwidget->metaObject()->className(), "QWidget");
    EXPECT_EQ(form.centralwidget->styleSheet(), "");
    EXPECT_EQ(form.centralwidget->children(), (QObjectList{ form.Win_Left, form.Win_Right }));
    expectPanel(form.Win_Left, { 0, 0, 326, 436 }, leftPanel);
    expectPanel(form.Win_Right, { 326, 0, 327, 436 }, rightPanel);
    EXPECT_EQ(form.Win_Left->childAt(QPoint(100, 114)), form.widget) << "above its label";
    EXPECT_EQ(form.widget->minimumSize(), QSize(0, 0));
}

TEST_F(FormTest, GivesEveryWidgetTheStyleFontAndFocusPolicyOfItsKind)
{
    for (const QWidget *widget : widgets()) {
        SCOPED_TRACE(widget->objectName().toStdString());
        const Kind &kind = kindOf(widget);
        EXPECT_EQ(widget->styleSheet(), kind.styleSheet);
        EXPECT_EQ(widget->focusPolicy(), kind.focus);
        EXPECT_EQ(widget->testAttribute(Qt::WA_SetFont), kind.font.pointSize > 0);
        if (kind.font.pointSize == 0)
            continue;
        const QFont font = widget->font();
        EXPECT_EQ(
            font.family(), kind.font.family ? kind.font.family : QApplication::font().family());
        EXPECT_EQ(font.pointSize(), kind.font.pointSize);
        EXPECT_EQ(font.weight(), kind.font.bold ? QFont::Bold : QFont::Normal);
        EXPECT_EQ(font.kerning(), kind.font.kerning);
        EXPECT_FALSE(font.italic() || font.underline() || font.strikeOut());
    }
}

TEST_F(FormTest, GivesEveryWidgetTheOtherPropertiesOfItsClass)
{
    QDialog dialog; // only in a dialog does a button become the default one by itself
    for (QWidget *widget : widgets()) {
        SCOPED_TRACE(widget->objectName().toStdString());
        const bool inSettings = widget->parent() == form.Win_Right;
        if (auto *const button = qobject_cast<QPushButton *>(widget)) {
            EXPECT_TRUE(button->isFlat());
            EXPECT_FALSE(button->isCheckable() || button->autoFillBackground());
            EXPECT_EQ(button->text(), "");
            button->setParent(&dialog);
            EXPECT_EQ(button->autoDefault(), !inSettings);
        } else if (const auto *const slider = qobject_cast<QSlider *>(widget)) {
            EXPECT_EQ(slider->orientation(), inSettings ? Qt::Horizontal : Qt::Vertical);
            EXPECT_EQ((std::vector{ slider->minimum(), slider->maximum(), slider->value(),
                          slider->singleStep(), slider->pageStep() }),
                (std::vector{ 0, 99, 0, 1, 10 }));
        } else if (const auto *const box = qobject_cast<QLineEdit *>(widget)) {
            EXPECT_TRUE(box->isReadOnly());
            EXPECT_EQ(box->text(), "0");
        }
    }
    EXPECT_EQ(form.label_ptz->text(), "");
    EXPECT_EQ(form.cb_fliker->count(), 3);
    EXPECT_EQ(form.cb_fliker->currentIndex(), 0);
}

TEST_F(FormTest, TabGoesThroughTheControlsInReadingOrder)
{
    QStringList order;
    for (QWidget *next = window.nextInFocusChain(); next != &window;
        next = next->nextInFocusChain()) {
        if (next->focusPolicy() == Qt::TabFocus)
            order.append(next->objectName());
    }
    EXPECT_EQ(order.join(' ').toStdString(),
        "btn_mute btn_top btn_min btn_close btn_af btn_ai btn_push btn_num1 btn_num2 btn_num3 "
        "btn_num4 btn_num5 btn_num6 btn_num7 btn_num8 btn_num9 btn_set btn_num0 btn_clear "
        "btn_flip btn_home btn_mirror btn_setting btn_cam1 btn_cam2 btn_cam3 btn_cam4 btn_cam5 "
        "cb_fliker btn_default btn_ok");
}

TEST_F(FormTest, EveryControlHasANameAndADescriptionOfItsOwn)
{
    std::set<QString> names, descriptions;
    std::vector<QWidget *> described = widgets();
    described.insert(described.end(), { &window, form.Win_Left, form.Win_Right });
    for (const QWidget *widget : described) {
        if (widget == form.label_ptz)
            continue;
        EXPECT_TRUE(names.insert(widget->accessibleName()).second)
            << qPrintable(widget->objectName());
        EXPECT_TRUE(descriptions.insert(widget->accessibleDescription()).second)
            << qPrintable(widget->objectName());
    }
    EXPECT_EQ(names.count("") + descriptions.count(""), 0U);
}

/// Translates the window's texts, and no others.
class Brackets : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return std::strcmp(context, "MainWindow") == 0 ? '<' + QString(text) + '>' : QString();
    }
};

TEST_F(FormTest, EveryTextIsTranslatedInTheContextOfTheWindow)
{
    Brackets brackets;
    QCoreApplication::installTranslator(&brackets);
    form.retranslateUi(&window);
    EXPECT_EQ(window.windowTitle(), "<MainWindow>");
    for (int index = 0; index < 3; ++index)
        EXPECT_EQ(
            form.cb_fliker->itemText(index), (QStringList{ "<OFF>", "<50HZ>", "<60HZ>" })[index]);
    for (const QWidget *widget : widgets()) {
        SCOPED_TRACE(widget->objectName().toStdString());
        if (widget != form.label_ptz) {
            EXPECT_TRUE(widget->accessibleName().startsWith('<'));
            EXPECT_TRUE(widget->accessibleDescription().startsWith('<'));
        }
        if (const auto *const box = qobject_cast<const QLineEdit *>(widget)) {
            EXPECT_EQ(box->text(), "<0>");
        }
    }
}

} // namespace
