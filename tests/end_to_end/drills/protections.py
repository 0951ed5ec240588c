# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What protects the panel, and what is broken in its place to see the drills fail.

Each variant is the program with one thing taken out: in a file, an old text gives way to a new
one, or several do. The drills of the named files are run against it."""

from collections import namedtuple

Variant = namedtuple("Variant", "name meaning file old new drills")

EDGE = "device/uvc_edge.h"
HOLDS = "desktop/hold_guard.cpp"
END = "desktop/termination.cpp"

PROTECTIONS = [
    Variant("open-handles", "requests go to cameras that are not open, too", EDGE,
            "return handle.open ?", "return handle.open || !handle.open ?",
            "refused unplug start answers second"),
    Variant("closed-once", "a closed camera is closed again", "device/uvc_edge.cpp",
            "    if (!handle.open)\n        return UVC_ERROR_NO_DEVICE;\n", "",
            "refused unplug start second"),
    Variant("list-end", "places after the end of the list are opened", "device/uvc_edge.cpp",
            "for (; *list && index > 0; ++list, --index) { }\n    return *list;",
            "return list[index];", "start"),
    Variant("unplug-guard", "libusb may abort when an unplugged camera is closed",
            "device/libusb_unplug_guard.cpp", "if (versionAborts() &&", "if (!versionAborts() &&",
            "unplug start"),
    Variant("product-guard", "a camera is expected to have a name", "device/usb_connection.cpp",
            'descriptor->product ? descriptor->product : ""', "descriptor->product",
            "bus refused start"),
    Variant("product-filter", "every camera is accepted", "device/usb_connection.cpp",
            "descriptor->idProduct == USBDevice::PRODUCT_ID_FILTER", "descriptor->idProduct != 0",
            "bus"),
    Variant("scratch", "the values that are read into do not begin at zero",
            "device/usb_image_properties.cpp",
            ("    std::uint16_t scratch = 0;", "    std::int16_t signedScratch = 0;",
             "    std::uint8_t byteScratch = 0;"),
            ("    std::uint16_t scratch = 2;", "    std::int16_t signedScratch = 2;",
             "    std::uint8_t byteScratch = 2;"), "answers"),
    Variant("empty-answers", "what an empty answer leaves is not zero",
            "device/usb_image_properties.cpp", "    Value value = 0;\n", "    Value value = 90;\n",
            "answers"),
    Variant("hold-guard", "nothing that is held is let go", "console/main.cpp",
            "    const desktop::HoldGuard guard(window);\n", "", "hands end delay"),
    # Either of the two is enough in most cases.
    Variant("lost-keyboard", "keys stay held when the keyboard is lost", HOLDS,
            ("        if (watched == &window)\n            releaseKeys();",
             "if (watched == window.windowHandle())"),
            ("        if (watched == nullptr)\n            releaseKeys();",
             "if (watched == nullptr)"), "hands second"),
    Variant("hidden", "nothing is let go when the window leaves the screen", HOLDS,
            ("        if (watched == &window)\n            releaseAll();",
             "!window.windowHandle()->isExposed()"),
            ("        if (watched == nullptr)\n            releaseAll();", "watched == nullptr"),
            "hands"),
    Variant("held-on", "nothing is let go when the keyboard or the screen is lost", HOLDS,
            ("        if (watched == &window)\n            releaseKeys();",
             "if (watched == window.windowHandle())",
             "        if (watched == &window)\n            releaseAll();",
             "!window.windowHandle()->isExposed()"),
            ("        if (watched == nullptr)\n            releaseKeys();",
             "if (watched == nullptr)",
             "        if (watched == nullptr)\n            releaseAll();", "watched == nullptr"),
            "hands"),
    Variant("lets-go", "keys are not let go whatever happens", HOLDS,
            "    QCoreApplication::sendEvent(&window, &release);\n", "", "hands"),
    Variant("other-desktop", "nothing is let go when another desktop is shown", HOLDS,
            "!window.windowHandle()->isExposed()", "watched == nullptr", "hands"),
    Variant("other-camera", "nothing is let go when a camera is chosen", HOLDS,
            "connect(button, &QPushButton::released, this, [this] { releaseAll(); });",
            "connect(button, &QPushButton::released, this, [] { });", "hands"),
    Variant("at-quit", "nothing is let go when the panel is closed", HOLDS,
            "        [this] { releaseAll(); });\n    window.setFocus();",
            "        [] { });\n    window.setFocus();", "end"),
    Variant("at-exit", "nothing is let go when the X server goes", HOLDS,
            "    if (activeGuard)\n        activeGuard->releaseAll();", "", "end"),
    Variant("late-repeats", "repeats of a key act however late they come", HOLDS,
            "if (isOverdue(*static_cast<QKeyEvent *>(event)))", "if (false)", "delay hands"),
    Variant("signals", "signals end the panel at once", HOLDS,
            "    onSignal(this, [this] { releaseAll(); });\n", "", "end delay"),
    Variant("deaf-signals", "signals are not heard", END,
            "        action.sa_handler = writeSignal;", "        action.sa_handler = SIG_IGN;",
            "end desktop"),
    Variant("grace", "a camera that never answers keeps the panel alive", END,
            "        alarm(graceSeconds);\n    graceBegun", "        graceBegun", "end"),
    Variant("short-grace", "a slow camera has three seconds to be stopped", END,
            "graceSeconds = 10", "graceSeconds = 3", "delay"),
    Variant("streams", "closed standard streams stay closed", "console/main.cpp",
            "    desktop::fillStandardStreams();\n", "", "end"),
    Variant("pipe", "an output that nobody reads is deadly", END,
            "    std::signal(SIGPIPE, SIG_IGN);\n", "", "end"),
    Variant("quit-on-close", "the last notice ends the program", "widgets/notice_window.cpp",
            "setAttribute(Qt::WA_QuitOnClose, false)", "setAttribute(Qt::WA_QuitOnClose, true)",
            "hands"),
]

DEFECTS = [
    Variant("fatal-failures", "a request that fails ends the program", EDGE,
            "    return handle.open ? call(handle.devh, arguments...) : UVC_ERROR_NO_DEVICE;",
            "    const int status = handle.open ? call(handle.devh, arguments...) : -4;\n"
            "    return status < 0 ? (__builtin_trap(), status) : status;",
            "unplug start refused answers second end"),
    Variant("deaf-keys", "releases of keys are not heard", "console/pan_tilt.cpp",
            "    if (usb_mode != 0)\n        releaseKey(event->key());\n", "",
            "refused answers delay second end hands desktop ranges unplug"),
    Variant("stuck-joystick", "the joystick does not tell that it is let go",
            "widgets/rocker_handle.cpp", "emit keyNumchanged(4);", "",
            "refused answers delay second end hands unplug desktop"),
    Variant("stuck-lens", "the lens sliders do not tell that they are let go",
            "console/lens_sliders.cpp",
            "    (form->*lens.slider)->setValue(SLIDER_CENTRE);\n    if (usb_mode == 1)\n"
            "        (device->*lens.stop)();\n", "    (void)lens;\n",
            "answers delay end hands refused unplug"),
    Variant("impatient", "a request that takes longer than 40 ms ends the program", EDGE,
            ("#include <type_traits>",
             "    return handle.open ? call(handle.devh, arguments...) : UVC_ERROR_NO_DEVICE;"),
            ("#include <chrono>\n#include <type_traits>",
             "    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(40);\n"
             "    const int status = handle.open ? call(handle.devh, arguments...) : -4;\n"
             "    if (std::chrono::steady_clock::now() > end)\n        __builtin_trap();\n"
             "    return status;"), "delay"),
    Variant("unclosable", "being closed does not end the program", "console/main.cpp",
            "    window.show();", "    QApplication::setQuitOnLastWindowClosed(false);\n"
            "    window.show();", "end"),
    Variant("close-button", "the button that closes the panel does not", "console/function_buttons.cpp",
            "    QCoreApplication::exit(0);", "", "end desktop"),
    Variant("quit-button", "the button of the notice that quits the panel does not",
            "widgets/no_device.cpp", "QCoreApplication::exit(0);", "", "bus"),
    Variant("dies-at-exit", "the end that the toolkit makes of it goes wrong", HOLDS,
            "    if (activeGuard)\n        activeGuard->releaseAll();",
            "    std::abort();", "end"),
    Variant("fatal-output", "an output that cannot be written ends the program",
            "device/usb_connection.cpp",
            '    std::cout << "one: init success" << std::endl;',
            '    std::cout << "one: init success" << std::endl;\n'
            "    if (!std::cout)\n        std::abort();", "end"),
    Variant("plain-names", "a camera's name has at most 32 letters, digits and blanks",
            "device/usb_connection.cpp", "        list.push_back(camera);",
            "        if (camera.name.size() > 32)\n            std::abort();\n"
            "        for (const char letter : camera.name)\n"
            "            if (!std::isalnum(letter) && letter != ' ')\n                std::abort();\n"
            "        list.push_back(camera);", "bus"),
    Variant("five-at-most", "more than five cameras end the program", "device/usb_connection.cpp",
            "        list.push_back(camera);",
            "        list.push_back(camera);\n        if (list.size() > 5)\n            std::abort();",
            "bus"),
    Variant("silent-buttons", "the function buttons send nothing", "console/function_buttons.cpp",
            "    if (usb_mode == 1)\n        (device->*command)();", "    (void)command;", "desktop"),
    Variant("ranges-ignored", "the settings' sliders keep the range that they had",
            "console/image_settings.cpp",
            "        slider->setMinimum(row.min);\n        slider->setMaximum(row.max);\n", "",
            "ranges"),
    Variant("unclamped-current", "a slider that is grabbed sends what the camera told",
            "console/image_settings.cpp",
            "    row.cur = slider->value();\n    slider->setValue(row.cur);\n", "", "ranges"),
    Variant("unsigned-brightness", "brightness is read without its sign",
            "device/usb_image_properties.cpp", "record.cur = current;",
            "record.cur = current < 0 ? current + 65536 : current;", "ranges"),
    Variant("unclamped-defaults", "the default button sends the sliders' values",
            "console/image_settings.cpp", "    device->SetGamma(default_gamma);",
            "    device->SetGamma(form->slider_gamma->value());", "ranges answers"),
    Variant("fresh-scratch", "a range that is not told is zero", "device/usb_image_properties.cpp",
            "    uvc_edge::request(getter, devh, &scratch, code);\n",
            "    scratch = 0;\n    uvc_edge::request(getter, devh, &scratch, code);\n", "answers"),
    Variant("next-camera", "each button opens the camera after its own",
            "console/camera_selection.cpp", "        Setting_Press(number - 1);",
            "        Setting_Press(number);", "bus unplug refused second memory"),
    Variant("first-camera", "the first button opens the second camera",
            "console/camera_selection.cpp", "    Setting_Press(0);\n    showCameraButtons(1);",
            "    Setting_Press(1);\n    showCameraButtons(1);", "bus refused answers second"),
    Variant("no-notice", "the notice of no camera does not come up", "console/camera_selection.cpp",
            "    noDeviceDialog->setModal(false);\n    noDeviceDialog->show();",
            "    noDeviceDialog->setModal(false);", "bus start end hands"),
    Variant("no-way-back", "the tray does not bring the panel back", "console/lifecycle.cpp",
            "        showNormal();", "        ;", "hands desktop"),
    Variant("cameras-kept-open", "cameras are never closed", "device/uvc_edge.cpp",
            "    uvc_close(handle.devh);\n", "", "memory refused unplug"),
    Variant("frames-kept", "each failure keeps 64 KiB", EDGE,
            "    return handle.open ? call(handle.devh, arguments...) : UVC_ERROR_NO_DEVICE;",
            "    const int status = handle.open ? call(handle.devh, arguments...) : -4;\n"
            "    if (status < 0)\n        for (volatile char *kept = new char[65536], *end = kept +"
            " 65536; kept != end; ++kept)\n            *kept = 1;\n    return status;",
            "memory"),
    Variant("opens-kept", "each camera that cannot be opened keeps 64 KiB", "device/uvc_edge.cpp",
            "    if (status >= 0)\n        handle = { opened, true };\n",
            "    if (status >= 0)\n        handle = { opened, true };\n    else\n"
            "        for (volatile char *kept = new char[65536], *end = kept + 65536; kept != end;"
            " ++kept)\n            *kept = 1;\n", "memory"),
]

COMMON = {"deaf-keys", "next-camera", "first-camera"}
"""With these the camera that a row drives at its end is not driven, whatever the row is about."""
