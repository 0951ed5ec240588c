// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a title bar would do: dragging and docking at the screen's edges. And the background.

#include <QApplication>
#include <QDesktopWidget>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/widgets/mouse.h"
#include "widgets/no_device.h"
#include "widgets/notice_state.h"
#include "widgets/rocker_handle.h"

namespace {

class Chrome : public PanelTest
{
protected:
    Chrome()
    {
        plugIn(0);
        makeWindow();
    }
};

// Docking

class Docking : public Chrome
{
protected:
    ~Docking() override { QApplication::desktop()->resize(desktopBefore); }

    QPoint after(QEvent::Type type)
    {
        QEvent event(type);
        QCoreApplication::sendEvent(window.get(), &event);
        return window->pos();
    }
    QPoint after(QEvent::Type type, const QPoint &start)
    {
        window->move(start);
        return after(type);
    }

    const QSize desktopBefore = QApplication::desktop()->size();
};

TEST_F(Docking, MovesTheWindowWhenThePointerLeavesAndComesBack)
{
    constexpr int hidden = 0; // values of right_flag; all but 1 are hidden
    constexpr int shown = 1;
    const struct
    {
        QPoint start;
        int flag;
        QPoint onLeave;
        QPoint onEnter;
    } rows[] = {
        // Away from the edges; the lower edge docks nothing.
        { { 0, 0 }, hidden, { 0, 0 }, { 0, 0 } },
        { { 0, 0 }, shown, { 0, 0 }, { 0, 0 } },
        { { 100, 2000 }, shown, { 100, 2000 }, { 100, 2000 } },
        // Top edge.
        { { 100, -100 }, hidden, { 100, -426 }, { 100, -10 } },
        { { 100, -1 }, shown, { 100, -426 }, { 100, -10 } },
        { { 100, -426 }, hidden, { 100, -426 }, { 100, -10 } },
        // Left edge.
        { { -50, 40 }, hidden, { -317, 40 }, { -10, 40 } },
        { { -50, 40 }, shown, { -643, 40 }, { -10, 40 } },
        { { -1, 40 }, hidden, { -317, 40 }, { -10, 40 } },
        { { -1, 40 }, shown, { -643, 40 }, { -10, 40 } },
        { { -317, 40 }, hidden, { -317, 40 }, { -10, 40 } },
        { { -643, 40 }, shown, { -643, 40 }, { -10, 40 } },
        { { -50, 40 }, 2, { -317, 40 }, { -10, 40 } },
        // Right edge: the last pixel at 1915, 1910 and 1911, of the left panel alone 327 less.
        { { 1915 - 652, 40 }, shown, { 1910, 40 }, { 1267, 40 } },
        { { 1910 - 652, 40 }, shown, { 1258, 40 }, { 1258, 40 } },
        { { 1911 - 652, 40 }, shown, { 1910, 40 }, { 1267, 40 } },
        { { 1910, 40 }, shown, { 1910, 40 }, { 1267, 40 } },
        { { 1700, 40 }, hidden, { 1910, 40 }, { 1594, 40 } },
        { { 2237 - 652, 40 }, hidden, { 1585, 40 }, { 1585, 40 } },
        { { 2238 - 652, 40 }, hidden, { 1910, 40 }, { 1594, 40 } },
        { { 1910, 40 }, hidden, { 1910, 40 }, { 1594, 40 } },
        { { 1700, 40 }, -1, { 1910, 40 }, { 1594, 40 } },
        // Corners: the sideways move undoes the vertical one.
        { { -50, -100 }, shown, { -643, -100 }, { -10, -100 } },
        { { -50, -100 }, hidden, { -317, -100 }, { -10, -100 } },
        { { 1700, -100 }, shown, { 1910, -100 }, { 1267, -100 } },
        { { 1700, -100 }, hidden, { 1910, -100 }, { 1594, -100 } },
    };
    QApplication::desktop()->resize(1920, 1080);
    const QSize size = window->size();
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message()
            << "flag " << row.flag << " at " << testing::PrintToString(row.start));
        right_flag = row.flag;
        EXPECT_EQ(after(QEvent::Leave, row.start), row.onLeave);
        EXPECT_EQ(after(QEvent::Enter, row.start), row.onEnter);
        EXPECT_EQ(after(QEvent::Leave), row.onLeave) << "it hides again";
        EXPECT_EQ(window->size(), size);
    }
}

