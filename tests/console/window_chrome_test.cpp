// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a title bar would do: dragging, docking at the screen's edges, the window's own background.

#include <QApplication>
#include <QDesktopWidget>
#include <QEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QTest>

#include <optional>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/widgets/mouse.h"
#include "widgets/no_device.h"
#include "widgets/notice_state.h"
#include "widgets/rocker_handle.h"

// Shown by GoogleTest.
inline void PrintTo(const QPoint &point, std::ostream *stream)
{
    *stream << "(" << point.x() << ", " << point.y() << ")";
}

namespace {

// Docking
// ---------------------------------------------------------------------------------------------

/// A desktop of 1920 pixels, whatever the screen is.
class WideDesktop
{
public:
    WideDesktop() { QApplication::desktop()->resize(1920, 1080); }
    ~WideDesktop() { QApplication::desktop()->resize(before); }
    WideDesktop(const WideDesktop &) = delete;
    WideDesktop &operator=(const WideDesktop &) = delete;

private:
    QSize before = QApplication::desktop()->size();
};

/// Where the window stands, and where it goes when the pointer leaves and when it comes back.
struct Place
{
    QPoint start;
    int settings; ///< 1: the settings panel is shown
    QPoint onLeave;
    QPoint onEnter;
};

class Docking : public PanelTest, public testing::WithParamInterface<Place>
{
protected:
    Docking()
    {
        plugIn(0);
        makeWindow();
    }

    QPoint after(QEvent::Type type, const QPoint &start)
    {
        window->move(start);
        right_flag = GetParam().settings;
        QEvent event(type);
        QCoreApplication::sendEvent(window.get(), &event);
        EXPECT_EQ(window->size(), QSize(653, 436));
        return window->pos();
    }

