// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Every operation on an open camera: what the camera receives, and what is answered when it takes
// the request and when it refuses.

#include "tests/device/camera_fixture.h"
#include "tests/device/operations.h"

#include <dlfcn.h>

namespace {

using testing::ElementsAreArray;

// One camera for all rows: what an operation leaves behind must not matter to the next.
class EveryOperation : public testing::TestWithParam<Operation>
{
protected:
    static void SetUpTestSuite()
    {
        testbed = new virtual_camera::Testbed(
            { virtual_camera::DeviceDescription::ptzCamera(tolerantCamera()) });
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
        // The camera takes no colour temperature while it sets that itself.
        device->SetWhiteBalanceAuto(0);
        testbed->log().clear();
    }
    static wire::Requests received() { return wire::received(testbed->log()); }

    static virtual_camera::Testbed *testbed;
    static BaseDevice *device;
};
virtual_camera::Testbed *EveryOperation::testbed = nullptr;
BaseDevice *EveryOperation::device = nullptr;

std::string nameOf(const testing::TestParamInfo<Operation> &row) { return row.param.name; }

bool isGetter(const Operation &operation)
{
    return std::holds_alternative<bool (BaseDevice::*)(long *)>(operation.member);
}

// Whether an out-value should have been written by a getter that succeeded.
bool writes(const Operation &operation) { return isGetter(operation) && operation.accepted; }

TEST_P(EveryOperation, ReachesTheCameraAsItsRequests)
{
    const Operation &operation = GetParam();
    const Outcome outcome = call(*device, operation.member, operation.argument);
    EXPECT_THAT(received(), ElementsAreArray(operation.requests));
    EXPECT_EQ(outcome.result, operation.accepted);
    EXPECT_EQ(outcome.out != untouched, writes(operation));
}

TEST_P(EveryOperation, AnswersForARefusalAndLeavesTheOutValue)
{
    const Operation &operation = GetParam();
    testbed->device(1).stallEverything();
    const Outcome outcome = call(*device, operation.member, operation.argument);
    EXPECT_THAT(received(), ElementsAreArray(operation.requests)) << "nothing is tried twice";
    EXPECT_EQ(outcome.result, operation.refused);
    EXPECT_EQ(outcome.out, untouched);
}

TEST_P(EveryOperation, IsReachedThroughItsSlot)
{
    const Operation &operation = GetParam();
    EXPECT_EQ(slotOf(operation.member), operation.slot) << "where a call by name goes";
    EXPECT_EQ(entry(*device, operation.slot), dlsym(nullptr, symbolOf(operation).c_str()))
        << "what stands in the slot is not USBDevice::" << operation.name;
    const Outcome outcome = callSlot(*device, operation.slot, operation.member, operation.argument);
    EXPECT_THAT(received(), ElementsAreArray(operation.requests));
    EXPECT_EQ(outcome.result, operation.accepted);
    EXPECT_EQ(outcome.out != untouched, writes(operation));
}

// Opening and closing have tests of their own; what they do cannot be told by requests.
std::vector<Operation> onAnOpenCamera() { return { operations().begin() + 2, operations().end() }; }
INSTANTIATE_TEST_SUITE_P(OnTheWire, EveryOperation, testing::ValuesIn(onAnOpenCamera()), nameOf);

using Slots = PluggedIn;

TEST_F(Slots, TheFirstTwoOpenAndClose)
{
    for (const Operation &operation : { operations()[0], operations()[1] }) {
        EXPECT_EQ(slotOf(operation.member), operation.slot);
        EXPECT_EQ(entry(*device, operation.slot), dlsym(nullptr, symbolOf(operation).c_str()));
    }
    log().clear();
    EXPECT_TRUE(callSlot(*device, 0, operations()[0].member, 0).result);
    EXPECT_TRUE(device->StopFocus());
    callSlot(*device, 1, operations()[1].member, 0);
    EXPECT_TRUE(wire::waitUntilClosed(log()));
    EXPECT_FALSE(device->StopFocus());
}

} // namespace