TEST_F(Docking, RightEdgeHasTheLastWordOnANarrowDesktop)
{
    QApplication::desktop()->resize(400, 300);
    right_flag = 1;
    EXPECT_EQ(after(QEvent::Leave, { -20, 30 }), QPoint(390, 30));
    EXPECT_EQ(after(QEvent::Enter, { -20, 30 }), QPoint(400 - window->width(), 30));
}

// Dragging

class WindowDrag : public Chrome
{
protected:
    WindowDrag()
    {
        window->move(100, 50);
        window->setMouseTracking(true); // else the toolkit keeps moves without a button to itself
    }

    /// Sends one event with the pointer anywhere on the screen. No handler leaves it to its base.
    void send(
        QEvent::Type type, const QPointF &screen, Qt::MouseButton button, Qt::MouseButtons held)
    {
        const QPointF local = screen - window->pos();
        QMouseEvent event(type, local, local, screen, button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        EXPECT_TRUE(event.isAccepted());
    }
    void press(const QPointF &screen, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonPress, screen, button, button);
    }
    void move(const QPointF &screen, Qt::MouseButtons held = Qt::LeftButton)
    {
        send(QEvent::MouseMove, screen, Qt::NoButton, held);
    }
    void release(const QPointF &screen, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonRelease, screen, button, Qt::NoButton);
    }

    /// The position recorded since this was asked last.
    static QPoint recorded()
    {
        const QPoint position(main_position_x, main_position_y);
        main_position_x = main_position_y = -999;
        return position;
    }
    const QPoint nothing{ -999, -999 };
};

TEST_F(WindowDrag, FollowsThePointerStepByStepAndRecordsEachPosition)
{
    press({ 300, 200 });
    EXPECT_TRUE(Probe::dragging(*window));
    EXPECT_EQ(recorded(), QPoint(0, 0)) << "not at the press";
    const struct
    {
        QPointF pointer;
        QPoint reference;
        QPoint window;
    } steps[] = {
        { { 301, 200 }, { 301, 200 }, { 101, 50 } },
        { { 310.4, 189.6 }, { 310, 190 }, { 110, 40 } }, // whole pixels
        { { 0, 0 }, { 0, 0 }, { -200, -150 } },          // no threshold, no clamping, no snapping
        { { 3000, 2000 }, { 3000, 2000 }, { 2800, 1850 } },
        { { 250, 250 }, { 250, 250 }, { 50, 100 } },
    };
    for (const auto &step : steps) {
        move(step.pointer);
        EXPECT_EQ(Probe::dragPosition(*window), step.reference);
        EXPECT_EQ(window->pos(), step.window);
        EXPECT_EQ(recorded(), step.window);
    }
    window->move(500, 300); // the reference is the last step, not the press
    move({ 251, 251 });
    EXPECT_EQ(window->pos(), QPoint(501, 301));
    recorded();
    release({ 251, 251 });
    EXPECT_FALSE(Probe::dragging(*window));
    EXPECT_EQ(window->pos(), QPoint(501, 301));
    EXPECT_EQ(QPoint(main_position_x, main_position_y), QPoint(501, 301));
    EXPECT_EQ(NO_Device(nullptr).pos(), QPoint(501 + 163, 301 + 93)) << "opens from there";
}

