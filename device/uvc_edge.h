// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// libuvc does not check its arguments, and ordinary use reaches its edges: the controls of a camera
// that could not be opened, one that was unplugged and is chosen again, a capture stick that is
// listed first. What would be undefined behaviour in libuvc becomes a negative status here. What
// reaches a camera is unchanged.
#pragma once

#include <libuvc/libuvc.h>

#include <cstdint>

namespace uvc_edge {

/// The units that take the panel's requests. A device may lack either: libuvc opens everything that
/// has a video control interface.
enum Unit { CameraTerminal, ProcessingUnit };

/// The camera that a device opened last; null before the first. Whether it is still open is kept
/// here, per device: libuvc may reuse the address of a closed handle for another device.
struct Handle
{
    uvc_device_handle_t *devh = nullptr;
    /// What a request to each unit answers instead of being made, or success.
    uvc_error_t ready[2] = { UVC_ERROR_NO_DEVICE, UVC_ERROR_NO_DEVICE };
};

/// Every libuvc call returns a status; a negative one is a failure.
constexpr bool succeeded(int status) { return status >= 0; }

/// Takes the list of UVC devices. UVC_ERROR_NO_DEVICE for a context that could not be made.
uvc_error_t deviceList(uvc_context_t *context, uvc_device_t ***list);

/// Opens entry `index` of a null-terminated list and stores the handle. UVC_ERROR_NO_DEVICE for an
/// entry that does not exist and for a list that was never taken. A failure leaves the handle as it
/// was.
uvc_error_t open(uvc_device_t **list, int index, Handle &handle);

/// Closes an open handle; UVC_ERROR_NO_DEVICE for any other.
uvc_error_t close(Handle &handle);

/// Makes one control request and returns its status: a libuvc function that addresses `unit`, and
/// its arguments after the handle, narrowed to the types that the function takes.
/// UVC_ERROR_NO_DEVICE on a handle that is not open, UVC_ERROR_NOT_SUPPORTED for a unit that the
/// camera lacks.
template<typename... Parameters, typename... Arguments>
int request(const Handle &handle, Unit unit,
    uvc_error_t (*call)(uvc_device_handle_t *, Parameters...), Arguments... arguments)
{
    const uvc_error_t ready = handle.ready[unit];
    return succeeded(ready) ? call(handle.devh, static_cast<Parameters>(arguments)...) : ready;
}

/// The same for a request that sets something. Returns whether it succeeded.
template<typename... Parameters, typename... Arguments>
bool set(const Handle &handle, Unit unit,
    uvc_error_t (*setter)(uvc_device_handle_t *, Parameters...), Arguments... arguments)
{
    return succeeded(request(handle, unit, setter, arguments...));
}

template<typename Value>
using Getter = uvc_error_t (*)(uvc_device_handle_t *, Value *, uvc_req_code);

/// Reads a current value. Returns whether the request succeeded; only then is `*out` written. An
/// answer without data counts as success in libuvc: the value is then 0. `status`, if given,
/// receives the request's status.
template<typename Value>
bool get(const Handle &handle, Unit unit, Getter<Value> getter, long *out,
    std::int32_t *status = nullptr)
{
    Value value = 0;
    const int answered = request(handle, unit, getter, &value, UVC_GET_CUR);
    if (status)
        *status = answered;
    if (succeeded(answered))
        *out = value;
    return succeeded(answered);
}

} // namespace uvc_edge