    const WideDesktop desktop;
};

TEST_P(Docking, MovesTheWindowWhenThePointerLeavesAndComesBack)
{
    ASSERT_EQ(QApplication::desktop()->width(), 1920);
    EXPECT_EQ(after(QEvent::Leave, GetParam().start), GetParam().onLeave);
    EXPECT_EQ(after(QEvent::Enter, GetParam().start), GetParam().onEnter);
}

constexpr int hidden = 0;
constexpr int shown = 1;

INSTANTIATE_TEST_SUITE_P(AwayFromTheEdges, Docking,
    testing::Values(Place{ { 100, 100 }, hidden, { 100, 100 }, { 100, 100 } },
        Place{ { 100, 100 }, shown, { 100, 100 }, { 100, 100 } },
        Place{ { 0, 0 }, hidden, { 0, 0 }, { 0, 0 } }, Place{ { 0, 0 }, shown, { 0, 0 }, { 0, 0 } },
        // The lower edge docks nothing.
        Place{ { 100, 2000 }, shown, { 100, 2000 }, { 100, 2000 } }));

INSTANTIATE_TEST_SUITE_P(TopEdge, Docking,
    testing::Values(Place{ { 100, -100 }, hidden, { 100, -426 }, { 100, -10 } },
        Place{ { 100, -100 }, shown, { 100, -426 }, { 100, -10 } },
        Place{ { 100, -1 }, hidden, { 100, -426 }, { 100, -10 } },
        Place{ { 100, -426 }, hidden, { 100, -426 }, { 100, -10 } }));

INSTANTIATE_TEST_SUITE_P(LeftEdge, Docking,
    testing::Values(Place{ { -50, 40 }, hidden, { -317, 40 }, { -10, 40 } },
        Place{ { -50, 40 }, shown, { -643, 40 }, { -10, 40 } },
        Place{ { -1, 40 }, hidden, { -317, 40 }, { -10, 40 } },
        Place{ { -1, 40 }, shown, { -643, 40 }, { -10, 40 } },
        Place{ { -317, 40 }, hidden, { -317, 40 }, { -10, 40 } },
        Place{ { -643, 40 }, shown, { -643, 40 }, { -10, 40 } }));

INSTANTIATE_TEST_SUITE_P(RightEdge, Docking,
    testing::Values( // Its last pixel at 1915, 1910 and 1911, with the settings panel.
        Place{ { 1915 - 652, 40 }, shown, { 1910, 40 }, { 1267, 40 } },
        Place{ { 1910 - 652, 40 }, shown, { 1258, 40 }, { 1258, 40 } },
        Place{ { 1911 - 652, 40 }, shown, { 1910, 40 }, { 1267, 40 } },
        Place{ { 1910, 40 }, shown, { 1910, 40 }, { 1267, 40 } },
        // Its last pixel at 2352, 2237 and 2238, of which the left panel's is at 327 less.
        Place{ { 1700, 40 }, hidden, { 1910, 40 }, { 1594, 40 } },
        Place{ { 2237 - 652, 40 }, hidden, { 1585, 40 }, { 1585, 40 } },
        Place{ { 2238 - 652, 40 }, hidden, { 1910, 40 }, { 1594, 40 } },
        Place{ { 1910, 40 }, hidden, { 1910, 40 }, { 1594, 40 } }));

// The sideways move takes back the one up or down.
INSTANTIATE_TEST_SUITE_P(Corners, Docking,
    testing::Values(Place{ { -50, -100 }, shown, { -643, -100 }, { -10, -100 } },
        Place{ { -50, -100 }, hidden, { -317, -100 }, { -10, -100 } },
        Place{ { 1700, -100 }, shown, { 1910, -100 }, { 1267, -100 } },
        Place{ { 1700, -100 }, hidden, { 1910, -100 }, { 1594, -100 } }));

// Any other value of the flag is "not shown".
INSTANTIATE_TEST_SUITE_P(OtherFlags, Docking,
    testing::Values(Place{ { -50, 40 }, 2, { -317, 40 }, { -10, 40 } },
        Place{ { 1700, 40 }, -1, { 1910, 40 }, { 1594, 40 } }));

class NarrowDesktop : public PanelTest
{ };

TEST_F(NarrowDesktop, GivesThePositionsOfTheFormulas)
{
    plugIn(0);
    makeWindow();
    const WideDesktop restoredAfterwards;
    QApplication::desktop()->resize(400, 300);
    right_flag = 1;
    QEvent leave(QEvent::Leave);
    QEvent enter(QEvent::Enter);

    window->move(-20, 30); // past both edges: the right one has the last word
    QCoreApplication::sendEvent(window.get(), &leave);
    EXPECT_EQ(window->pos(), QPoint(390, 30));
    window->move(-20, 30);
    QCoreApplication::sendEvent(window.get(), &enter);
    EXPECT_EQ(window->pos(), QPoint(400 - 653, 30));
}

TEST_F(NarrowDesktop, DockedWindowHidesAgainOnTheNextLeave)
{
    plugIn(0);
    makeWindow();
    const WideDesktop desktop;
    QEvent leave(QEvent::Leave);
    QEvent enter(QEvent::Enter);
    window->move(-50, 200);
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::sendEvent(window.get(), &leave);
        EXPECT_EQ(window->pos(), QPoint(-317, 200));
        QCoreApplication::sendEvent(window.get(), &enter);
        EXPECT_EQ(window->pos(), QPoint(-10, 200));
    }
}

// Dragging
// --------------------------------------------------------------------------------------------

class WindowDrag : public PanelTest
{
protected:
    WindowDrag()
    {
        plugIn(0);
        makeWindow();
        window->move(100, 50);
    }

