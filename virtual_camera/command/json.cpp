// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/json.h"

#include <array>
#include <charconv>
#include <cmath>
#include <glib.h>

namespace virtual_camera::json {

namespace {

std::string escaped(std::string_view text)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "\"";
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (letter == '"' || letter == '\\') {
            result += '\\';
            result += letter;
        } else if (code < 0x20U) {
            result += "\\u00";
            result += digits[code >> 4U];
            result += digits[code & 0xfU];
        } else {
            result += letter;
        }
    }
    return result + '"';
}

std::string utf8(std::string_view text)
{
    gchar *valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    std::string result = valid;
    g_free(valid);
    return result;
}

} // namespace

Value::Value(double number)
{
    constexpr int decimals = 6;
    if (!std::isfinite(number)) {
        m_text = "null";
        return;
    }
    std::array<char, 400> digits{};
    char *const end = std::to_chars(
        digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals)
                          .ptr;
    m_text.assign(digits.data(), end);
    m_text.erase(m_text.find_last_not_of('0') + 1);
    if (m_text.back() == '.')
        m_text.pop_back();
    if (m_text == "-0")
        m_text = "0";
}

Value::Value(std::string_view text) : m_text(escaped(utf8(text))) { }

Value::Value(const Object &object) : m_text(object.text()) { }

Value::Value(const std::vector<Value> &values)
{
    for (const Value &value : values) {
        m_text += m_text.empty() ? '[' : ',';
        m_text += value.text();
    }
    m_text += values.empty() ? "[]" : "]";
}

Object &Object::add(std::string name, Value value)
{
    m_members.emplace_back(std::move(name), std::move(value));
    return *this;
}

Object &Object::add(const Object &other)
{
    m_members.insert(m_members.end(), other.m_members.begin(), other.m_members.end());
    return *this;
}

std::string Object::text() const
{
    std::string text = "{";
    for (const auto &[name, value] : m_members) {
        if (text.size() > 1)
            text += ',';
        text += escaped(name) + ':' + value.text();
    }
    return text + '}';
}

} // namespace virtual_camera::json
