// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/interface_layout.h"

#include <algorithm>
#include <cstddef>
#include <linux/usb/ch9.h>

namespace virtual_camera {

int InterfaceLayout::interfaces() const
{
    int count = 0;
    for (const Setting &setting : settings)
        count = std::max(count, setting.interfaceNumber + 1);
    return count;
}

const InterfaceLayout::Setting *InterfaceLayout::find(int interfaceNumber, int alternate) const
{
    for (const Setting &setting : settings) {
        if (setting.interfaceNumber == interfaceNumber && setting.alternate == alternate)
            return &setting;
    }
    return nullptr;
}

int InterfaceLayout::interfaceOf(std::uint8_t endpoint) const
{
    for (const Setting &setting : settings) {
        const auto &known = setting.endpoints;
        if (std::find(known.begin(), known.end(), endpoint) != known.end())
            return setting.interfaceNumber;
    }
    return -1;
}

InterfaceLayout readLayout(const Bytes &configuration)
{
    InterfaceLayout layout;
    for (std::size_t at = 0; at + 1 < configuration.size();) {
        const std::uint8_t *bytes = &configuration[at];
        const std::size_t size = bytes[0];
        if (size < 2 || at + size > configuration.size())
            break;
        if (bytes[1] == USB_DT_INTERFACE && size >= USB_DT_INTERFACE_SIZE)
            layout.settings.push_back({ bytes[2], bytes[3], bytes[5], bytes[6], bytes[7], {} });
        else if (bytes[1] == USB_DT_ENDPOINT && size > 2 && !layout.settings.empty())
            layout.settings.back().endpoints.push_back(bytes[2]);
        at += size;
    }
    return layout;
}

} // namespace virtual_camera