    /// One event for the window, with the pointer anywhere on the screen; tells whether the window
    /// accepted it.
    bool send(
        QEvent::Type type, const QPointF &screen, Qt::MouseButton button, Qt::MouseButtons held)
    {
        const QPointF local = screen - window->pos();
        QMouseEvent event(type, local, local, screen, button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        return event.isAccepted();
    }
    bool press(const QPointF &screen, Qt::MouseButton button = Qt::LeftButton)
    {
        return send(QEvent::MouseButtonPress, screen, button, button);
    }
    bool move(const QPointF &screen, Qt::MouseButtons held = Qt::LeftButton)
    {
        return send(QEvent::MouseMove, screen, Qt::NoButton, held);
    }
    bool release(const QPointF &screen, Qt::MouseButton button = Qt::LeftButton)
    {
        return send(QEvent::MouseButtonRelease, screen, button, Qt::NoButton);
    }

    static QPoint recorded() { return { main_position_x, main_position_y }; }
    static void forgetRecorded() { main_position_x = main_position_y = -999; }
};

TEST_F(WindowDrag, FollowsThePointerStepByStep)
{
    press({ 300, 200 });
    EXPECT_TRUE(Probe::dragging(*window));
    EXPECT_EQ(Probe::dragPosition(*window), QPoint(300, 200));
    EXPECT_EQ(window->pos(), QPoint(100, 50));

    const struct
    {
        QPoint pointer;
        QPoint window;
    } steps[] = { { { 301, 200 }, { 101, 50 } }, { { 310, 190 }, { 110, 40 } },
        { { 0, 0 }, { -200, -150 } }, { { 3000, 2000 }, { 2800, 1850 } },
        { { 250, 250 }, { 50, 100 } } };
    for (const auto &step : steps) {
        move(step.pointer);
        EXPECT_EQ(window->pos(), step.window) << "no threshold, no clamping, no snapping";
        EXPECT_EQ(Probe::dragPosition(*window), step.pointer);
        EXPECT_EQ(recorded(), step.window);
    }
    release({ 250, 250 });
    EXPECT_FALSE(Probe::dragging(*window));
    EXPECT_EQ(window->pos(), QPoint(50, 100));
    EXPECT_EQ(recorded(), QPoint(50, 100));
    EXPECT_EQ(sent(), Requests());
}

TEST_F(WindowDrag, ReferenceIsTheLastStepNotThePress)
{
    press({ 300, 200 });
    move({ 310, 200 });
    window->move(500, 300); // something else moves it meanwhile
    move({ 311, 201 });
    EXPECT_EQ(window->pos(), QPoint(501, 301));
    release({ 311, 201 });
}

TEST_F(WindowDrag, RoundsThePointerToWholePixels)
{
    press({ 300.4, 200.6 });
    EXPECT_EQ(Probe::dragPosition(*window), QPoint(300, 201));
    move({ 310.5, 210.4 });
    EXPECT_EQ(Probe::dragPosition(*window), QPoint(311, 210));
    EXPECT_EQ(window->pos(), QPoint(111, 59));
    release({ 310.5, 210.4 });
}

TEST_F(WindowDrag, OtherButtonsDragNothingAndTheirReleaseRecordsThePlace)
{
    for (const Qt::MouseButton button : { Qt::RightButton, Qt::MiddleButton, Qt::BackButton }) {
        forgetRecorded();
        press({ 300, 200 }, button);
        EXPECT_FALSE(Probe::dragging(*window));
        EXPECT_EQ(Probe::dragPosition(*window), QPoint(0, 0));
        EXPECT_EQ(recorded(), QPoint(-999, -999)) << "a press records nothing";
        move({ 350, 250 }, button);
        EXPECT_EQ(window->pos(), QPoint(100, 50));
        EXPECT_EQ(recorded(), QPoint(100, 50));
        forgetRecorded();
        release({ 350, 250 }, button);
        EXPECT_EQ(recorded(), QPoint(100, 50));
    }
}

TEST_F(WindowDrag, OtherButtonsDoNotEndADrag)
{
    press({ 300, 200 });
    press({ 300, 200 }, Qt::RightButton);
    release({ 300, 200 }, Qt::RightButton);
    EXPECT_TRUE(Probe::dragging(*window));
    move({ 305, 200 }, Qt::RightButton);
    EXPECT_EQ(window->pos(), QPoint(100, 50)) << "the left button is not held";
    EXPECT_EQ(Probe::dragPosition(*window), QPoint(300, 200));
    move({ 305, 200 }, Qt::LeftButton | Qt::RightButton);
    EXPECT_EQ(window->pos(), QPoint(105, 50));
    release({ 305, 200 });
}

TEST_F(WindowDrag, MoveWithoutAPressOnTheBackgroundOnlyRecordsThePlace)
{
    window->setMouseTracking(true); // else the toolkit keeps moves without a button to itself
    for (const Qt::MouseButtons held :
        { Qt::MouseButtons(Qt::LeftButton), Qt::MouseButtons(Qt::NoButton) }) {
        forgetRecorded();
        move({ 10, 10 }, held);
        EXPECT_EQ(window->pos(), QPoint(100, 50));
        EXPECT_EQ(recorded(), QPoint(100, 50));
    }
}

TEST_F(WindowDrag, NoHandlerLeavesTheEventToItsBase)
{
    EXPECT_TRUE(press({ 300, 200 }, Qt::RightButton));
    EXPECT_TRUE(press({ 300, 200 }));
    EXPECT_TRUE(move({ 301, 200 }));
    EXPECT_TRUE(release({ 301, 200 }));
}

TEST_F(WindowDrag, NoCameraNoticeOpensFromWhereTheWindowWasLeft)
{
    press({ 300, 200 });
    move({ 350, 260 });
    release({ 350, 260 });
    const NO_Device notice(nullptr);
    EXPECT_EQ(notice.pos(), QPoint(150 + 163, 110 + 93));
}

TEST_F(WindowDrag, PanelsAndLabelsDragAndControlsDoNot)
{
    form().Win_Right->show();
    form().slider_focus->setEnabled(true);
    const auto drags = [this](QWidget *widget) {
        window->move(100, 50);
        // At a place where no child of it lies.
        const QPointF place(3, widget->height() - 3);
        mouse::press(widget, place);
        const bool started = Probe::dragging(*window);
        mouse::move(widget, place + QPointF(5, 0));
        const bool moved = window->pos() != QPoint(100, 50);
        EXPECT_EQ(started, moved) << widget->objectName().toStdString();
        mouse::release(widget, place + QPointF(5, 0));
        Probe::dragging(*window) = false;
        return moved;
    };
    for (QWidget *background :
        { static_cast<QWidget *>(form().Win_Left), static_cast<QWidget *>(form().Win_Right),
            static_cast<QWidget *>(form().label_ptz), form().centralwidget })
        EXPECT_TRUE(drags(background)) << background->objectName().toStdString();

    int controls = 0;
    for (QWidget *control : window->findChildren<QWidget *>()) {
        if (!qobject_cast<QPushButton *>(control) && !qobject_cast<QSlider *>(control)
            && !qobject_cast<QLineEdit *>(control) && control != form().cb_fliker
            && control != form().widget)
            continue;
        // These would end or hide the window.
        if (control == form().btn_close || control == form().btn_min)
            continue;
        EXPECT_FALSE(drags(control)) << control->objectName().toStdString();
        // What a click may have changed.
        form().Win_Right->show();
        form().Win_Right->setEnabled(true);
        form().slider_focus->setEnabled(true);
        if (QWidget *const popup = QApplication::activePopupWidget())
            popup->hide();
        ++controls;
    }
    // 30 buttons but for two, 9 sliders, 7 boxes, the choice and the joystick.
    EXPECT_EQ(controls, 28 + 9 + 7 + 1 + 1);
}

// The background
// --------------------------------------------------------------------------------------

/// Notes each time that it draws the background primitive of a widget.
class NotingStyle : public QProxyStyle
{
public:
    struct Drawing
    {
        const QWidget *widget;
        int optionType;
        int optionVersion;
        QRect rect;
        bool antialiased;
    };

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget) const override
    {
        if (element == PE_Widget)
            drawings.push_back({ widget, option->type, option->version, option->rect,
                painter->testRenderHint(QPainter::Antialiasing) });
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    mutable std::vector<Drawing> drawings;
};

class Background : public PanelTest
{
protected:
    Background()
    {
        plugIn(0);
        makeWindow();
    }
};

TEST_F(Background, IsDrawnByTheStyleOnceAndAntialiased)
{
    NotingStyle style;
    window->setStyleSheet(QString());
    window->setStyle(&style);
    QImage image(window->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    style.drawings.clear();
    window->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    ASSERT_EQ(style.drawings.size(), 1U);
    const NotingStyle::Drawing &drawing = style.drawings.front();
    EXPECT_EQ(drawing.widget, window.get());
    EXPECT_EQ(drawing.optionType, QStyleOption::SO_Default);
    EXPECT_EQ(drawing.optionVersion, 1);
    EXPECT_EQ(drawing.rect, QRect(0, 0, 653, 436));
    EXPECT_TRUE(drawing.antialiased);
    EXPECT_EQ(image.pixelColor(500, 200).alpha(), 0) << "nothing else is drawn";
    window->setStyle(nullptr);
}

TEST_F(Background, StyleSheetOnTheWindowItselfTakesEffect)
{
    const auto pixelBesideTheLeftPanel = [this] {
        QImage image(window->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        window->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image.pixelColor(500, 200);
    };
    EXPECT_EQ(pixelBesideTheLeftPanel().alpha(), 0);
    window->setStyleSheet("QMainWindow { background-color: rgb(10, 200, 30); }");
    EXPECT_EQ(pixelBesideTheLeftPanel(), QColor(10, 200, 30));
}

} // namespace
