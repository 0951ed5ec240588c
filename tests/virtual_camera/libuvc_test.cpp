// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The emulated bus beneath the real libuvc.

#include "virtual_camera/testbed/testbed.h"

#include <array>
#include <cerrno>
#include <gmock/gmock.h>
#include <libusb.h>
#include <libuvc/libuvc.h>
#include <string>
#include <thread>

using namespace virtual_camera;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Libuvc
{
public:
    Libuvc()
    {
        EXPECT_EQ(uvc_init(&m_context, nullptr), UVC_SUCCESS);
        list();
    }
    ~Libuvc()
    {
        uvc_free_device_list(m_list, 1);
        uvc_exit(m_context);
    }
    Libuvc(const Libuvc &) = delete;
    Libuvc &operator=(const Libuvc &) = delete;

    void list()
    {
        if (m_list != nullptr)
            uvc_free_device_list(m_list, 1);
        EXPECT_EQ(uvc_get_device_list(m_context, &m_list), UVC_SUCCESS);
    }
    int count() const
    {
        int found = 0;
        while (m_list[found] != nullptr)
            ++found;
        return found;
    }
    uvc_device_t *device(int index) const { return m_list[index]; }
    uvc_device_handle_t *open(int index)
    {
        uvc_device_handle_t *handle = nullptr;
        m_status = uvc_open(m_list[index], &handle);
        return handle;
    }
    int status() const { return m_status; }
    std::string product(int index) const
    {
        uvc_device_descriptor_t *descriptor = nullptr;
        EXPECT_EQ(uvc_get_device_descriptor(m_list[index], &descriptor), UVC_SUCCESS);
        const std::string name = descriptor->product != nullptr ? descriptor->product : "(none)";
        uvc_free_device_descriptor(descriptor);
        return name;
    }
    std::string serial(int index) const
    {
        uvc_device_descriptor_t *descriptor = nullptr;
        EXPECT_EQ(uvc_get_device_descriptor(m_list[index], &descriptor), UVC_SUCCESS);
        const std::string name = descriptor->serialNumber;
        uvc_free_device_descriptor(descriptor);
        return name;
    }

private:
    uvc_context_t *m_context = nullptr;
    uvc_device_t **m_list = nullptr;
    int m_status = 0;
};

int brightness(uvc_device_handle_t *handle)
{
    std::int16_t value = -1;
    const uvc_error_t status = uvc_get_brightness(handle, &value, UVC_GET_CUR);
    return status < 0 ? int{ status } : value;
}

TEST(LibuvcOnTheEmulatedBus, ListsTheCamerasInTheirOrder)
{
    Testbed bed(9);
    const Libuvc uvc;
    ASSERT_EQ(uvc.count(), 9);
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(uvc.serial(i), "00000" + std::to_string(i + 1));
}

TEST(LibuvcOnTheEmulatedBus, SkipsWhatIsNoCamera)
{
    Testbed bed({ DeviceDescription::storage(), DeviceDescription::ptzCamera(),
        DeviceDescription::otherCamera(), DeviceDescription::storage(),
        DeviceDescription::ptzCamera() });
    const Libuvc uvc;
    ASSERT_EQ(uvc.count(), 3);
    EXPECT_EQ(uvc.product(0), "Virtual PTZ Camera");
    EXPECT_EQ(uvc.product(1), "Desk camera");
    EXPECT_EQ(uvc.product(2), "Virtual PTZ Camera");
}

TEST(LibuvcOnTheEmulatedBus, SendsWhatTheLogSays)
{
    Testbed bed(1);
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    EXPECT_EQ(uvc_set_pantilt_rel(camera, 1, 21, 0, 0), UVC_SUCCESS);
    EXPECT_EQ(uvc_set_pantilt_abs(camera, -3600, 7200), UVC_SUCCESS);
    EXPECT_EQ(uvc_set_roll_abs(camera, 103), UVC_SUCCESS);
    EXPECT_EQ(brightness(camera), 128);
    EXPECT_LT(uvc_set_power_line_frequency(camera, 9), 0);
    uvc_close(camera);
    EXPECT_THAT(bed.log().lines(),
        ElementsAre("cam1 SET_CUR pantilt_relative pan=+1 pan_speed=21 tilt=0 tilt_speed=0 [01 15 "
                    "00 00] ok",
            "cam1 SET_CUR pantilt_absolute pan=-3600 tilt=7200 [f0 f1 ff ff 20 1c 00 00] ok",
            "cam1 SET_CUR roll_absolute value=103 (recall preset 3) [67 00] ok",
            "cam1 GET_CUR brightness value=128 [80 00] ok",
            "cam1 SET_CUR power_line_frequency value=9 [09] stall"));
}

