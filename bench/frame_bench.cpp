// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Processor time of one frame of the virtual camera's picture, against the 33 ms that a camera with
// 30 frames a second has for it. Beside it, the same for copying such a frame, which tells how fast
// the machine is.

#include <QGuiApplication>
#include <QImage>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

#include "virtual_camera/viewer/frame.h"

namespace {

using namespace virtual_camera;

constexpr QSize size(1280, 720);
constexpr int frames = 90;

double processorMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

struct Spread
{
    double median;
    double worst;
};

Spread measure(const std::function<void(int)> &frame)
{
    frame(0); // fonts and caches
    std::vector<double> times;
    for (int number = 1; number <= frames; ++number) {
        const double before = processorMilliseconds();
        frame(number);
        times.push_back(processorMilliseconds() - before);
    }
    std::sort(times.begin(), times.end());
    return { times[times.size() / 2], times.back() };
}

void report(const char *name, const Spread &spread)
{
    constexpr double budget = 1000.0 / 30;
    std::printf("%-44s %6.1f ms %6.1f ms   %5.2f of a frame's time\n", name, spread.median,
        spread.worst, spread.median / budget);
}

View panning(int number)
{
    View view;
    view.focus = 1 / 3.0;
    view.pan = -60 + 120.0 * number / frames;
    return view;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const Room room;
    QImage kept;
    std::printf("%-44s %9s %9s\n", "1280 x 720, one core", "median", "worst");
    report("copying a frame", measure([&](int number) {
        kept = QImage(size, QImage::Format_RGB32);
        kept.fill(static_cast<uint>(number));
        kept = kept.copy();
    }));
    report("panning, in focus",
        measure([&](int number) { kept = renderFrame(room, panning(number), size); }));
    report("panning, out of focus", measure([&](int number) {
        View view = panning(number);
        view.focus = 1.2;
        kept = renderFrame(room, view, size);
    }));
    report("panning, every control off its default", measure([&](int number) {
        View view = panning(number);
        view.focus = 0.6;
        view.brightness = view.contrast = view.saturation = view.sharpness = 0.5;
        view.gamma = view.gain = view.whiteBalance = view.backlight = 0.5;
        view.mains = 0;
        view.mirror = view.menu = true;
        kept = renderFrame(room, view, size);
    }));
    return 0;
}
