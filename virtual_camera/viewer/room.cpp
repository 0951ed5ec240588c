// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/viewer/room.h"

#include <QFont>
#include <QHash>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace virtual_camera {

namespace {

constexpr double floorLine = 13; // where the floor meets the wall
constexpr double ceilingLine = -26;

struct Person
{
    double pan;
    const char *name;
    const char *skin;
    const char *hair;
    const char *shirt;
};

constexpr std::array<Person, 4> seated{ {
    { -33, "ANNA", "#e8b894", "#5b3a1e", "#b8433f" },
    { -12, "BEN", "#8d5a3b", "#1d1512", "#2f6f9f" },
    { 10, "CHLOE", "#f0c8a8", "#c98a2b", "#5d8a4a" },
    { 31, "DAVID", "#c99470", "#3a3a40", "#7a5aa0" },
} };
constexpr Person standing{ 0, "EVA", "#a8714c", "#2a1a14", "#d09a2c" };
constexpr double presenterStart = 58;
constexpr double presenterHead = -5.5;

constexpr QRectF table(-46, 3.5, 90, 7);
constexpr QRectF plant(-66, -8, 10, 26);
constexpr QRectF microphone(18.6, -2, 3, 22);

bool visible(const QPainter &painter, const QRectF &place)
{
    const QRectF seen = painter.transform().mapRect(place);
    return seen.intersects(QRectF(painter.viewport()));
}

void box(QPainter &painter, const QRectF &place, const QColor &colour)
{
    if (visible(painter, place))
        painter.fillRect(place, colour);
}

// Letters as outlines: a font size in degrees would be below one.
QPainterPath outlined(const QString &words)
{
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(100);
    font.setBold(true);
    QPainterPath path;
    path.addText(0, 0, font, words);
    return path;
}

const QPainterPath &outlines(const QString &words)
{
    static QHash<QString, QPainterPath> known; // to lay them out takes longer than to paint them
    auto found = known.find(words);
    if (found == known.end())
        found = known.insert(words, outlined(words));
    return *found;
}

// Fits the words into the place.
void text(QPainter &painter, const QRectF &place, const QString &words, const QColor &colour)
{
    if (!visible(painter, place))
        return;
    const QPainterPath &path = outlines(words);
    const QRectF size = path.boundingRect();
    const double scale = std::min(place.width() / size.width(), place.height() / size.height());
    painter.save();
    painter.translate(place.center());
    painter.scale(scale, scale);
    painter.translate(-size.center());
    painter.fillPath(path, colour);
    painter.restore();
}

void paintWindow(QPainter &painter, double left)
{
    const QRectF frame(left, -19, 20, 24);
    box(painter, frame, "#efece4");
    const QRectF glass = frame.adjusted(0.8, 0.8, -0.8, -0.8);
    QLinearGradient sky(glass.topLeft(), glass.bottomLeft());
    sky.setColorAt(0, "#6fa9dc");
    sky.setColorAt(1, "#e3eef5");
    painter.fillRect(glass, sky);
    painter.save();
    painter.setClipRect(glass);
    painter.setBrush(QColor("#fff3c4"));
    painter.drawEllipse(QPointF(left + 15, -15), 1.6, 1.6);
    for (int house = 0; house < 7; ++house) {
        const double height = 4 + 5 * std::abs(std::sin(house * 2.1 + left));
        box(painter, { left + house * 3.0, 5 - height, 2.7, height },
            QColor::fromHsv(215, 60, 110 + 12 * (house % 4)));
        for (int row = 0; row < static_cast<int>(height) - 1; ++row)
            box(painter, { left + house * 3.0 + 0.4, 5 - height + 0.5 + row, 1.8, 0.35 },
                "#d8dfe6");
    }
    painter.restore();
    box(painter, { left + 9.7, -19, 0.6, 24 }, "#efece4");
    box(painter, { left, -8, 20, 0.5 }, "#efece4");
}

// A test chart: fine lines show focus, grey steps exposure, patches colour.
void paintScreen(QPainter &painter)
{
    box(painter, { -23, -22, 46, 25 }, "#22262b");
    const QRectF picture(-22, -21, 44, 23);
    box(painter, picture, "#f4f5f2");
    const std::array<const char *, 7> patches{ "#c0392b", "#d68910", "#d4c21a", "#27ae60",
        "#1f9aa8", "#2a5fc4", "#8e44ad" };
    double left = -20;
    for (const char *patch : patches) {
        box(painter, { left, -7.6, 5, 4 }, patch);
        left += 40.0 / 7;
    }
    for (int step = 0; step < 11; ++step)
        box(painter, { -20 + step * 40.0 / 11, -2.9, 40.0 / 11, 3.4 },
            QColor::fromHsv(0, 0, 255 * step / 10));
    for (int line = 0; line < 40; ++line) {
        const double width = line < 20 ? 0.12 : 0.05;
        box(painter, { -20 + line * 0.3, -13.2, width, 4.6 }, "#15181b");
    }
    text(painter, { -20, -19.8, 40, 5 }, QStringLiteral("WELCOME"), "#1d3557");
    text(painter, { -6, -13, 26, 2.6 }, QStringLiteral("Annual meeting · Hall 1"), "#3c4a57");
    text(painter, { -6, -9.8, 26, 0.7 },
        QStringLiteral("small print that only a long lens can read, word for word"), "#3c4a57");
}

void paintDoor(QPainter &painter, double left)
{
    box(painter, { left, -14, 13, 27 }, "#6d4c35");
    box(painter, { left + 1, -13, 11, 26 }, "#8a6244");
    painter.setBrush(QColor("#e0c060"));
    painter.drawEllipse(QPointF(left + 10.6, 1), 0.5, 0.5);
    box(painter, { left + 3, -18.5, 7, 3 }, "#1e8f4e");
    text(painter, { left + 3.6, -18.1, 5.8, 2.2 }, QStringLiteral("EXIT"), "white");
}

void paintBooks(QPainter &painter, double left)
{
    box(painter, { left, -17, 34, 30 }, "#5a4130");
    for (int shelf = 0; shelf < 4; ++shelf) {
        const double bottom = -10.5 + shelf * 7;
        box(painter, { left + 0.8, bottom - 5.7, 32.4, 5.7 }, "#3d2b20");
        for (int book = 0; book < 26; ++book) {
            const int mix = book * 7 + shelf * 13;
            const double height = 3.6 + (mix % 5) * 0.4;
            box(painter, { left + 1.2 + book * 1.22, bottom - height, 1.0, height },
                QColor::fromHsv(mix * 37 % 360, 110 + mix % 60, 120 + mix * 5 % 90));
        }
    }
}

void paintClock(QPainter &painter, QPointF centre)
{
    painter.setBrush(QColor("#20242a"));
    painter.drawEllipse(centre, 3.4, 3.4);
    painter.setBrush(QColor("#f7f7f2"));
    painter.drawEllipse(centre, 3.0, 3.0);
    painter.save();
    painter.translate(centre);
    for (int hour = 0; hour < 12; ++hour) {
        box(painter, { -0.12, -2.8, 0.24, 0.7 }, "#20242a");
        painter.rotate(30);
    }
    painter.rotate(305);
    box(painter, { -0.16, -1.6, 0.32, 1.9 }, "#20242a");
    painter.rotate(115);
    box(painter, { -0.1, -2.4, 0.2, 2.7 }, "#20242a");
    painter.restore();
}

// Panels on walls and ceiling, with a pin at each degree for long lenses: there is no place where a
// motion cannot be seen.
void paintPanels(QPainter &painter)
{
    constexpr double top = -100;
    constexpr double longLens = 25;
    const QColor seam(0, 0, 0, 26);
    const QRectF seen = painter.transform().inverted().mapRect(QRectF(painter.viewport()));
    const auto first = [](double place, int step) {
        return step * static_cast<int>(std::floor(place / step));
    };
    for (int x = first(seen.left(), 10); x <= seen.right(); x += 10)
        box(painter, { x - 0.05, top, 0.1, floorLine - top }, seam);
    for (int y = first(seen.top(), 10); y <= std::min(seen.bottom(), floorLine); y += 10)
        box(painter, { seen.left(), y - 0.05, seen.width(), 0.1 }, seam);
    if (seen.width() > longLens)
        return;
    for (int x = first(seen.left(), 1); x <= seen.right(); ++x)
        for (int y = first(seen.top(), 1); y <= std::min(seen.bottom(), floorLine); ++y)
            box(painter, { x - 0.03, y - 0.03, 0.06, 0.06 }, seam.darker());
}

// Numbers along the walls.
void paintBearings(QPainter &painter)
{
    for (int bearing = -180; bearing < 180; bearing += 30) {
        box(painter, { bearing - 0.1, ceilingLine, 0.2, 1.2 }, "#8b8f92");
        text(painter, { bearing - 3.0, ceilingLine + 1.5, 6, 1.6 },
            QString::number(bearing) + QChar(0xb0), "#7b8084");
    }
}

void paintFloorAndCeiling(QPainter &painter)
{
    QLinearGradient floor(0, floorLine, 0, 60);
    floor.setColorAt(0, "#6b5a4b");
    floor.setColorAt(1, "#3f352d");
    painter.fillRect(QRectF(-260, floorLine, 520, 90), floor);
    for (int board = -250; board < 250; board += 10)
        box(painter, { board + 0.0, floorLine, 0.25, 70 }, "#55473b");
    box(painter, { -260, floorLine - 1.2, 520, 1.2 }, "#cfc8ba");
    box(painter, { -260, -130, 520, 130 + ceilingLine }, "#e9e7e1");
    for (int lamp = -240; lamp < 250; lamp += 30) {
        for (const double height : { -36.0, -52.0, -72.0 })
            box(painter, { lamp + 5.0, height, 16, 5 }, "#fffdf2");
    }
}

void paintHead(QPainter &painter, const Person &person, QPointF head, double size)
{
    painter.setBrush(QColor(person.hair));
    painter.drawEllipse(head + QPointF(0, -0.5 * size), 2.25 * size, 2.7 * size);
    painter.setBrush(QColor(person.skin));
    painter.drawRect(QRectF(head.x() - 0.7 * size, head.y() + 1.6 * size, 1.4 * size, 2 * size));
    painter.drawEllipse(head, 1.85 * size, 2.5 * size);
    for (const int side : { -1, 1 }) {
        const QPointF eye = head + QPointF(side * 0.75 * size, -0.3 * size);
        painter.setBrush(Qt::white);
        painter.drawEllipse(eye, 0.36 * size, 0.22 * size);
        painter.setBrush(QColor("#2a2320"));
        painter.drawEllipse(eye, 0.16 * size, 0.18 * size);
        painter.drawRect(
            QRectF(eye.x() - 0.4 * size, eye.y() - 0.62 * size, 0.8 * size, 0.16 * size));
    }
    painter.setBrush(QColor(person.skin).darker(118));
    painter.drawEllipse(head + QPointF(0, 0.45 * size), 0.24 * size, 0.38 * size);
    painter.setBrush(QColor("#a04840"));
    painter.drawEllipse(head + QPointF(0, 1.3 * size), 0.6 * size, 0.18 * size);
}

void paintBody(QPainter &painter, const Person &person, const QRectF &body)
{
    painter.setBrush(QColor(person.shirt));
    painter.drawRoundedRect(body, 3, 2.4);
    painter.setBrush(QColor(person.shirt).darker(125));
    painter.drawRect(QRectF(body.center().x() - 0.15, body.top(), 0.3, body.height()));
}

} // namespace

