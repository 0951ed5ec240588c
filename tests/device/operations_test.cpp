// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Every operation on an open camera: what the camera receives, and what is answered when it takes
// the request and when it refuses.

#include "tests/device/camera_fixture.h"
#include "tests/device/operations.h"
#include "tests/support/uvc_call_recorder.h"

namespace {

using testing::ElementsAreArray;
using virtual_camera::DeviceDescription;

// One camera for all rows: what an operation leaves behind must not matter to the next.
class EveryOperation : public testing::TestWithParam<Operation>
{
protected:
    static void SetUpTestSuite()
    {
        testbed = new virtual_camera::Testbed({ DeviceDescription::ptzCamera(tolerantCamera()) });
        device = makeDevice();
        ASSERT_TRUE(device->OpenDevice("0", 0));
    }
    static void TearDownTestSuite()
    {
        device->CloseDevice();
        delete testbed;
    }
    void SetUp() override
    {
        testbed->device(1).clearFaults();
        device->props = {};
        long gamma = 0;
        device->GetGamma(&gamma); // no earlier read bars the next open
        // The camera takes no colour temperature and no focus while it sets those itself.
        device->SetWhiteBalanceAuto(0);
        device->SetFocusManual();
        testbed->log().clear();
    }
    void TearDown() override { uvc_call_recorder::failOnDemand(""); }

    static void expect(bool result)
    {
        const Operation &operation = GetParam();
        const Outcome outcome = call(*device, operation);
        EXPECT_THAT(wire::received(testbed->log()), ElementsAreArray(operation.requests));
        EXPECT_EQ(outcome.result, result);
        EXPECT_EQ(outcome.out != untouched, operation.isGetter() && result);
    }
    // Whether the next open is refused untried. The device can open again afterwards.
    static bool isBarred()
    {
        uvc_call_recorder::failOnDemand("uvc_open=-1");
        uvc_call_recorder::clear();
        EXPECT_FALSE(device->OpenDevice("0", 0));
        const bool barred = uvc_call_recorder::names().empty();
        uvc_call_recorder::failOnDemand("");
        long gamma = 0;
        EXPECT_TRUE(device->GetGamma(&gamma));
        return barred;
    }

    static virtual_camera::Testbed *testbed;
    static BaseDevice *device;
};
virtual_camera::Testbed *EveryOperation::testbed = nullptr;
BaseDevice *EveryOperation::device = nullptr;

std::string nameOf(const testing::TestParamInfo<Operation> &row) { return row.param.name; }

TEST_P(EveryOperation, ReachesTheCameraAsItsRequests) { expect(GetParam().accepted); }

TEST_P(EveryOperation, TakesAPositiveStatusForSuccess)
{
    uvc_call_recorder::failOnDemand("*=1");
    expect(GetParam().accepted);
}

TEST_P(EveryOperation, AnswersForARefusalAndIsNotTriedAgain)
{
    testbed->device(1).stallEverything();
    expect(GetParam().refused);
}

// Four reads decide whether the next open may be tried; all eight properties are read with them.
TEST_P(EveryOperation, BarsTheNextOpenOnlyByAReadThatDecides)
{
    const std::string name = GetParam().name;
    const bool decides = name == "GetBrightness" || name == "GetGamma" || name == "GetContrast"
        || name == "GetBLC" || name == "GetPropertyValues";
    uvc_call_recorder::failOnDemand("*=-4");
    call(*device, GetParam());
    EXPECT_EQ(isBarred(), decides);

    uvc_call_recorder::failOnDemand("uvc_get_gamma=-4");
    long gamma = 0;
    device->GetGamma(&gamma);
    uvc_call_recorder::failOnDemand("");
    call(*device, GetParam());
    EXPECT_EQ(isBarred(), !decides) << "after a failed read";
}

INSTANTIATE_TEST_SUITE_P(OnTheWire, EveryOperation, testing::ValuesIn(onAnOpenCamera()), nameOf);

} // namespace