TEST(LibuvcOnTheEmulatedBus, ReadsTheStringsOfACameraThatIsOpen)
{
    Testbed bed(1);
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    // libuvc's own thread waits on the first file while a second one is used.
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(uvc.product(0), "Virtual PTZ Camera");
        EXPECT_EQ(brightness(camera), 128);
    }
    uvc_close(camera);
}

TEST(LibuvcOnTheEmulatedBus, OpensTwoCamerasAtATime)
{
    Testbed bed(2);
    Libuvc uvc;
    uvc_device_handle_t *first = uvc.open(0);
    uvc_device_handle_t *second = uvc.open(1);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(uvc_set_brightness(first, 10), UVC_SUCCESS);
    EXPECT_EQ(uvc_set_brightness(second, 20), UVC_SUCCESS);
    EXPECT_EQ(brightness(first), 10);
    EXPECT_EQ(brightness(second), 20);
    uvc_close(first);
    uvc_close(second);
}

TEST(LibuvcOnTheEmulatedBus, GivesTheCameraBackWhenItIsClosed)
{
    Testbed bed(1);
    Libuvc uvc;
    for (int i = 0; i < 3; ++i) {
        uvc_device_handle_t *camera = uvc.open(0);
        ASSERT_NE(camera, nullptr);
        EXPECT_EQ(brightness(camera), 128);
        uvc_close(camera);
    }
    EXPECT_TRUE(bed.log().waitForLine("cam1 CLOSE file=6"));
}

TEST(LibuvcOnTheEmulatedBus, MayBeRefusedToOpen)
{
    Testbed bed(1);
    Libuvc uvc;
    bed.device(1).refuseOpen(EACCES);
    EXPECT_EQ(uvc.open(0), nullptr);
    EXPECT_EQ(uvc.status(), UVC_ERROR_ACCESS);
    bed.device(1).refuseOpen(EBUSY);
    EXPECT_EQ(uvc.open(0), nullptr);
    EXPECT_EQ(uvc.status(), UVC_ERROR_IO);
    EXPECT_THAT(bed.log().all(), IsEmpty());

    bed.device(1).refuseOpen(0);
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    uvc_close(camera);
}

TEST(LibuvcOnTheEmulatedBus, MayFindTheCameraInUse)
{
    Testbed bed(1);
    Libuvc uvc;
    bed.device(1).refuseClaim();
    EXPECT_EQ(uvc.open(0), nullptr);
    EXPECT_EQ(uvc.status(), UVC_ERROR_BUSY);
    bed.device(1).clearFaults();
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    uvc_close(camera);
}

