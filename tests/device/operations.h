// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The interface as a table: what a camera receives of each operation, and what it answers.
#pragma once

#include "device/base_device.h"
#include "tests/device/wire.h"

#include <variant>
#include <vector>

/// Any operation of the interface.
using Member = std::variant<bool (BaseDevice::*)(const char *, int), void (BaseDevice::*)(),
    bool (BaseDevice::*)(), bool (BaseDevice::*)(int), bool (BaseDevice::*)(unsigned char),
    bool (BaseDevice::*)(long *)>;

struct Operation
{
    const char *name;
    Member member;
    int argument;            // of operations that take a number
    wire::Requests requests; // that reach the camera
    bool accepted;           // result when the camera takes them
    bool refused;            // result when the camera refuses them

    bool isGetter() const { return std::holds_alternative<bool (BaseDevice::*)(long *)>(member); }
};
std::ostream &operator<<(std::ostream &out, const Operation &operation);

/// All 84, in slot order. OpenDevice and CloseDevice stand first, without requests.
const std::vector<Operation> &operations();
/// The 82 that are requests to the open camera.
std::vector<Operation> onAnOpenCamera();

/// Value of a getter's variable before the call.
constexpr long untouched = -123456789;

struct Outcome
{
    bool result;
    long out;
};

Outcome call(BaseDevice &device, const Operation &operation);

/// Closes the device and uses every other operation, and expects each to answer as on a camera that
/// refuses everything.
void expectAllRefused(BaseDevice &device);
