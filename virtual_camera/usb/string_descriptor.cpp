// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/string_descriptor.h"

#include "virtual_camera/camera/little_endian.h"

#include <linux/usb/ch9.h>
#include <string_view>

namespace virtual_camera {

namespace {

// Takes one character off the front of the text.
char32_t takeCharacter(std::string_view &text)
{
    constexpr char32_t replacement = 0xfffd;
    const auto byteAt = [&text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned first = byteAt(0);
    const std::size_t length = first < 0x80 ? 1
        : first >= 0xf0 && first < 0xf5     ? 4
        : first >= 0xe0 && first < 0xf0     ? 3
        : first >= 0xc2 && first < 0xe0     ? 2
                                            : 0;
    char32_t character = length == 1 ? first : first & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xc0U) != 0x80) {
            text.remove_prefix(1);
            return replacement;
        }
        character = character << 6U | (byteAt(i) & 0x3fU);
    }
    text.remove_prefix(length == 0 ? 1 : length);
    constexpr char32_t smallest[] = { 0, 0, 0x80, 0x800, 0x10000 };
    const bool surrogate = character >= 0xd800 && character < 0xe000;
    if (length == 0 || surrogate || character > 0x10ffff || character < smallest[length])
        return replacement;
    return character;
}

} // namespace

Bytes stringDescriptor(const std::string &utf8)
{
    constexpr std::size_t longest = 2 + 126 * 2;
    Bytes bytes{ 0, USB_DT_STRING };
    for (std::string_view rest = utf8; !rest.empty();) {
        const char32_t character = takeCharacter(rest);
        if (bytes.size() + (character < 0x10000 ? 2 : 4) > longest)
            break;
        if (character < 0x10000) {
            append(bytes, character, 2);
        } else {
            append(bytes, 0xd800 + ((character - 0x10000) >> 10U), 2);
            append(bytes, 0xdc00 + ((character - 0x10000) & 0x3ffU), 2);
        }
    }
    bytes[0] = static_cast<std::uint8_t>(bytes.size());
    return bytes;
}

Bytes languagesDescriptor()
{
    constexpr std::int64_t unitedStates = 0x0409;
    Bytes bytes{ 4, USB_DT_STRING };
    append(bytes, unitedStates, 2);
    return bytes;
}

} // namespace virtual_camera