TEST(LibuvcOnTheEmulatedBus, SeesStallsAndShortAnswers)
{
    Testbed bed(1);
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    std::uint16_t gamma = 0xaaaa;

    bed.device(1).stall(Control::Gamma, RequestCode::GetMin);
    EXPECT_EQ(uvc_get_gamma(camera, &gamma, UVC_GET_MIN), UVC_ERROR_PIPE);
    EXPECT_EQ(uvc_get_gamma(camera, &gamma, UVC_GET_MAX), UVC_SUCCESS);
    bed.device(1).stall(Control::Gamma);
    EXPECT_EQ(uvc_get_gamma(camera, &gamma, UVC_GET_MAX), UVC_ERROR_PIPE);
    EXPECT_EQ(brightness(camera), 128);
    bed.device(1).stallEverything();
    EXPECT_EQ(brightness(camera), UVC_ERROR_PIPE);
    bed.device(1).unstall();
    EXPECT_EQ(uvc_get_gamma(camera, &gamma, UVC_GET_MAX), UVC_SUCCESS);

    bed.log().clear();
    bed.device(1).answerShort(Control::Gamma, 1);
    EXPECT_EQ(uvc_get_gamma(camera, &gamma, UVC_GET_MAX), 1);
    bed.device(1).answerShort(Control::Gamma, 0);
    EXPECT_EQ(uvc_get_gamma(camera, &gamma, UVC_GET_MAX), 0);
    bed.device(1).answerFully();
    EXPECT_EQ(uvc_get_gamma(camera, &gamma, UVC_GET_MAX), UVC_SUCCESS);
    EXPECT_EQ(gamma, 500);
    EXPECT_THAT(bed.log().lines(),
        ElementsAre("cam1 GET_MAX gamma [f4] short", "cam1 GET_MAX gamma short",
            "cam1 GET_MAX gamma value=500 [f4 01] ok"));
    uvc_close(camera);
}

struct WireRow
{
    const char *name;
    Fault::Effect effect;
    std::size_t bytes;
    int status; // of reading brightness
    const char *line;
};

class FaultOnTheWire : public testing::TestWithParam<WireRow>
{ };

TEST_P(FaultOnTheWire, ReachesTheProgram)
{
    Testbed bed(1);
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    Fault fault;
    fault.effect = GetParam().effect;
    fault.bytes = GetParam().bytes;
    fault.schedule = { FaultSchedule::Kind::At, 2, 1 };
    bed.device(1).add(fault);
    EXPECT_EQ(brightness(camera), 128);
    EXPECT_EQ(brightness(camera), GetParam().status);
    EXPECT_EQ(brightness(camera), 128);
    EXPECT_EQ(bed.log().lines().at(1), GetParam().line);
    uvc_close(camera);
}

INSTANTIATE_TEST_SUITE_P(Of, FaultOnTheWire,
    testing::Values(WireRow{ "ProtocolError", Fault::Effect::ProtocolError, 0, UVC_ERROR_IO,
                        "cam1 GET_CUR brightness eproto" },
        WireRow{ "NoResponse", Fault::Effect::NoResponse, 0, UVC_ERROR_IO,
            "cam1 GET_CUR brightness etime" },
        WireRow{ "Overflow", Fault::Effect::Long, 3, UVC_ERROR_OVERFLOW,
            "cam1 GET_CUR brightness value=128 [80 00] overflow" },
        WireRow{
            "Stall", Fault::Effect::Stall, 0, UVC_ERROR_PIPE, "cam1 GET_CUR brightness stall" },
        WireRow{ "Wrong", Fault::Effect::Wrong, 0, ~128,
            "cam1 GET_CUR brightness value=-129 [7f ff] wrong" }),
    [](const auto &row) { return row.param.name; });

TEST(LibuvcOnTheEmulatedBus, CannotReadStringsThatFail)
{
    Testbed bed(1);
    const Libuvc uvc;
    Fault fault;
    fault.effect = Fault::Effect::ProtocolError;
    fault.target.kind = FaultTarget::Kind::Descriptors;
    bed.device(1).add(fault);
    EXPECT_EQ(uvc.product(0), "(none)");
    bed.device(1).clearFaults();
    EXPECT_EQ(uvc.product(0), "Virtual PTZ Camera");
}

TEST(LibuvcOnTheEmulatedBus, MayLoseAStop)
{
    Testbed bed(1);
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    Fault fault;
    fault.effect = Fault::Effect::LoseStop;
    fault.target.kind = FaultTarget::Kind::Stops;
    fault.schedule = { FaultSchedule::Kind::At, 1, 1 };
    bed.device(1).add(fault);
    EXPECT_EQ(uvc_set_pantilt_rel(camera, 1, 1, 0, 0), UVC_SUCCESS);
    EXPECT_EQ(uvc_set_pantilt_rel(camera, 0, 0, 0, 0), UVC_SUCCESS);
    EXPECT_TRUE(bed.device(1).state().moving());
    EXPECT_EQ(uvc_set_pantilt_rel(camera, 0, 0, 0, 0), UVC_SUCCESS);
    EXPECT_FALSE(bed.device(1).state().moving());
    EXPECT_EQ(bed.log().lines().at(1),
        "cam1 SET_CUR pantilt_relative pan=0 pan_speed=0 tilt=0 tilt_speed=0 [00 00 00 00] lost");
    uvc_close(camera);
}