const std::array<Room::Layer, 3> Room::layers{ {
    { 6.0, &Room::paintWalls },
    { 3.0, &Room::paintPeople },
    { 1.2, &Room::paintNear },
} };

double Room::distanceAt(QPointF place) const
{
    if (plant.contains(place) || microphone.contains(place))
        return layers[2].distance;
    const bool atTable = place.x() > table.left() && place.x() < table.right() && place.y() > -7
        && place.y() < table.bottom();
    const bool atPresenter = std::abs(place.x() - presenter().x()) < 5 && place.y() > -9;
    return atTable || atPresenter ? layers[1].distance : layers[0].distance;
}

QPointF Room::presenter() const
{
    return { presenterStart + 8 * std::sin(m_walked * 0.5), presenterHead };
}

void Room::walk(double seconds) { m_walked += seconds; }

void Room::paintWalls(QPainter &painter) const
{
    painter.setPen(Qt::NoPen);
    QLinearGradient wall(0, ceilingLine, 0, floorLine);
    wall.setColorAt(0, "#cdd2d2");
    wall.setColorAt(1, "#aeb4b4");
    painter.fillRect(QRectF(-260, ceilingLine, 520, floorLine - ceilingLine), wall);
    paintFloorAndCeiling(painter);
    paintPanels(painter);
    for (const double left : { -112.0, -88.0 })
        paintWindow(painter, left);
    paintScreen(painter);
    paintClock(painter, { 36, -17 });
    paintDoor(painter, 74);
    paintBooks(painter, 100);
    paintDoor(painter, -160);
    text(painter, { 146, -14, 28, 10 }, QStringLiteral("HALL 1"), "#8f2f2f");
    text(painter, { -141, -12, 24, 6 }, QStringLiteral("QUIET, PLEASE"), "#2f5a8f");
    paintBearings(painter);
}

