// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Ordinary use that runs into the edges of libuvc: cameras that may not be opened and that do not
// tell. For those that are pulled out see unplug_test.cpp.

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

    // Every operation but opening, as on a camera that answers nothing.
    void useEverything()
    {
        for (const Operation &operation : operations()) {
            if (operation.slot == 0)
                continue;
            const Outcome outcome = call(*device, operation.member, operation.argument);
            EXPECT_EQ(outcome.result, operation.refused) << operation;
            EXPECT_EQ(outcome.out, untouched) << operation;
        }
    }
};

TEST_F(Edge, EveryControlMayBeUsedAfterBothOpensOfTheStartWereRefused)
{
    for (const int error : { EACCES, EBUSY }) {
        device = makeDevice();
        camera().refuseOpen(error);
        EXPECT_FALSE(device->OpenDevice("0", 0));
        device->CloseDevice();
        EXPECT_FALSE(device->OpenDevice("0", 0));
        useEverything();
        useEverything();
        EXPECT_THAT(received(), IsEmpty());
    }
}

TEST_F(Edge, ACameraThatDoesNotTellItsBrightnessIsClosedByTheSecondOpen)
{
    camera().stall(Control::Brightness);
    ASSERT_TRUE(device->OpenDevice("0", 0));
    EXPECT_TRUE(device->GetPropertyValues());
    device->CloseDevice();
    EXPECT_FALSE(device->OpenDevice("0", 0));
    log().clear();
    useEverything();
    EXPECT_THAT(received(), IsEmpty());
    device->CloseDevice();
    EXPECT_FALSE(device->OpenDevice("1", 1));
}

TEST_F(Edge, AListThatWasNeverTakenHasNoCamera)
{
    uvc_edge::Handle handle;
    EXPECT_EQ(uvc_edge::open(nullptr, 0, handle), UVC_ERROR_NO_DEVICE);
    EXPECT_FALSE(handle.open);
}

TEST_F(Edge, FailuresAreNotToldInWords)
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    camera(1).stallEverything();
    camera(2).refuseOpen(EACCES);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(device->OpenDevice("1", 1));
    EXPECT_FALSE(device->OpenDevice("9", 9));
    for (const Operation &operation : operations()) {
        if (operation.slot > 1)
            call(*device, operation.member, operation.argument);
    }
    EXPECT_FALSE(device->OpenDevice("0", 0));
    device->CloseDevice();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