TEST(LibuvcOnTheEmulatedBus, WaitsForASlowCamera)
{
    Testbed bed(1);
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    bed.device(1).delay(40ms);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(brightness(camera), 128);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 40ms);
    uvc_close(camera);
}

TEST(LibuvcOnTheEmulatedBus, LosesTheCameraThatIsUnplugged)
{
    Testbed bed(2);
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    bed.device(1).unplug();
    EXPECT_EQ(brightness(camera), UVC_ERROR_NO_DEVICE);
    EXPECT_EQ(brightness(camera), UVC_ERROR_NO_DEVICE);
    uvc.list();
    ASSERT_EQ(uvc.count(), 1);
    EXPECT_EQ(uvc.serial(0), "000002");
    uvc_close(camera);
}

TEST(LibuvcOnTheEmulatedBus, FindsTheCameraThatIsPluggedInAgain)
{
    Testbed bed(1);
    bed.device(1).unplug();
    Libuvc uvc;
    EXPECT_EQ(uvc.count(), 0);
    for (const int address : { 2, 17, 127 }) {
        bed.device(1).replug(address);
        Libuvc again;
        ASSERT_EQ(again.count(), 1) << "address " << address;
        EXPECT_EQ(uvc_get_device_address(again.device(0)), address);
        uvc_device_handle_t *camera = again.open(0);
        ASSERT_NE(camera, nullptr);
        EXPECT_EQ(brightness(camera), 128);
        uvc_close(camera);
        bed.device(1).unplug();
    }
}

TEST(LibuvcOnTheEmulatedBus, FailsTheRequestDuringWhichTheCameraIsUnplugged)
{
    Testbed bed(1);
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    bed.device(1).delay(1h);
    std::thread hand([&bed] {
        while (bed.device(1).requestsUnderWay() == 0)
            std::this_thread::yield();
        bed.device(1).unplug();
    });
    EXPECT_EQ(brightness(camera), UVC_ERROR_NO_DEVICE);
    hand.join();
    uvc_close(camera);
    EXPECT_THAT(bed.log().lines(), ElementsAre("cam1 GET_CUR brightness gone"));
}

DeviceDescription cameraOfRelease(std::uint16_t videoClass)
{
    CameraDescription description;
    description.videoClass = videoClass;
    description.hasExtensionUnit = true;
    return DeviceDescription::ptzCamera(description);
}

class OpenedByLibuvc : public testing::TestWithParam<std::uint16_t>
{ };

TEST_P(OpenedByLibuvc, NegotiatesAPictureFormat)
{
    Testbed bed({ cameraOfRelease(GetParam()) });
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    EXPECT_EQ(brightness(camera), 128);
    const uvc_extension_unit_t *const extension = uvc_get_extension_units(camera);
    ASSERT_NE(extension, nullptr);
    EXPECT_EQ(extension->bUnitID, extensionUnit);
    EXPECT_EQ(extension->bmControls, 1U);
    EXPECT_EQ(uvc_get_ctrl_len(camera, extensionUnit, 1), 2);
    uvc_stream_ctrl_t stream{};
    EXPECT_EQ(
        uvc_get_stream_ctrl_format_size(camera, &stream, UVC_FRAME_FORMAT_MJPEG, 1920, 1080, 30),
        UVC_SUCCESS);
    EXPECT_EQ(stream.dwMaxVideoFrameSize, 1920U * 1080 * 2);
    uvc_close(camera);
}

INSTANTIATE_TEST_SUITE_P(Release, OpenedByLibuvc, testing::Values(0x0100, 0x0110));

TEST(LibuvcOnTheEmulatedBus, RefusesACameraOfRelease15)
{
    Testbed bed({ cameraOfRelease(0x0150) });
    Libuvc uvc;
    EXPECT_EQ(uvc.open(0), nullptr);
}

