// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Processor time of the frames of the virtual camera's picture, in parts of the time that a camera
// with 30 frames a second has for each: panning, and with every control off its default.

#include <QGuiApplication>
#include <QImage>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string_view>

#include "virtual_camera/viewer/frame.h"

namespace {

using namespace virtual_camera;

constexpr QSize size(1280, 720);

double processorMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

void measure(int frames, const std::function<View(int)> &view)
{
    constexpr double budget = 1000.0 / 30;
    const Room room;
    renderFrame(room, view(0), size); // fonts and caches
    for (int number = 1; number <= frames; ++number) {
        const double before = processorMilliseconds();
        const QImage frame = renderFrame(room, view(number), size);
        std::printf("%.4f\n", (processorMilliseconds() - before) / budget);
    }
}

View panning(int number)
{
    View view;
    view.focus = 1 / 3.0;
    view.pan = -60 + number % 120;
    return view;
}

View offDefaults(int number)
{
    View view = panning(number);
    view.focus = 0.6;
    view.brightness = view.contrast = view.saturation = view.sharpness = 0.5;
    view.gamma = view.gain = view.whiteBalance = view.backlight = 0.5;
    view.mains = 0;
    view.mirror = view.menu = true;
    return view;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const bool plain = argc > 1 && std::string_view(argv[1]) == "panning";
    measure(argc > 2 ? std::atoi(argv[2]) : 1, plain ? panning : offDefaults);
    return 0;
}