TEST_F(WindowDrag, OtherButtonsNeitherStartNorEndADrag)
{
    for (const Qt::MouseButton button : { Qt::RightButton, Qt::MiddleButton, Qt::BackButton }) {
        recorded();
        press({ 300, 200 }, button);
        EXPECT_FALSE(Probe::dragging(*window));
        EXPECT_EQ(Probe::dragPosition(*window), QPoint(0, 0));
        EXPECT_EQ(recorded(), nothing);
        for (const Qt::MouseButtons held :
            { Qt::MouseButtons(button), Qt::MouseButtons(Qt::LeftButton), Qt::MouseButtons() }) {
            move({ 350, 250 }, held);
            EXPECT_EQ(recorded(), QPoint(100, 50)) << "the window has not moved";
        }
        release({ 350, 250 }, button);
        EXPECT_EQ(recorded(), QPoint(100, 50));
    }
    press({ 300, 200 });
    press({ 300, 200 }, Qt::RightButton);
    release({ 300, 200 }, Qt::RightButton);
    move({ 305, 200 }, Qt::RightButton);
    EXPECT_EQ(window->pos(), QPoint(100, 50)) << "the left button is not held";
    EXPECT_EQ(Probe::dragPosition(*window), QPoint(300, 200));
    move({ 305, 200 }, Qt::LeftButton | Qt::RightButton);
    EXPECT_EQ(window->pos(), QPoint(105, 50));
    release({ 305, 200 });
}

TEST_F(WindowDrag, PanelsAndLabelsDragAndControlsDoNot)
{
    const QWidgetList backgrounds = { form().Win_Left, form().Win_Right, form().label_ptz,
        form().centralwidget };
    // A click on these ends or hides the window.
    const QWidgetList leftOut = { form().btn_close, form().btn_min };
    int controls = 0;
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        // Of a combo box's inside nothing is to be seen.
        const bool ofTheForm = widget->parentWidget() == form().Win_Left
            || widget->parentWidget() == form().Win_Right || backgrounds.contains(widget);
        if (!ofTheForm || leftOut.contains(widget))
            continue;
        SCOPED_TRACE(widget->objectName().toStdString());
        form().Win_Right->show(); // what a click before may have changed
        form().Win_Right->setEnabled(true);
        form().slider_focus->setEnabled(true);
        window->move(100, 50);
        const QPointF place(3, widget->height() - 3); // where no child lies
        mouse::press(widget, place);
        const bool isBackground = backgrounds.contains(widget);
        EXPECT_EQ(Probe::dragging(*window), isBackground);
        mouse::move(widget, place + QPointF(5, 0));
        EXPECT_EQ(window->pos() != QPoint(100, 50), isBackground);
        mouse::release(widget, place + QPointF(5, 0));
        if (QWidget *const popup = QApplication::activePopupWidget())
            popup->hide();
        controls += isBackground ? 0 : 1;
    }
    // 30 buttons but for two, 9 sliders, 7 boxes, the choice and the joystick.
    EXPECT_EQ(controls, 28 + 9 + 7 + 1 + 1);
}

// The background

/// Notes each time that it draws the background primitive of a widget.
class NotingStyle : public QProxyStyle
{
public:
    using Drawing = std::tuple<const QWidget *, int, int, QRect, bool>;

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget) const override
    {
        if (element == PE_Widget)
            drawings.emplace_back(widget, option->type, option->version, option->rect,
                painter->testRenderHint(QPainter::Antialiasing));
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    mutable std::vector<Drawing> drawings;
};

TEST_F(Chrome, BackgroundIsDrawnByTheStyleOnceAndAntialiased)
{
    const auto pixelBesideTheLeftPanel = [this] {
        QImage image(window->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        window->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image.pixelColor(500, 200);
    };
    NotingStyle style;
    window->setStyleSheet(QString());
    window->setStyle(&style);
    style.drawings.clear();
    EXPECT_EQ(pixelBesideTheLeftPanel().alpha(), 0) << "nothing else is drawn";
    EXPECT_EQ(style.drawings,
        (std::vector{ NotingStyle::Drawing{
            window.get(), QStyleOption::SO_Default, 1, window->rect(), true } }));
    window->setStyle(nullptr);

    window->setStyleSheet("QMainWindow { background-color: rgb(10, 200, 30); }");
    EXPECT_EQ(pixelBesideTheLeftPanel(), QColor(10, 200, 30));
}

} // namespace
