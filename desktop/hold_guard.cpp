// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/hold_guard.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QRegularExpression>
#include <QWindow>

#include <cstdlib>

#include "desktop/key_repeat.h"
#include "desktop/slider_steps.h"
#include "desktop/termination.h"

namespace desktop {

namespace {

// The guard at work. The toolkit ends the process from within the event loop when its X server
// goes; the guard is then still there.
HoldGuard *activeGuard = nullptr; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void releaseAtExit()
{
    if (activeGuard)
        activeGuard->releaseAll();
}

// Synthesised events tell no place; they are told apart by the key itself.
quint32 placeOf(const QKeyEvent &event)
{
    constexpr quint32 noPlace = 0x80000000U;
#ifdef Q_OS_MACOS
    // The scan code tells nothing there.
    return noPlace | static_cast<quint32>(event.key());
#else
    return event.nativeScanCode() != 0 ? event.nativeScanCode()
                                       : noPlace | static_cast<quint32>(event.key());
#endif
}

} // namespace

HoldGuard::HoldGuard(QWidget &guarded) : window(guarded)
{
    static const int registered = std::atexit(releaseAtExit);
    Q_UNUSED(registered)
    activeGuard = this;
    releasesAreReal = withoutReleases();
    clock.start();
    if (const quint32 now = serverTime())
        noteTime(now);
    QCoreApplication::instance()->installEventFilter(this);
    onSignal(this, [this] { releaseAll(); });
    // Before the click does its work: a stop that came later would go to the other camera.
    const auto cameraButtons =
        window.findChildren<QPushButton *>(QRegularExpression(QStringLiteral("^btn_cam")));
    for (const QPushButton *const button : cameraButtons)
        connect(button, &QPushButton::released, this, [this] { releaseAll(); });
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
        [this] { releaseAll(); });
    window.setFocus();
}

HoldGuard::~HoldGuard()
{
    activeGuard = nullptr;
    QCoreApplication::instance()->removeEventFilter(this);
}

bool HoldGuard::eventFilter(QObject *watched, QEvent *event)
{
    const auto *const widget = qobject_cast<QWidget *>(watched);
    const bool ours = widget && widget->window() == &window;
    if (const auto *const input = dynamic_cast<QInputEvent *>(event); input && input->timestamp())
        noteTime(static_cast<quint32>(input->timestamp()));
    switch (event->type()) {
    case QEvent::KeyPress:
        if (isOverdue(*static_cast<QKeyEvent *>(event)))
            return true;
        if (ours)
            notePress(*static_cast<QKeyEvent *>(event));
        break;
    case QEvent::KeyRelease:
        if (static_cast<QKeyEvent *>(event)->isAutoRepeat() && !releasesAreReal)
            return true;
        if (widget)
            noteRelease(*static_cast<QKeyEvent *>(event), ours);
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: // the second press of two quick ones
        if (ours)
            noteButton(static_cast<QWidget *>(watched), *static_cast<QMouseEvent *>(event));
        break;
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent *>(event)->buttons() == Qt::NoButton)
            pressedWidget.clear();
        break;
    case QEvent::WindowDeactivate:
        if (watched == &window)
            releaseKeys();
        break;
    case QEvent::FocusOut:
        // A window that was hidden and shown again at once is not told that it is active, and
        // then not that it is not any more. Its native window always is.
        if (watched == window.windowHandle())
            releaseKeys();
        break;
    case QEvent::Hide:
        if (watched == &window)
            releaseAll();
        break;
    case QEvent::Expose:
        // Another desktop is shown. The window is as visible as before to the toolkit, but the
        // mouse is no longer held by it.
        if (watched == window.windowHandle() && !window.windowHandle()->isExposed())
            releaseAll();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void HoldGuard::notePress(const QKeyEvent &event)
{
    // A repeated press counts too: the window may have got the keyboard back with the key down. It
    // does not change the name of a key that is held already.
    const quint32 place = placeOf(event);
    if (heldKeys.contains(place))
        return;
    heldKeys.insert(place, { event.key(), event.timestamp() });
}

// A press that a widget does not take goes on to its parent: the last one holds the mouse. A second
// button, while one is held, changes nothing about that.
void HoldGuard::noteButton(QWidget *widget, const QMouseEvent &press)
{
    if (press.buttons() != press.button())
        return;
    pressedWidget = widget;
    pressedButton = press.button();
}

// How far our clock is ahead of the one that dates the events. The quickest event tells it best.
// Differences, because that clock starts anew after seven weeks. On a display across the network
// whose clock is slower, repeats come to be dropped in the end; the camera moves all the same.
void HoldGuard::noteTime(quint32 eventTime)
{
    const auto ahead = static_cast<quint32>(clock.elapsed()) - eventTime;
    if (!leastAhead || static_cast<qint32>(ahead - *leastAhead) < 0)
        leastAhead = ahead;
}

void HoldGuard::noteRelease(const QKeyEvent &event, bool reachesWindow)
{
    const auto held = heldKeys.find(placeOf(event));
    if (held == heldKeys.end())
        return;
    const int pressedAs = held->name;
    heldKeys.erase(held);
    if (!reachesWindow || pressedAs != event.key())
        sendRelease(pressedAs);
}

bool HoldGuard::isOverdue(const QKeyEvent &press) const
{
    // Two or three repeats. What is younger may have waited for nothing but its turn.
    constexpr qint32 patience = 100;
    // The toolkit does not mark repeats that come without releases. Synthesised events tell no
    // time.
    if (press.timestamp() == 0)
        return false;
    // A press that the widget with the keyboard leaves to its parents comes by here again.
    const auto held = heldKeys.find(placeOf(press));
    if (held == heldKeys.end() || held->pressedAt == press.timestamp())
        return false;
    const auto ahead =
        static_cast<quint32>(clock.elapsed()) - static_cast<quint32>(press.timestamp());
    return static_cast<qint32>(ahead - *leastAhead) > patience;
}

void HoldGuard::sendRelease(int key)
{
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &release);
}

void HoldGuard::releaseKeys()
{
    const QHash<quint32, HeldKey> held = heldKeys;
    heldKeys.clear();
    for (const HeldKey &key : held)
        sendRelease(key.name);
}

void HoldGuard::releaseButton()
{
    if (!pressedWidget)
        return;
    QWidget *const widget = pressedWidget;
    pressedWidget.clear();
    // Outside the widget, so that a push button is let go without being clicked.
    const QPoint outside(-1, -1);
    QMouseEvent release(QEvent::MouseButtonRelease, outside, widget->mapToGlobal(outside),
        pressedButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &release);
}

void HoldGuard::releaseAll()
{
    releaseKeys();
    releaseButton();
    letGoOfSteps(window);
}

} // namespace desktop
