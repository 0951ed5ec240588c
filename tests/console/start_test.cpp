// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The start whole: every call into libuvc, from the first context to the last property read.

#include <QTimer>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/support/uvc_call_recorder.h"

namespace {

using Calls = std::vector<std::string>;
using Start = PanelTest;

/// The calls that precede the first open: the window's device, one that it throws away, and the
/// enumeration with a context of its own.
Calls untilTheFirstOpen(int cameras)
{
    Calls calls = { "uvc_init(context1) = 0", "uvc_get_device_list(context1, list1) = 0",
        "uvc_init(context2) = 0", "uvc_get_device_list(context2, list2) = 0",
        "uvc_init(context3) = 0", "uvc_get_device_list(context3, list3) = 0" };
    for (int camera = 0; camera < cameras; ++camera) {
        const std::string descriptor = "descriptor" + std::to_string(camera + 1);
        calls.push_back("uvc_get_device_descriptor(list3[" + std::to_string(camera) + "], "
            + descriptor + ") = 0");
        calls.push_back("uvc_free_device_descriptor(" + descriptor + ")");
    }
    return calls + Calls{ "uvc_free_device_list(list3, 1)", "uvc_exit(context3)" };
}

/// Without results: which of them is success is libuvc's affair.
Calls reads(const std::string &handle)
{
    Calls calls;
    for (const std::string &read : allReads()) // "GET_CUR gamma"
        calls.push_back(
            "uvc_get_" + read.substr(8) + "(" + handle + ", " + read.substr(0, 7) + ")");
    return calls;
}

Calls callsWithoutReadResults()
{
    Calls calls = uvc_call_recorder::calls();
    for (std::string &call : calls) {
        if (call.find("GET_") != std::string::npos)
            call.resize(call.find(')') + 1);
    }
    return calls;
}

// The only test of its process: the recorder numbers what the process makes.
TEST_F(Start, MakesTheseCallsInThisOrderAndSendsTheReadsAlone)
{
    plugIn(3);
    constructWindow();
    EXPECT_EQ(sent(), Requests());
    window->show();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Probe::timer(*window)->isActive(); }));
    EXPECT_EQ(usb_mode, 1);
    EXPECT_EQ(sent(), allReads() + allReads());
    const Calls expected = untilTheFirstOpen(3) + Calls{ "uvc_open(list1[0], handle1) = 0" }
        + reads("handle1") + Calls{ "uvc_close(handle1)", "uvc_open(list1[0], handle2) = 0" }
        + reads("handle2");
    EXPECT_EQ(callsWithoutReadResults(), expected);
}

} // namespace
