// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace virtual_camera::json {

class Object;

/// A JSON value, kept as the text that goes out. Strings that are not UTF-8 are mended.
class Value
{
public:
    template<typename Flag, std::enable_if_t<std::is_same_v<Flag, bool>, int> = 0>
    Value(Flag on) : m_text(on ? "true" : "false")
    { }
    template<typename Number,
        std::enable_if_t<std::is_integral_v<Number> && !std::is_same_v<Number, bool>, int> = 0>
    Value(Number number) : m_text(std::to_string(number))
    { }
    Value(double number); // six decimals at most; null when it is not finite
    Value(std::string_view text);
    Value(const std::string &text) : Value(std::string_view(text)) { }
    Value(const char *text) : Value(std::string_view(text)) { }
    Value(const Object &object);
    Value(const std::vector<Value> &values);

    const std::string &text() const { return m_text; }

private:
    std::string m_text;
};

using Array = std::vector<Value>;

/// Members in the order in which they were added.
class Object
{
public:
    using Member = std::pair<std::string, Value>;

    Object() = default;
    Object(std::initializer_list<Member> members) : m_members(members) { }

    Object &add(std::string name, Value value);
    Object &add(const Object &other);
    const std::vector<Member> &members() const { return m_members; }
    std::string text() const;

private:
    std::vector<Member> m_members;
};

} // namespace virtual_camera::json
