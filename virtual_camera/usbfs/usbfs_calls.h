// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/usbfs/usbfs.h"

namespace virtual_camera {

/// A system call on the device node that is done at once and needs no memory of the program but its
/// argument.
struct UsbfsCall
{
    unsigned long request; ///< USBDEVFS_...
    /// 0 or more, or a negative errno. The argument has the size that the request's number says.
    int (*perform)(Usbfs &usbfs, int file, void *argument);
    bool answers; ///< the program gets the argument back
};

/// Null for a call that is none of these.
const UsbfsCall *findUsbfsCall(unsigned long request);

} // namespace virtual_camera
