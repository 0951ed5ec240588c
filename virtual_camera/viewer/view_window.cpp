// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/viewer/view_window.h"

#include "virtual_camera/viewer/camera_picture.h"
#include "virtual_camera/viewer/icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QScreen>
#include <QScrollArea>
#include <QStackedLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace virtual_camera {

namespace {

constexpr QSize largeFrame(1280, 720);
constexpr QSize smallFrame(256, 144);
constexpr int requestsKept = 200;

const char *const sheet = "virtual_camera--ViewWindow { background: #1a1e22; }"
                          "QScrollArea, QScrollArea > QWidget > QWidget { background: #1a1e22; }"
                          "QLabel { color: #aeb8c0; }"
                          "QListWidget { background: #12161a; color: #d5dce1; border: none;"
                          " font-family: monospace; }"
                          "QToolButton { background: #2a3036; color: #e8ecef; border: none;"
                          " border-radius: 6px; padding: 5px 9px; }"
                          "QToolButton:hover { background: #3a424a; }"
                          "QToolButton:checked { background: #7a2f22; }";

} // namespace

ViewWindow::ViewWindow(CameraLink &link, QWidget *parent) : QWidget(parent), m_link(link)
{
    setWindowTitle(tr("Virtual cameras"));
    setStyleSheet(QLatin1String(sheet));
    connect(&link, &CameraLink::described, this, &ViewWindow::build);
    connect(&link, &CameraLink::changed, this, &ViewWindow::take);
    connect(&link, &CameraLink::logged, this, &ViewWindow::note);
    connect(&link, &CameraLink::ended, this, &QWidget::close);
}

void ViewWindow::build()
{
    auto *const column = new QVBoxLayout(this);
    m_stage = new QStackedLayout;
    column->addLayout(m_stage, 1);
    auto *const buttons = new QHBoxLayout;
    auto *const remote = new QHBoxLayout;
    column->addLayout(buttons);
    column->addLayout(remote);
    auto *const shelf = new QScrollArea; // for as many cameras as a bus takes
    auto *const cameras = new QWidget;
    auto *const strip = new QHBoxLayout(cameras);
    strip->setContentsMargins({});
    strip->setSizeConstraint(QLayout::SetMinimumSize);
    shelf->setFrameShape(QFrame::NoFrame);
    shelf->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    shelf->setFixedHeight(120);
    shelf->setWidgetResizable(true);
    shelf->setWidget(cameras);
    column->addWidget(shelf);

    for (const SeenCamera &camera : m_link.cameras()) {
        auto *const large = new CameraPicture(cameraName(camera), largeFrame);
        large->setMinimumSize(480, 270);
        m_stage->addWidget(large);
        m_large.push_back(large);
        addCamera(camera, strip);
    }
    strip->addStretch();

    m_plug = addButton(
        buttons, Sign::Unplug, tr("Unplug"), tr("Pull the camera's cable, or put it back"));
    m_stall =
        addButton(buttons, Sign::Refuse, tr("Refuse"), tr("The camera refuses every request"));
    m_slow = addButton(buttons, Sign::Slow, tr("Slow"), tr("The camera takes a second to answer"));
    buttons->addStretch();
    addRemoteControl(remote);
    remote->addStretch();
    for (QToolButton *fault : { m_stall, m_slow })
        fault->setCheckable(true);
    connect(m_plug, &QToolButton::clicked, this, [this] {
        const bool powered = m_link.cameras()[static_cast<std::size_t>(m_chosen)].view.powered;
        command(powered ? "unplug %1" : "replug %1");
    });
    connect(m_stall, &QToolButton::clicked, this,
        [this](bool on) { setFault(on, "stall %1 all", m_slow); });
    connect(m_slow, &QToolButton::clicked, this,
        [this](bool on) { setFault(on, "delay %1 1000", m_stall); });

    m_requests = new QListWidget;
    m_requests->setFixedHeight(130);
    m_requests->setFocusPolicy(Qt::NoFocus);
    column->addWidget(m_requests);

    for (int index = 0; index < static_cast<int>(m_large.size()); ++index)
        take(index);
    choose(m_chosen);
    standBeside();
}

// At the right edge, clear of a panel in the middle of the screen, or else at its left edge.
void ViewWindow::standBeside()
{
    constexpr int panelWidth = 653;
    constexpr int frame = 8;
    const QRect desktop = screen()->availableGeometry();
    const int free = desktop.width() - panelWidth;
    const int narrowest = minimumSizeHint().width();
    const int beside = free / 2 - 2 * frame;
    const int width = std::clamp(beside < narrowest ? free - 2 * frame : beside, narrowest, 760);
    resize(width, std::min(desktop.height() - 40, 700));
    move(desktop.right() - width - frame, desktop.top() + 24);
}

