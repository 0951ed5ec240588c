// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The start whole: every call into libuvc, from the first context to the last property read.

#include <QTest>
#include <QTimer>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/console/uvc_calls.h"
#include "tests/support/uvc_call_recorder.h"

namespace {

using Calls = std::vector<std::string>;

/// What a window asks of libuvc while it is made: a device, and one that it throws away.
const Calls construction = {
    "uvc_init(context1) = 0",
    "uvc_get_device_list(context1, list1) = 0",
    "uvc_init(context2) = 0",
    "uvc_get_device_list(context2, list2) = 0",
};

/// Enumeration has a context of its own.
Calls enumeration(int cameras)
{
    Calls calls = { "uvc_init(context3) = 0", "uvc_get_device_list(context3, list3) = 0" };
    for (int camera = 0; camera < cameras; ++camera) {
        const std::string descriptor = "descriptor" + std::to_string(camera + 1);
        calls.push_back("uvc_get_device_descriptor(list3[" + std::to_string(camera) + "], "
            + descriptor + ") = 0");
        calls.push_back("uvc_free_device_descriptor(" + descriptor + ")");
    }
    calls.emplace_back("uvc_free_device_list(list3, 1)");
    calls.emplace_back("uvc_exit(context3)");
    return calls;
}

Calls reads(const std::string &handle)
{
    Calls calls;
    for (const char *property : { "backlight_compensation", "gamma", "contrast", "saturation",
             "brightness", "sharpness", "white_balance_temperature", "power_line_frequency" }) {
        for (const char *code : { "GET_CUR", "GET_MIN", "GET_MAX", "GET_DEF" })
            calls.push_back(std::string("uvc_get_") + property + "(" + handle + ", " + code + ")");
    }
    return calls;
}

/// A read answers how many bytes came, or 0 for success: which of them is libuvc's affair.
Calls withoutReadResults(Calls calls)
{
    for (std::string &call : calls) {
        const std::size_t end = call.find(") = ");
        if (call.find("GET_") != std::string::npos && end != std::string::npos)
            call.resize(end + 1);
    }
    return calls;
}

Calls joined(const std::vector<Calls> &parts)
{
    Calls all;
    for (const Calls &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

class WholeStart : public PanelTest, public testing::WithParamInterface<int>
{
protected:
    /// Everything until the poll is over, at its own time.
    Calls callsOfTheStart()
    {
        uvc_call_recorder::clear();
        plugIn(GetParam());
        constructWindow();
        window->show();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !Probe::timer(*window)->isActive(); }));
        return withoutReadResults(callsRenumbered());
    }
};

TEST_P(WholeStart, MakesTheseCallsInThisOrder)
{
    Calls expected = joined({ construction, enumeration(GetParam()) });
    Requests requests;
    if (GetParam() > 0) {
        expected = joined({ expected, { "uvc_open(list1[0], handle1) = 0" }, reads("handle1"),
            { "uvc_close(handle1)", "uvc_open(list1[0], handle2) = 0" }, reads("handle2") });
        requests = allReads() + allReads();
    }
    EXPECT_EQ(callsOfTheStart(), expected);
    EXPECT_EQ(sent(), requests) << "nothing else reaches any camera";
    EXPECT_EQ(usb_mode, GetParam() > 0 ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Cameras, WholeStart, testing::Values(0, 1, 3));

} // namespace
