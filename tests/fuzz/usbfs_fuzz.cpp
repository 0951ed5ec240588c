// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What programs do with the files of a device, several at a time, with faults and the cable being
// pulled in between. What only copies between a program's memory and this is not part of it.
//
// An input is: whether the device is a camera (odd) or a memory stick, then steps. A step is a
// byte (modulo the number of steps) and what the step takes. Pulling the cable is the last one.
#include "tests/fuzz/expect.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/usbfs_checks.h"

#include <array>

namespace {

using namespace virtual_camera;
using fuzz::CheckedUsbfs;
using fuzz::Input;

// Mostly small, but of every size that fits into a system call.
unsigned number(Input &input)
{
    const unsigned low = input.byte();
    return low == 0xff ? input.word() << 8U : low;
}

// As a program hands it over: setup packet, and room for the data or the data.
std::optional<ControlRequest> request(Input &input)
{
    constexpr std::size_t setupSize = 8;
    Bytes packet = input.bytes(setupSize);
    const bool setup = packet.size() == setupSize;
    const std::size_t length = setup ? packet[6] | static_cast<std::size_t>(packet[7]) << 8U : 0;
    if (setup && (packet[0] & 0x80U) != 0) {
        packet.resize(setupSize + length);
    } else {
        const Bytes data = input.bytes(length);
        packet.insert(packet.end(), data.begin(), data.end());
    }
    const std::optional<ControlRequest> parsed = parseControlRequest(packet.data(), packet.size());
    fuzz::expect(parsed.has_value() == (setup && packet.size() == setupSize + length),
        "a request is read when all of it is there");
    return parsed;
}

void open(CheckedUsbfs &usbfs, int, Input &) { usbfs.open(); }
void close(CheckedUsbfs &usbfs, int file, Input &) { usbfs.close(file); }
void claim(CheckedUsbfs &usbfs, int file, Input &input) { usbfs.claim(file, number(input)); }
void release(CheckedUsbfs &usbfs, int file, Input &input) { usbfs.release(file, number(input)); }
void detach(CheckedUsbfs &usbfs, int, Input &input) { usbfs.detachDriver(number(input)); }
void attach(CheckedUsbfs &usbfs, int, Input &input) { usbfs.attachDriver(number(input)); }
void clearHalt(CheckedUsbfs &usbfs, int file, Input &input)
{
    usbfs.clearHalt(file, number(input));
}
void reset(CheckedUsbfs &usbfs, int file, Input &) { usbfs.reset(file); }
void reap(CheckedUsbfs &usbfs, int file, Input &) { usbfs.reap(file); }
void letTimePass(CheckedUsbfs &usbfs, int, Input &) { usbfs.letTimePass(); }
void unplug(CheckedUsbfs &usbfs, int, Input &) { usbfs.unplug(); }

void configure(CheckedUsbfs &usbfs, int file, Input &input)
{
    usbfs.setConfiguration(file, static_cast<int>(number(input)));
}

void setInterface(CheckedUsbfs &usbfs, int file, Input &input)
{
    const unsigned interfaceNumber = number(input);
    usbfs.setInterface(file, interfaceNumber, number(input));
}

void submit(CheckedUsbfs &usbfs, int file, Input &input)
{
    const std::uint64_t address = input.byte();
    if (const std::optional<ControlRequest> wanted = request(input))
        usbfs.submit(file, address, 0, *wanted);
}

void listen(CheckedUsbfs &usbfs, int file, Input &input)
{
    const std::uint64_t address = input.byte();
    if (const std::uint8_t endpoint = input.byte())
        usbfs.submit(file, address, endpoint, {});
}

void discard(CheckedUsbfs &usbfs, int file, Input &input) { usbfs.discard(file, input.byte()); }

void transfer(CheckedUsbfs &usbfs, int file, Input &input)
{
    if (const std::optional<ControlRequest> wanted = request(input))
        usbfs.transfer(file, *wanted);
}

void breakSomething(CheckedUsbfs &usbfs, int, Input &input)
{
    const Control control = allControls()[input.oneOf(controlCount)].control;
    const std::uint8_t detail = input.byte();
    constexpr std::size_t effects = 7;
    constexpr std::size_t targets = 4;
    const std::size_t what = input.oneOf(3 + targets * effects);
    usbfs.breakSomething([=](Faults &faults) {
        if (what == 0) {
            faults.delay = std::chrono::milliseconds(detail);
        } else if (what == 1) {
            faults.claimRefused = true;
        } else if (what == 2) {
            faults = {};
        } else {
            Fault fault;
            fault.effect = static_cast<Fault::Effect>((what - 3) % effects);
            fault.bytes = detail / 4;
            fault.target.kind = static_cast<FaultTarget::Kind>((what - 3) / effects);
            fault.target.control = control;
            fault.schedule.kind = static_cast<FaultSchedule::Kind>(detail % 4);
            fault.schedule.number = detail / 4;
            faults.add(fault);
        }
    });
}

struct Step
{
    void (*run)(CheckedUsbfs &, int file, Input &);
    bool needsFile;
};

constexpr std::array<Step, 18> steps{ { { open, false }, { close, true }, { claim, true },
    { release, true }, { detach, false }, { attach, false }, { clearHalt, true },
    { configure, true }, { setInterface, true }, { submit, true }, { listen, true },
    { discard, true }, { reap, true }, { transfer, true }, { breakSomething, false },
    { letTimePass, false }, { reset, true }, { unplug, false } } };

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Input input(bytes, size);
    CheckedUsbfs usbfs(input.oneOf(2) != 0);
    usbfs.open();
    while (!input.empty()) {
        const Step &step = steps[input.oneOf(steps.size())];
        if (step.needsFile && !usbfs.anyFile())
            continue;
        const int file = step.needsFile ? usbfs.file(input.byte()) : 0;
        step.run(usbfs, file, input);
        if (step.run == unplug)
            return 0;
    }
    usbfs.finish();
    return 0;
}
