// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/viewer/camera_link.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>

namespace virtual_camera {

namespace {

constexpr double secondsOfArc = 3600; // in a degree
constexpr double nearest = 1.2;       // dioptres at the near end of the focus motor

double position(const QJsonObject &state, const char *motor)
{
    return state[QLatin1String(motor)].toObject()[QLatin1String("position")].toDouble();
}

QJsonObject rangeOf(const QJsonObject &description, const char *control)
{
    return description[QLatin1String("controls")]
        .toObject()[QLatin1String(control)]
        .toObject()[QLatin1String("fields")]
        .toObject()[QLatin1String("value")]
        .toObject();
}

// From -1 at the control's minimum over 0 at its default to 1 at its maximum.
double setting(const QJsonObject &description, const QJsonObject &state, const char *control)
{
    const QJsonObject range = rangeOf(description, control);
    const double value =
        state[QLatin1String("values")].toObject()[QLatin1String(control)].toDouble();
    const double middle = range[QLatin1String("default")].toDouble();
    const double end = range[QLatin1String(value < middle ? "min" : "max")].toDouble();
    const double way = std::abs(end - middle);
    return way == 0 ? 0 : std::clamp((value - middle) / way, -1.0, 1.0);
}

double focusOf(const QJsonObject &description, const QJsonObject &state)
{
    const QJsonObject range = rangeOf(description, "focus_absolute");
    const double low = range[QLatin1String("min")].toDouble();
    const double high = range[QLatin1String("max")].toDouble();
    return high <= low ? 0 : nearest * (position(state, "focus") - low) / (high - low);
}

// Where the camera is mounted: each looks at another part of the room.
double bearing(int number)
{
    constexpr double bearings[] = { 0, 32, -32, 58, -58 };
    return bearings[(number - 1) % 5];
}

int mainsOf(const QJsonObject &state)
{
    constexpr int hertz[] = { 0, 50, 60 };
    const int choice =
        state[QLatin1String("values")].toObject()[QLatin1String("power_line_frequency")].toInt();
    return choice >= 0 && choice <= 2 ? hertz[choice] : 0;
}

View viewOf(const QJsonObject &description, const QJsonObject &state)
{
    const auto on = [&state](const char *name) { return state[QLatin1String(name)].toBool(); };
    View view;
    view.powered = on("plugged_in");
    view.pan =
        position(state, "pan") / secondsOfArc + bearing(state[QLatin1String("number")].toInt(1));
    view.tilt = position(state, "tilt") / secondsOfArc;
    view.angle =
        state[QLatin1String("view")].toObject()[QLatin1String("horizontal_degrees")].toDouble(
            view.angle);
    view.focus = focusOf(description, state);
    const struct
    {
        double View::*member;
        const char *control;
    } settings[] = {
        { &View::brightness, "brightness" },
        { &View::contrast, "contrast" },
        { &View::saturation, "saturation" },
        { &View::sharpness, "sharpness" },
        { &View::gamma, "gamma" },
        { &View::gain, "gain" },
        { &View::whiteBalance, "white_balance_temperature" },
        { &View::backlight, "backlight_compensation" },
    };
    for (const auto &row : settings)
        view.*row.member = setting(description, state, row.control);
    if (on("auto_white_balance"))
        view.whiteBalance = 0;
    view.mains = mainsOf(state);
    const struct
    {
        bool View::*member;
        const char *name;
    } switches[] = {
        { &View::flip, "flip" },
        { &View::mirror, "mirror" },
        { &View::mute, "mute" },
        { &View::menu, "menu" },
        { &View::freeze, "freeze" },
        { &View::framing, "framing" },
        { &View::autoFocus, "auto_focus" },
    };
    for (const auto &row : switches)
        view.*row.member = on(row.name);
    return view;
}

// "pan=1 pan_speed=21 ..." as "pan 1, pan speed 21", or the command that the firmware makes of it.
QString meaning(const QJsonObject &record)
{
    const QString command = record[QLatin1String("command")].toString();
    if (!command.isEmpty())
        return command;
    const QJsonObject values = record[QLatin1String("values")].toObject();
    QStringList words;
    for (auto value = values.begin(); value != values.end(); ++value) {
        const QString number = QString::number(value.value().toDouble());
        words += value.key() == QLatin1String("value") ? number : value.key() + QChar(' ') + number;
    }
    return words.join(QStringLiteral(", ")).replace(QChar('_'), QChar(' '));
}

// One line for a person; empty for what is no request and no plug.
QString inWords(const QJsonObject &record)
{
    const QString event = record[QLatin1String("event")].toString();
    const QString what = event == QLatin1String("request")
        ? record[QLatin1String("request")].toString() + QChar(' ')
            + record[QLatin1String("control")].toString().replace(QChar('_'), QChar(' '))
            + QStringLiteral("   ") + meaning(record)
        : event;
    const QString result = record[QLatin1String("result")].toString(QStringLiteral("ok"));
    if (event.isEmpty())
        return {};
    return QStringLiteral("%1  CAM%2  %3%4")
        .arg(record[QLatin1String("time")].toDouble(), 8, 'f', 3)
        .arg(record[QLatin1String("device")].toInt())
        .arg(what, result == QLatin1String("ok") ? QString() : QStringLiteral("   ") + result);
}

void send(QLocalSocket &socket, const QByteArray &line)
{
    socket.write(line);
    socket.write("\n");
}

} // namespace

QString cameraName(const SeenCamera &camera) { return QStringLiteral("CAM%1").arg(camera.number); }

CameraLink::CameraLink(QObject *parent) : QObject(parent)
{
    connect(&m_state, &QLocalSocket::readyRead, this, &CameraLink::readState);
    connect(&m_log, &QLocalSocket::readyRead, this, &CameraLink::readLog);
    connect(&m_state, &QLocalSocket::connected, this, [this] { send(m_state, "watch"); });
    connect(&m_log, &QLocalSocket::connected, this, [this] { send(m_log, "log"); });
    connect(&m_state, &QLocalSocket::disconnected, this,
        [this] { emit ended(tr("virtual-camera has ended")); });
    connect(&m_state, QOverload<QLocalSocket::LocalSocketError>::of(&QLocalSocket::errorOccurred),
        this, [this] { emit ended(m_state.errorString()); });
}

void CameraLink::follow(const QString &socketPath)
{
    m_state.connectToServer(socketPath);
    m_log.connectToServer(socketPath);
}

void CameraLink::command(const QString &words) { send(m_state, words.toUtf8()); }

void CameraLink::readState()
{
    while (m_state.canReadLine()) {
        const QJsonDocument line = QJsonDocument::fromJson(m_state.readLine());
        if (line.isObject()) // answers to commands are words
            take(line.object());
    }
}

void CameraLink::readLog()
{
    while (m_log.canReadLine()) {
        const QString line = inWords(QJsonDocument::fromJson(m_log.readLine()).object());
        if (!line.isEmpty())
            emit logged(line);
    }
}

void CameraLink::take(const QJsonObject &message)
{
    const bool first = m_cameras.empty();
    const QJsonArray devices = message[QLatin1String("devices")].toArray();
    if (first)
        m_cameras.resize(static_cast<std::size_t>(devices.size()));
    m_states.resize(m_cameras.size());
    for (const QJsonValue &value : devices) {
        const QJsonObject changes = value.toObject();
        const int index = changes[QLatin1String("number")].toInt() - 1;
        if (index < 0 || index >= static_cast<int>(m_cameras.size()))
            continue;
        QJsonObject &state = m_states[static_cast<std::size_t>(index)];
        for (auto member = changes.begin(); member != changes.end(); ++member)
            state[member.key()] = member.value();
        const QJsonObject description = state[QLatin1String("description")].toObject();
        const QJsonObject faults = state[QLatin1String("faults")].toObject();
        SeenCamera &camera = m_cameras[static_cast<std::size_t>(index)];
        camera = { index + 1, description[QLatin1String("product")].toString(),
            description[QLatin1String("kind")].toString() == QLatin1String("camera"),
            state[QLatin1String("open_files")].toInt() > 0, faults.contains(QLatin1String("stall")),
            faults.contains(QLatin1String("delay")), viewOf(description, state) };
        if (!first)
            emit changed(index);
    }
    if (first)
        emit described();
}

} // namespace virtual_camera
