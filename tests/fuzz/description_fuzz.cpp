// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What somebody writes to describe a camera, and what becomes of it: the description, the
// descriptors and the camera's answers.
//
// An input is lines "key=value".
#include "tests/fuzz/compare.h"
#include "tests/fuzz/descriptor_checks.h"
#include "tests/fuzz/expect.h"
#include "tests/fuzz/input.h"
#include "virtual_camera/camera/camera_model.h"
#include "virtual_camera/camera/words.h"
#include "virtual_camera/usb/firmware.h"

#include <cerrno>
#include <cstdlib>

namespace {

using namespace virtual_camera;
using fuzz::expect;

// The C library's opinion on the number; it would take blanks and a plus sign, too.
void checkNumber(std::string_view given)
{
    const std::string text(given);
    const std::size_t sign = text.substr(0, 1) == "-" ? 1 : 0;
    const bool hexadecimal = text.compare(sign, 2, "0x") == 0 || text.compare(sign, 2, "0X") == 0;
    const std::size_t digits = sign + (hexadecimal ? 2 : 0);
    const char *const known = hexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    const bool wellFormed =
        digits < text.size() && text.find_first_not_of(known, digits) == std::string::npos;
    errno = 0;
    const long long number = std::strtoll(text.c_str(), nullptr, hexadecimal ? 16 : 10);
    const std::optional<std::int64_t> parsed = parseNumber(given);
    if (!wellFormed)
        expect(!parsed, "only digits are a number");
    else if (parsed)
        expect(*parsed == number && errno == 0, "a number is what the C library takes it for");
    else
        // The lowest number of all has no positive counterpart, and no camera needs it.
        expect(errno == ERANGE || number == INT64_MIN, "a number is read when it can be held");
}

void checkNames(std::string_view name)
{
    if (const std::optional<RequestCode> code = requestCodeFromName(name))
        expect(requestCodeName(static_cast<std::uint8_t>(*code)).size() == name.size(),
            "a request is called by its whole name");
    if (const ControlTraits *control = findControl(name))
        expect(name == control->name && findControl(control->entity, control->selector) == control,
            "a control is found by its name and its selector");
}

void checkRange(const Range &range, const Field &field)
{
    for (const std::int64_t number : { range.min, range.max, range.def, range.cur, range.res })
        expect(number >= field.lowest() && number <= field.highest(),
            "the numbers of a range have room in the control");
}

void apply(CameraDescription &description, std::string_view key, std::string_view value)
{
    const CameraDescription before = description;
    if (const std::optional<std::string> problem = applyOption(description, key, value)) {
        expect(!problem->empty(), "an option that is refused says why");
        expect(fuzz::same(before, description), "an option that is refused changes nothing");
        return;
    }
    CameraDescription again = description;
    expect(!applyOption(again, key, value) && fuzz::same(again, description),
        "an option can be given twice");
}

void checkCamera(const CameraDescription &description)
{
    for (const ControlTraits &control : allControls())
        checkRange(description.range(control.control), control.fields[0]);
    checkRange(description.tilt, traits(Control::PantiltAbsolute).fields[1]);

    const Descriptors descriptors = describeCamera(description);
    fuzz::checkDescriptors(descriptors, description);
    CameraModel camera(description, [] { return std::chrono::microseconds(0); });
    Firmware device(
        descriptors, [&camera](const ControlRequest &asked) { return camera.answer(asked); });
    for (const ControlTraits &control : allControls()) {
        ControlRequest request;
        request.requestType = 0xa1;
        request.request = static_cast<std::uint8_t>(RequestCode::GetCur);
        request.value = static_cast<std::uint16_t>(control.selector << 8);
        request.index = static_cast<std::uint16_t>(control.entity << 8);
        request.length = static_cast<std::uint16_t>(control.length());
        const Answer answer = device.answer(request);
        expect(answer.stalled != description.supports(control.control),
            "exactly the controls that a camera has answer");
        expect(answer.data.size() == (answer.stalled ? 0 : control.length()),
            "an answer is as long as the control");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    readLayout(Bytes(bytes, bytes + size));
    CameraDescription description;
    for (fuzz::Input input(bytes, size); !input.empty();) {
        const std::string_view line = input.line();
        const std::size_t equals = std::min(line.find('='), line.size());
        const std::string_view value = line.substr(std::min(equals + 1, line.size()));
        checkNumber(value);
        checkNames(line.substr(0, equals));
        fuzz::checkString(stringDescriptor(std::string(value)), std::string(value));
        apply(description, line.substr(0, equals), value);
    }
    checkCamera(description);
    return 0;
}
