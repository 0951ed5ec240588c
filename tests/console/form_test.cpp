// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The form as the form compiler builds it, before the window changes anything.

#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QTranslator>

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "tests/console/form_tables.h"

namespace {

using form_tables::Row;

class FormTest : public testing::Test
{
protected:
    FormTest()
    {
        form.setupUi(&window);
        rows = form_tables::leftPanel(form);
        const std::vector<Row> right = form_tables::rightPanel(form);
        rows.insert(rows.end(), right.begin(), right.end());
    }

    /// Calls `check(widget, row)` for each widget of that class; `count` says how many there are.
    template<typename Widget, typename Check> void forEach(size_t count, Check check)
    {
        size_t found = 0;
        for (const Row &row : rows) {
            auto *widget = window.findChild<Widget *>(QLatin1String(row.name));
            if (std::strcmp(row.className, Widget::staticMetaObject.className()) != 0)
                continue;
            ASSERT_NE(widget, nullptr) << row.name;
            check(widget, row);
            ++found;
        }
        EXPECT_EQ(found, count);
    }

    QMainWindow window;
    Ui::MainWindow form;
    std::vector<Row> rows;
};

void expectPanel(const QWidget *panel, const char *name, const QRect &geometry,
    const QWidget *parent, const std::vector<Row> &rows)
{
    EXPECT_STREQ(panel->metaObject()->className(), "QWidget");
    EXPECT_EQ(panel->objectName(), name);
    EXPECT_EQ(panel->geometry(), geometry);
    EXPECT_EQ(panel->parent(), parent);
    EXPECT_EQ(panel->styleSheet(), "");

    ASSERT_EQ(panel->children().size(), static_cast<int>(rows.size())) << name;
    for (size_t index = 0; index < rows.size(); ++index) {
        const Row &row = rows[index];
        const QObject *child = panel->children().at(static_cast<int>(index));
        EXPECT_EQ(child->objectName(), row.name) << "created as number " << index;
        EXPECT_EQ(child, row.widget) << row.name;
        EXPECT_STREQ(child->metaObject()->className(), row.className) << row.name;
    }
}

TEST_F(FormTest, CreatesEveryWidgetInItsPanelInOrder)
{
    EXPECT_EQ(rows.size(), 49U);
    expectPanel(form.Win_Left, "Win_Left", { 0, 0, 326, 436 }, form.centralwidget,
        form_tables::leftPanel(form));
    expectPanel(form.Win_Right, "Win_Right", { 326, 0, 327, 436 }, form.centralwidget,
        form_tables::rightPanel(form));
    EXPECT_EQ(form.centralwidget->children(), (QObjectList{ form.Win_Left, form.Win_Right }));
}

TEST_F(FormTest, NamesAndSizesTheWindow)
{
    EXPECT_EQ(window.objectName(), "MainWindow");
    EXPECT_EQ(window.size(), QSize(653, 436));
    EXPECT_EQ(window.windowTitle(), "MainWindow");
    EXPECT_EQ(window.focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(window.styleSheet(), form_tables::windowSheet);
    EXPECT_EQ(window.centralWidget(), form.centralwidget);
    EXPECT_EQ(form.centralwidget->objectName(), "centralwidget");
    EXPECT_STREQ(form.centralwidget->metaObject()->className(), "QWidget");
    EXPECT_EQ(form.centralwidget->styleSheet(), "");
}

TEST_F(FormTest, PlacesEveryWidget)
{
    for (const Row &row : rows)
        EXPECT_EQ(row.widget->geometry(), row.geometry) << row.name;
}

TEST_F(FormTest, GivesEveryWidgetItsStyleToTheCharacter)
{
    for (const Row &row : rows)
        EXPECT_EQ(row.widget->styleSheet().toStdString(), row.styleSheet) << row.name;
}

TEST_F(FormTest, GivesEveryWidgetItsFont)
{
    for (const Row &row : rows) {
        EXPECT_EQ(row.widget->testAttribute(Qt::WA_SetFont), row.font != nullptr) << row.name;
        if (row.font == nullptr)
            continue;
        const QFont font = row.widget->font();
        const QString family =
            row.font->family != nullptr ? QString(row.font->family) : QApplication::font().family();
        EXPECT_EQ(font.family(), family) << row.name;
        EXPECT_EQ(font.pointSize(), row.font->pointSize) << row.name;
        EXPECT_EQ(font.bold(), row.font->bold) << row.name;
        EXPECT_EQ(font.weight(), row.font->bold ? QFont::Bold : QFont::Normal) << row.name;
        EXPECT_EQ(font.kerning(), row.font->kerning) << row.name;
        EXPECT_FALSE(font.italic()) << row.name;
        EXPECT_FALSE(font.underline()) << row.name;
        EXPECT_FALSE(font.strikeOut()) << row.name;
    }
}

TEST_F(FormTest, ButtonsAreFlatAndWithoutText)
{
    QDialog dialog; // only in a dialog does a button become the default one by itself
    forEach<QPushButton>(30, [&](QPushButton *button, const Row &row) {
        EXPECT_TRUE(button->isFlat()) << row.name;
        EXPECT_FALSE(button->isCheckable()) << row.name;
        EXPECT_FALSE(button->autoFillBackground()) << row.name;
        EXPECT_EQ(button->text(), "") << row.name;
        const bool inSettings = button->parent() == form.Win_Right;
        button->setParent(&dialog);
        EXPECT_EQ(button->autoDefault(), !inSettings) << row.name;
    });
    EXPECT_EQ(form.label_ptz->text(), "");
}

TEST_F(FormTest, LensSlidersAreVerticalAndSettingSlidersHorizontal)
{
    forEach<QSlider>(9, [&](const QSlider *slider, const Row &row) {
        const bool lens = slider->parent() == form.Win_Left;
        EXPECT_EQ(slider->orientation(), lens ? Qt::Vertical : Qt::Horizontal) << row.name;
        EXPECT_EQ(slider->minimum(), 0) << row.name;
        EXPECT_EQ(slider->maximum(), 99) << row.name;
        EXPECT_EQ(slider->value(), 0) << row.name;
        EXPECT_EQ(slider->singleStep(), 1) << row.name;
        EXPECT_EQ(slider->pageStep(), 10) << row.name;
    });
}

TEST_F(FormTest, ValueBoxesAreReadOnlyAndReadZero)
{
    forEach<QLineEdit>(7, [](const QLineEdit *box, const Row &row) {
        EXPECT_TRUE(box->isReadOnly()) << row.name;
        EXPECT_EQ(box->text(), "0") << row.name;
    });
}

TEST_F(FormTest, ComboBoxOffersTheMainsFrequencies)
{
    ASSERT_EQ(form.cb_fliker->count(), 3);
    EXPECT_EQ(form.cb_fliker->itemText(0), "OFF");
    EXPECT_EQ(form.cb_fliker->itemText(1), "50HZ");
    EXPECT_EQ(form.cb_fliker->itemText(2), "60HZ");
    EXPECT_EQ(form.cb_fliker->currentIndex(), 0);
}

TEST_F(FormTest, JoystickLiesOverItsLabelAndTakesTheMouse)
{
    EXPECT_EQ(form.widget->minimumSize(), QSize(0, 0));
    EXPECT_EQ(form.widget->geometry(), form.label_ptz->geometry());
    EXPECT_EQ(form.Win_Left->childAt(QPoint(100, 114)), form.widget);
}

TEST_F(FormTest, OnlyTabMovesTheKeyboardToAControl)
{
    forEach<QPushButton>(30, [](const QPushButton *button, const Row &row) {
        EXPECT_EQ(button->focusPolicy(), Qt::TabFocus) << row.name;
    });
    forEach<QSlider>(9, [](const QSlider *slider, const Row &row) {
        EXPECT_EQ(slider->focusPolicy(), Qt::NoFocus) << row.name;
    });
    forEach<QLineEdit>(7, [](const QLineEdit *box, const Row &row) {
        EXPECT_EQ(box->focusPolicy(), Qt::NoFocus) << row.name;
    });
    EXPECT_EQ(form.cb_fliker->focusPolicy(), Qt::TabFocus);
    EXPECT_EQ(form.widget->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(form.label_ptz->focusPolicy(), Qt::NoFocus);
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
    std::set<QString> names;
    std::set<QString> descriptions;
    const auto expectOwn = [&](const QWidget *widget, const char *name) {
        EXPECT_TRUE(names.insert(widget->accessibleName()).second) << name;
        EXPECT_TRUE(descriptions.insert(widget->accessibleDescription()).second) << name;
        EXPECT_NE(widget->accessibleName(), "") << name;
        EXPECT_NE(widget->accessibleDescription(), "") << name;
    };
    for (const Row &row : rows) {
        EXPECT_EQ(row.widget->accessibleName(), row.accessibleName) << row.name;
        if (row.widget != form.label_ptz)
            expectOwn(row.widget, row.name);
    }
    expectOwn(&window, "the window");
    expectOwn(form.Win_Left, "the left panel");
    expectOwn(form.Win_Right, "the right panel");
}

/// Translates the window's texts, and no others.
class Listener : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        if (std::strcmp(context, "MainWindow") != 0)
            return {};
        heard.insert(text);
        return QString::fromLatin1("<%1>").arg(QLatin1String(text));
    }
    mutable std::set<std::string> heard;
};

TEST_F(FormTest, EveryTextIsTranslatedInTheContextOfTheWindow)
{
    Listener listener;
    QCoreApplication::installTranslator(&listener);
    form.retranslateUi(&window);
    QCoreApplication::removeTranslator(&listener);

    EXPECT_EQ(window.windowTitle(), "<MainWindow>");
    EXPECT_EQ(form.cb_fliker->itemText(0), "<OFF>");
    EXPECT_EQ(form.cb_fliker->itemText(1), "<50HZ>");
    EXPECT_EQ(form.cb_fliker->itemText(2), "<60HZ>");
    for (const Row &row : rows) {
        if (const auto *box = qobject_cast<const QLineEdit *>(row.widget)) {
            EXPECT_EQ(box->text(), "<0>") << row.name;
        }
        if (*row.accessibleName != '\0') {
            EXPECT_EQ(listener.heard.count(row.accessibleName), 1U) << row.name;
        }
    }
}

} // namespace