TEST(Release15, CanBeUsedWithLibusbAlone)
{
    Testbed bed({ cameraOfRelease(0x0150) });
    libusb_context *context = nullptr;
    ASSERT_EQ(libusb_init(&context), 0);
    libusb_device_handle *camera = libusb_open_device_with_vid_pid(context, 0xf055, 0x8888);
    ASSERT_NE(camera, nullptr);
    libusb_config_descriptor *configuration = nullptr;
    ASSERT_EQ(libusb_get_active_config_descriptor(libusb_get_device(camera), &configuration), 0);
    for (int number = 0; number < configuration->bNumInterfaces; ++number)
        EXPECT_EQ(configuration->interface[number].altsetting[0].bInterfaceProtocol, 1) << number;
    libusb_free_config_descriptor(configuration);

    libusb_set_auto_detach_kernel_driver(camera, 1);
    ASSERT_EQ(libusb_claim_interface(camera, 0), 0);
    ASSERT_EQ(libusb_claim_interface(camera, 1), 0);
    std::array<unsigned char, 64> block{};
    const auto get = [&](int selector, int index) {
        return libusb_control_transfer(camera, 0xa1, 0x81,
            static_cast<std::uint16_t>(selector << 8), static_cast<std::uint16_t>(index),
            block.data(), static_cast<std::uint16_t>(block.size()), 1000);
    };
    EXPECT_EQ(get(0x02, 0x0200), 2) << "brightness";
    EXPECT_EQ(block[0], 128);
    EXPECT_EQ(get(0x01, 0x0400), 2) << "the extension unit's value";
    EXPECT_EQ(get(0x01, 0x0001), 48) << "the probe block";
    libusb_close(camera);
    libusb_exit(context);
}

TEST(LibuvcOnTheEmulatedBus, SeesACameraMovedByItsRemoteControl)
{
    ManualClock clock;
    Testbed bed({ DeviceDescription::ptzCamera() }, clock.clock());
    Libuvc uvc;
    uvc_device_handle_t *camera = uvc.open(0);
    ASSERT_NE(camera, nullptr);
    const auto panNow = [camera] {
        int pan = 0;
        int tilt = 0;
        EXPECT_EQ(uvc_get_pantilt_abs(camera, &pan, &tilt, UVC_GET_CUR), UVC_SUCCESS);
        return pan;
    };
    RemoteOrder right;
    right.moves[0] = Drive{ 1, 24 };
    bed.device(1).go(right);
    clock.advance(500ms);
    EXPECT_EQ(panNow(), 60 * 3600);
    std::uint8_t info = 0;
    EXPECT_EQ(uvc_get_ctrl(camera, cameraTerminal, 0x0d, &info, 1, UVC_GET_INFO), 1);
    EXPECT_EQ(info & 0x08, 0x08) << "autoupdate";
    bed.device(1).unplug();
    EXPECT_THROW(bed.device(1).go(right), std::invalid_argument);
    uvc_close(camera);
}

TEST(LibuvcOnTheEmulatedBus, FindsACameraSwitchedOnThatIsPluggedInAgain)
{
    Testbed bed(1);
    {
        Libuvc uvc;
        uvc_device_handle_t *camera = uvc.open(0);
        ASSERT_NE(camera, nullptr);
        EXPECT_EQ(uvc_set_brightness(camera, 10), UVC_SUCCESS);
        EXPECT_EQ(uvc_set_roll_abs(camera, 25), UVC_SUCCESS);
        EXPECT_EQ(uvc_set_roll_abs(camera, 5), UVC_SUCCESS);
        EXPECT_TRUE(bed.device(1).state().mute);
        uvc_close(camera);
    }
    bed.device(1).unplug();
    bed.device(1).replug();
    Libuvc again;
    uvc_device_handle_t *camera = again.open(0);
    ASSERT_NE(camera, nullptr);
    EXPECT_EQ(brightness(camera), 128);
    EXPECT_FALSE(bed.device(1).state().mute);
    EXPECT_EQ(bed.device(1).state().presets.count(5), 1U);
    uvc_close(camera);
}

} // namespace
