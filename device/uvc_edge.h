// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// libuvc checks nothing that it is handed. Ordinary use reaches its edges all the same: a camera
// that may not be opened and whose controls are used, one that was unplugged and is chosen again.
// Every call on a handle or a list therefore goes through here, where what libuvc would turn into
// undefined behaviour becomes a negative status. What reaches the camera is not changed by it.
#pragma once

#include <libuvc/libuvc.h>

#include <type_traits>

namespace uvc_edge {

/// A camera that a device has opened, closed again, or (null) not opened yet. Whether it is open
/// is remembered here, per device: libuvc may give one device the address that another's handle
/// had before it was closed.
struct Handle
{
    uvc_device_handle_t *devh = nullptr;
    bool open = false;
};

/// Takes the list of UVC devices. UVC_ERROR_NO_DEVICE for a context that could not be made.
uvc_error_t deviceList(uvc_context_t *context, uvc_device_t ***list);

/// Opens entry `index` of a null-terminated list and stores the handle. An entry that does not
/// exist, or a list that was never taken, answers UVC_ERROR_NO_DEVICE. On failure the handle keeps
/// what it had.
uvc_error_t open(uvc_device_t **list, int index, Handle &handle);

/// Closes an open handle; UVC_ERROR_NO_DEVICE for any other.
uvc_error_t close(Handle &handle);

/// Makes one control request: a libuvc function and its arguments after the handle. On a handle
/// that is not open it answers UVC_ERROR_NO_DEVICE without entering libuvc.
template<typename... Parameters>
int request(uvc_error_t (*call)(uvc_device_handle_t *, Parameters...), const Handle &handle,
    std::common_type_t<Parameters>... arguments)
{
    return handle.open ? call(handle.devh, arguments...) : UVC_ERROR_NO_DEVICE;
}

} // namespace uvc_edge
