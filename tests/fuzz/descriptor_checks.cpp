// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "tests/fuzz/descriptor_checks.h"

#include "tests/fuzz/expect.h"
#include "virtual_camera/camera/little_endian.h"

#include <map>
#include <string_view>
#include <vector>

namespace fuzz {

using namespace virtual_camera;

namespace {

constexpr std::uint8_t interfaceType = 0x04;
constexpr std::uint8_t classInterface = 0x24;

std::vector<Bytes> walk(const Bytes &all)
{
    std::vector<Bytes> single;
    for (std::size_t at = 0; at < all.size();) {
        const std::size_t length = all[at];
        expect(length >= 2 && length <= all.size() - at, "descriptors lie one behind the other");
        const auto start = all.begin() + static_cast<std::ptrdiff_t>(at);
        single.emplace_back(start, start + static_cast<std::ptrdiff_t>(length));
        at += length;
    }
    return single;
}

// The controls that an entity announces; none by one that is missing and by a connector. The
// streaming interface counts its own subtypes, so only what stands before it is searched.
std::uint64_t announced(const std::vector<Bytes> &descriptors, std::uint8_t entity)
{
    // Where the number of bytes stands, by subtype.
    const std::map<std::uint8_t, std::size_t> sizeAt{ { 2, 14 }, { 5, 7 }, { 6, 23 } };
    for (const Bytes &one : descriptors) {
        if (one[1] == interfaceType && one[2] == streamingInterface)
            break;
        if (one[1] != classInterface || one[3] != entity || sizeAt.count(one[2]) == 0)
            continue;
        const std::size_t at = sizeAt.at(one[2]);
        if (one.size() <= at)
            continue;
        expect(one.size() >= at + 1 + one[at], "a descriptor has room for its controls");
        return readUnsigned(&one[at + 1], one[at]);
    }
    return 0;
}

void checkAnnouncements(const std::vector<Bytes> &descriptors, const CameraDescription &description)
{
    for (const ControlTraits &control : allControls())
        expect((announced(descriptors, control.entity) >> control.announcedBit & 1U)
                == (description.supports(control.control) ? 1U : 0U),
            "exactly the controls that a camera has are announced");
}

void checkStringNumber(const Descriptors &descriptors, std::uint8_t number, const std::string &text)
{
    expect((number == 0) == text.empty(), "a text that is empty has no number");
    if (number == 0)
        return;
    expect(number < descriptors.strings.size(), "a text that has a number is there");
    checkString(descriptors.strings[number], text);
}

void appendUtf8(std::string &text, std::uint32_t character)
{
    const auto put = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80)
        return put(character);
    const unsigned more = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    put((0xff00U >> (more + 1) & 0xffU) | character >> 6U * more);
    for (unsigned i = more; i > 0; --i)
        put(0x80U | (character >> 6U * (i - 1) & 0x3fU));
}

} // namespace

void checkString(const Bytes &descriptor, const std::string &utf8)
{
    constexpr std::size_t mostUnits = 126;
    expect(descriptor.size() >= 2 && descriptor[0] == descriptor.size() && descriptor[1] == 3
            && descriptor.size() % 2 == 0,
        "a text has the length that it says, of whole characters");
    const std::size_t units = (descriptor.size() - 2) / 2;
    expect(units <= mostUnits, "a text is not longer than libraries read");
    std::string text;
    bool replaced = false;
    for (std::size_t i = 0; i < units; ++i) {
        auto character = static_cast<std::uint32_t>(readUnsigned(&descriptor[2 + 2 * i], 2));
        expect(
            character < 0xdc00 || character > 0xdfff, "a low surrogate has a high one before it");
        if (character >= 0xd800 && character < 0xdc00) {
            expect(++i < units, "a high surrogate has a low one behind it");
            const auto low = static_cast<std::uint32_t>(readUnsigned(&descriptor[2 + 2 * i], 2));
            expect(low >= 0xdc00 && low <= 0xdfff, "a high surrogate has a low one behind it");
            character = 0x10000 + ((character & 0x3ffU) << 10U) + (low & 0x3ffU);
        }
        replaced = replaced || character == 0xfffd;
        appendUtf8(text, character);
    }
    if (replaced)
        return;
    expect(utf8.compare(0, text.size(), text) == 0, "a text says what was given");
    expect(text == utf8 || units >= mostUnits - 1, "only a text that is too long is cut");
}

void checkDescriptors(const Descriptors &descriptors, const CameraDescription &description)
{
    const Bytes &device = descriptors.device;
    expect(device.size() == 18 && device[0] == 18 && device[1] == 1, "a device describes itself");
    expect(readUnsigned(&device[8], 2) == description.vendorId
            && readUnsigned(&device[10], 2) == description.productId,
        "a device has the numbers that it was given");
    checkStringNumber(descriptors, device[14], description.manufacturer);
    checkStringNumber(descriptors, device[15], description.product);
    checkStringNumber(descriptors, device[16], description.serial);

    const std::vector<Bytes> all = walk(descriptors.configuration);
    expect(!all.empty() && all[0].size() == 9
            && readUnsigned(&all[0][2], 2) == descriptors.configuration.size(),
        "a configuration has the length that it says");
    const InterfaceLayout layout = readLayout(descriptors.configuration);
    expect(layout.interfaces() == all[0][4], "a configuration has the interfaces that it says");
    expect(layout.interfaceOf(statusEndpoint) == controlInterface
            && layout.interfaceOf(pictureEndpoint) == streamingInterface,
        "every endpoint is at its interface");
    checkAnnouncements(all, description);
}

} // namespace fuzz