void ViewWindow::addCamera(const SeenCamera &camera, QBoxLayout *strip)
{
    const int index = camera.number - 1;
    auto *const column = new QVBoxLayout;
    auto *const small = new CameraPicture(cameraName(camera), smallFrame);
    small->setFixedSize(128, 72);
    connect(small, &CameraPicture::clicked, this, [this, index] { choose(index); });
    column->addWidget(small);
    auto *const name = new QLabel(cameraName(camera));
    column->addWidget(name, 0, Qt::AlignHCenter);
    small->setVisible(camera.isCamera);
    name->setVisible(camera.isCamera);
    strip->addLayout(column);
    m_small.push_back(small);
    m_wasOpen.push_back(false);
}

void ViewWindow::addRemoteControl(QBoxLayout *row)
{
    // At a fraction of full speed, for a hand on a mouse to stop in time.
    const struct
    {
        Sign sign;
        const char *move;
        QString help;
    } keys[] = {
        { Sign::Left, "left=5", tr("Turn the camera left while this is held") },
        { Sign::Right, "right=5", tr("Turn the camera right while this is held") },
        { Sign::Up, "up=5", tr("Turn the camera up while this is held") },
        { Sign::Down, "down=5", tr("Turn the camera down while this is held") },
        { Sign::Tele, "in=2", tr("Zoom in while this is held") },
        { Sign::Wide, "out=2", tr("Zoom out while this is held") },
    };
    for (const auto &key : keys) {
        QToolButton *const button = addButton(row, key.sign, {}, key.help);
        const QString go = QStringLiteral("go %1 ") + QLatin1String(key.move);
        connect(button, &QToolButton::pressed, this, [this, go] {
            m_moving = m_chosen;
            command(go);
        });
        connect(button, &QToolButton::released, this,
            [this] { m_link.command(QStringLiteral("go %1 stop").arg(m_moving + 1)); });
    }
    QToolButton *const home =
        addButton(row, Sign::Home, {}, tr("Send the camera to its home position"));
    connect(home, &QToolButton::clicked, this, [this] { command(QStringLiteral("go %1 home")); });
}

QToolButton *ViewWindow::addButton(
    QBoxLayout *row, Sign sign, const QString &words, const QString &help)
{
    auto *const button = new QToolButton;
    button->setIcon(signIcon(sign));
    button->setIconSize({ 26, 26 });
    button->setText(words);
    button->setToolButtonStyle(
        words.isEmpty() ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
    button->setToolTip(help);
    button->setAccessibleName(help);
    button->setFocusPolicy(Qt::TabFocus);
    row->addWidget(button);
    return button;
}

void ViewWindow::take(int index)
{
    const auto place = static_cast<std::size_t>(index);
    const SeenCamera &camera = m_link.cameras()[place];
    m_large[place]->report(camera.view);
    m_small[place]->report(camera.view);
    if (camera.open != m_wasOpen[place]) {
        m_wasOpen[place] = camera.open;
        choose(openOne());
    } else if (index == m_chosen) {
        showFaults();
    }
}

// Programs that look for cameras open each for a moment: the chosen one is left only for one that
// is open when it is not.
int ViewWindow::openOne() const
{
    if (m_wasOpen[static_cast<std::size_t>(m_chosen)])
        return m_chosen;
    const auto open = std::find(m_wasOpen.begin(), m_wasOpen.end(), true);
    return open == m_wasOpen.end() ? m_chosen : static_cast<int>(open - m_wasOpen.begin());
}

void ViewWindow::choose(int index)
{
    m_chosen = index;
    m_stage->setCurrentIndex(index);
    for (std::size_t i = 0; i < m_large.size(); ++i) {
        m_large[i]->mark(m_wasOpen[i], false);
        m_small[i]->mark(m_wasOpen[i], static_cast<int>(i) == index);
    }
    showFaults();
}

void ViewWindow::showFaults()
{
    const SeenCamera &camera = m_link.cameras()[static_cast<std::size_t>(m_chosen)];
    m_plug->setText(camera.view.powered ? tr("Unplug") : tr("Plug in"));
    m_plug->setIcon(signIcon(camera.view.powered ? Sign::Unplug : Sign::Plug));
    m_stall->setChecked(camera.stalls);
    m_slow->setChecked(camera.slow);
}

// Faults are only taken back all at once; the other one is then set again.
void ViewWindow::setFault(bool on, const QString &words, QToolButton *other)
{
    const bool both = other->isChecked();
    command(on ? words : QStringLiteral("clear %1"));
    if (!on && both)
        command(other == m_slow ? QStringLiteral("delay %1 1000") : QStringLiteral("stall %1 all"));
}

void ViewWindow::note(const QString &line)
{
    if (m_requests == nullptr)
        return;
    m_requests->insertItem(0, line);
    delete m_requests->takeItem(requestsKept);
}

void ViewWindow::command(const QString &words) { m_link.command(words.arg(m_chosen + 1)); }

} // namespace virtual_camera
