// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Stands between a program and libuvc: every libuvc function that the panel may use is defined
// here once more, notes the call and hands it on to the real one. It shows what the wire cannot:
// contexts and lists, calls that fail before they reach the bus, calls on a dead handle.
//
// Two ways to put it there:
//
// - A test links uvc_call_recorder ahead of libuvc and uses the functions below.
// - A finished program runs under LD_PRELOAD=<this library>, told by two variables:
//     UVC_CALLS_FILE  the file to which each call is appended as one line, at once
//     UVC_CALLS_FAIL  what shall fail, as for failOnDemand: "uvc_open=-3,uvc_init#3=-99"
//   Beneath umockdev: LD_PRELOAD=<this library> umockdev-wrapper <program>.
//
// A line is the function, its arguments and its result:
//
//     uvc_init(context1) = 0
//     uvc_get_device_list(context1, list1) = 0
//     uvc_open(list1[0], handle1) = 0
//     uvc_set_pantilt_rel(handle1, 1, 21, 0, 0) = 0
//     uvc_get_brightness(handle1, GET_MIN) = 0
//     uvc_close(handle1)
//     uvc_exit(context1)
//
// Contexts, lists, descriptors and handles are numbered in the order of their first mention since
// the start or the last clear(), so two runs can be compared line by line. Null is written "null",
// and "no_handle", "no_context", ... stand for what was never made or has ended. A failed call
// makes nothing: "uvc_open(list1[0]) = -3". Of a read only the request is told, not the value.
//
// A call on a handle that is not open is noted and not handed on: libuvc would run wild. It
// answers UVC_ERROR_INVALID_DEVICE. Calls that libuvc makes into itself are not noted.
#pragma once

#include <string>
#include <vector>

namespace uvc_call_recorder {

/// Every call since the start or the last clear(), as above.
std::vector<std::string> calls();

/// The functions' names alone.
std::vector<std::string> names();

/// Forgets the calls and the numbers.
void clear();

/// Makes functions answer something else: a list of "function=status" (every call), "*=status"
/// (every function) or "function#n=status" (the n-th from now on alone), with commas between them.
/// A negative status fails without entering libuvc, another takes the place of libuvc's success.
/// Replaces what was asked for before; an empty text lets everything through.
void failOnDemand(const std::string &wishes);

} // namespace uvc_call_recorder