void Room::paintPeople(QPainter &painter) const
{
    painter.setPen(Qt::NoPen);
    const QPointF head = presenter();
    paintBody(painter, standing, { head.x() - 4.2, head.y() + 3.4, 8.4, 15 });
    box(painter, { head.x() - 3.4, head.y() + 17, 6.8, 12 }, "#2b3242");
    paintHead(painter, standing, head, 1);
    for (const Person &person : seated) {
        const QPointF face(person.pan, -2.6);
        paintBody(painter, person, { face.x() - 4.6, face.y() + 3.2, 9.2, 8 });
        paintHead(painter, person, face, 1);
    }
    box(painter, table, "#7b5636");
    box(painter, { table.left(), table.top(), table.width(), 0.8 }, "#a9794e");
    for (const double leg : { table.left() + 2, table.right() - 4 })
        box(painter, { leg, table.bottom(), 2, 12 }, "#4c3421");
    for (const Person &person : seated) {
        box(painter, { person.pan - 3.4, table.top() + 1.6, 6.8, 2.6 }, "#f5f3ea");
        text(painter, { person.pan - 2.9, table.top() + 1.9, 5.8, 2 },
            QString::fromLatin1(person.name), "#22262b");
    }
}

void Room::paintNear(QPainter &painter) const
{
    painter.setPen(Qt::NoPen);
    for (int leaf = -4; leaf <= 4; ++leaf) {
        painter.save();
        painter.translate(plant.center().x(), 6);
        painter.rotate(leaf * 17);
        painter.setBrush(QColor::fromHsv(118, 150, 95 + 12 * std::abs(leaf)));
        painter.drawEllipse(QPointF(0, -7), 1.3, 6.6);
        painter.restore();
    }
    painter.setBrush(QColor("#a5522e"));
    painter.drawRoundedRect(QRectF(plant.left() + 1.5, 6, 7, 9), 1, 1);
    painter.setBrush(QColor("#2c3036"));
    painter.drawRoundedRect(microphone.adjusted(0.4, 0, -0.4, -17), 1.1, 1.1);
    box(painter, { microphone.center().x() - 0.25, 2.5, 0.5, 30 }, "#4a5058");
}

} // namespace virtual_camera
