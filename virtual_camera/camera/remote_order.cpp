// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/remote_order.h"

#include "virtual_camera/camera/words.h"

#include <algorithm>

namespace virtual_camera {

namespace {

using Motor = Mechanics::Motor;
using Problem = std::optional<std::string>;

struct Key
{
    std::string_view word;
    Motor motor;
    int direction; // 0: a place
};
constexpr std::array<Key, 12> keys{ {
    { "pan", Motor::Pan, 0 },
    { "tilt", Motor::Tilt, 0 },
    { "zoom", Motor::Zoom, 0 },
    { "focus", Motor::Focus, 0 },
    { "left", Motor::Pan, -1 },
    { "right", Motor::Pan, 1 },
    { "down", Motor::Tilt, -1 },
    { "up", Motor::Tilt, 1 },
    { "out", Motor::Zoom, -1 },
    { "in", Motor::Zoom, 1 },
    { "far", Motor::Focus, -1 },
    { "near", Motor::Focus, 1 },
} };

constexpr std::int64_t fullSpeed = 255;
constexpr std::int64_t highestPreset = 32767;

// "left=3"; without a value only "left".
struct Word
{
    std::string_view name;
    std::string_view value;
    bool hasValue;
};

Problem readMove(RemoteOrder &order, const Key &key, const Word &word)
{
    const std::string name(word.name);
    const std::optional<std::int64_t> number = parseNumber(word.value);
    RemoteOrder::Move &move = order.moves[static_cast<std::size_t>(key.motor)];
    if (key.direction == 0) {
        if (!number)
            return name + " needs a place, as in " + name + "=100";
        move = *number;
        return std::nullopt;
    }
    const std::int64_t speed = word.hasValue ? number.value_or(0) : fullSpeed;
    if (speed < 1 || speed > fullSpeed)
        return name + " takes a speed from 1 to " + std::to_string(fullSpeed);
    move = Drive{ key.direction, static_cast<int>(speed) };
    return std::nullopt;
}

Problem readPreset(RemoteOrder &order, std::string_view value)
{
    const std::int64_t number = parseNumber(value).value_or(-1);
    if (number < 0 || number > highestPreset)
        return "preset needs a number, as in preset=1";
    order.preset = static_cast<int>(number);
    return std::nullopt;
}

Problem readWord(RemoteOrder &order, std::string_view text)
{
    const std::size_t equals = std::min(text.find('='), text.size());
    const bool hasValue = equals < text.size();
    const Word word{ text.substr(0, equals), hasValue ? text.substr(equals + 1) : "", hasValue };
    if (word.name == "preset")
        return readPreset(order, word.value);
    const auto *const key = std::find_if(
        keys.begin(), keys.end(), [&word](const Key &known) { return known.word == word.name; });
    if (key != keys.end())
        return readMove(order, *key, word);
    if (text == "home")
        order.home = true;
    else if (text == "stop")
        order.moves.fill(Drive{});
    else
        return "no move is called '" + std::string(text) + "'";
    return std::nullopt;
}

} // namespace

std::optional<std::string> readRemoteOrder(
    RemoteOrder &order, const std::vector<std::string_view> &words)
{
    for (const std::string_view word : words) {
        if (Problem problem = readWord(order, word))
            return problem;
    }
    if ((order.home || order.preset) && words.size() > 1)
        return "home and preset move all motors: no other move can stand beside them";
    return std::nullopt;
}

} // namespace virtual_camera
