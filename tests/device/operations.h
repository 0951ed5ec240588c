// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The interface as a table: each operation with its place in the object's virtual table, what a
// camera receives of it and what it answers.
//
// The layout of objects and member pointers is that of the Itanium C++ ABI, which GCC and Clang
// follow everywhere but on Windows: an object begins with the address of its class's virtual
// table, whose entries are the operations in the order of their declaration; a pointer to a
// virtual member function holds its entry's offset instead of an address.
#pragma once

#include "device/base_device.h"
#include "tests/device/wire.h"

#include <string>
#include <variant>
#include <vector>

/// Any operation of the interface.
using Member = std::variant<bool (BaseDevice::*)(const char *, int), void (BaseDevice::*)(),
    bool (BaseDevice::*)(), bool (BaseDevice::*)(int), bool (BaseDevice::*)(unsigned char),
    bool (BaseDevice::*)(long *)>;

struct Operation
{
    int slot;
    const char *name;
    Member member;
    int argument;            // of operations that take a number
    wire::Requests requests; // that reach the camera
    bool accepted;           // result when the camera takes them
    bool refused;            // result when the camera refuses them
};
std::ostream &operator<<(std::ostream &out, const Operation &operation);

/// All 84, in slot order. OpenDevice and CloseDevice stand first, without requests.
const std::vector<Operation> &operations();

/// Value of a getter's variable before the call.
constexpr long untouched = -123456789;

struct Outcome
{
    bool result;
    long out;
};

/// Calls the operation by its name, through the interface.
Outcome call(BaseDevice &device, const Member &member, int argument);
/// Calls whatever stands in the slot, as an operation that takes and returns what `like` does.
Outcome callSlot(BaseDevice &device, int slot, const Member &like, int argument);

/// The slot that a call by name goes through.
int slotOf(const Member &member);
/// The address in the slot.
void *entry(const BaseDevice &device, int slot);
/// The symbol of USBDevice's own operation: "_ZN9USBDevice11StartMoveUpEi".
std::string symbolOf(const Operation &operation);
