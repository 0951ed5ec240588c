// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Ordinary use that runs into the edges of libuvc: cameras that may not be opened, whose brightness
// cannot be read, that lack a unit. For those that are unplugged see unplug_test.cpp.

#include "device/uvc_edge.h"
#include "tests/device/camera_fixture.h"
#include "tests/device/operations.h"
#include "tests/support/uvc_call_recorder.h"

#include <cerrno>

namespace {

using testing::AnyOf;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using virtual_camera::Control;
using virtual_camera::DeviceDescription;

class Edge : public PluggedIn
{
protected:
    Edge() : PluggedIn(std::vector<DeviceDescription>(2)) { }
    void SetUp() override { uvc_call_recorder::clear(); }
    void TearDown() override
    {
        PluggedIn::TearDown();
        EXPECT_THAT(
            uvc_call_recorder::calls(), Each(Not(AnyOf(HasSubstr("(no_"), HasSubstr("(null")))))
            << "libuvc was entered with something that is not open";
    }
};

TEST_F(Edge, EveryControlMayBeUsedBeforeTheFirstOpenAndAfterTheClose)
{
    expectAllRefused(*device);
    device = makeDevice(); // one whose brightness was not asked for in vain
    ASSERT_TRUE(device->OpenDevice("0", 0));
    expectAllRefused(*device);
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(Edge, EveryControlMayBeUsedAfterBothOpensOfTheStartWereRefused)
{
    for (const int error : { EACCES, EBUSY }) {
        device = makeDevice();
        camera().refuseOpen(error);
        EXPECT_FALSE(device->OpenDevice("0", 0));
        device->CloseDevice();
        EXPECT_FALSE(device->OpenDevice("0", 0));
        expectAllRefused(*device);
        EXPECT_THAT(received(), IsEmpty());
    }
}

TEST_F(Edge, ACameraWhoseBrightnessCannotBeReadIsClosedByTheSecondOpen)
{
    camera().stall(Control::Brightness);
    ASSERT_TRUE(device->OpenDevice("0", 0));
    EXPECT_TRUE(device->GetPropertyValues());
    device->CloseDevice();
    EXPECT_FALSE(device->OpenDevice("0", 0));
    log().clear();
    expectAllRefused(*device);
    EXPECT_THAT(received(), IsEmpty());
    EXPECT_FALSE(device->OpenDevice("1", 1));
}

TEST_F(Edge, AListThatWasNeverTakenHasNoCamera)
{
    uvc_edge::Handle handle;
    EXPECT_EQ(uvc_edge::open(nullptr, 0, handle), UVC_ERROR_NO_DEVICE);
    EXPECT_EQ(uvc_edge::close(handle), UVC_ERROR_NO_DEVICE);
}

TEST_F(Edge, FailuresAreNotReportedInWords)
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    camera(1).stallEverything();
    camera(2).refuseOpen(EACCES);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(device->OpenDevice("1", 1));
    EXPECT_FALSE(device->OpenDevice("9", 9));
    for (const Operation &operation : onAnOpenCamera())
        call(*device, operation);
    EXPECT_FALSE(device->OpenDevice("0", 0));
    device->CloseDevice();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

// ---- cameras that lack a unit ----

class MissingUnit : public OpenCamera, public testing::WithParamInterface<const char *>
{
protected:
    MissingUnit() : OpenCamera({ DeviceDescription::ptzCamera(lacking(GetParam())) }) { }
    static virtual_camera::CameraDescription lacking(const char *unit)
    {
        auto description = tolerantCamera();
        EXPECT_EQ(applyOption(description, "without", unit), std::nullopt);
        return description;
    }
};

TEST_P(MissingUnit, RefusesItsOwnRequestsAlone)
{
    const unsigned missing = GetParam() == std::string("camera_terminal") ? 1 : 2;
    for (const Operation &operation : onAnOpenCamera()) {
        const bool toMissing =
            !operation.requests.empty() && operation.requests[0].index >> 8U == missing;
        device->SetFocusManual(); // an operation before may have made it automatic
        log().clear();
        const Outcome outcome = call(*device, operation);
        EXPECT_EQ(outcome.result, toMissing ? operation.refused : operation.accepted) << operation;
        EXPECT_EQ(outcome.out != untouched, operation.isGetter() && outcome.result) << operation;
        const wire::Requests expected = toMissing ? wire::Requests() : operation.requests;
        EXPECT_THAT(received(), testing::ElementsAreArray(expected)) << operation;
        device->props = {};
        device->SetWhiteBalanceAuto(0);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, MissingUnit, testing::Values("camera_terminal", "processing_unit"),
    [](const auto &row) { return row.param; });

TEST_F(Edge, AUnitThatTheCameraLacksIsNotSupported)
{
    const uvc_edge::Handle handle{ nullptr, { UVC_ERROR_NOT_SUPPORTED, UVC_SUCCESS } };
    uvc_error_t (*const call)(uvc_device_handle_t *) = [](auto *) { return UVC_ERROR_PIPE; };
    EXPECT_EQ(request(handle, uvc_edge::CameraTerminal, call), UVC_ERROR_NOT_SUPPORTED);
    EXPECT_EQ(request(handle, uvc_edge::ProcessingUnit, call), UVC_ERROR_PIPE);
    EXPECT_EQ(request({}, uvc_edge::ProcessingUnit, call), UVC_ERROR_NO_DEVICE);
}

} // namespace
