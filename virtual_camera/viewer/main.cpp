// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include <algorithm>
#include <cstdio>

#include "virtual_camera/viewer/camera_link.h"
#include "virtual_camera/viewer/camera_picture.h"
#include "virtual_camera/viewer/view_window.h"

namespace {

using namespace virtual_camera;

constexpr int wrongUsage = 2;

int complain(const QString &problem, int code)
{
    std::fprintf(stderr, "virtual-camera-view: %s\n", qPrintable(problem));
    return code;
}

// What the camera sees once it has focused and framed.
int savePicture(const std::vector<SeenCamera> &cameras, const QString &file)
{
    const auto open = std::find_if(
        cameras.begin(), cameras.end(), [](const SeenCamera &camera) { return camera.open; });
    const SeenCamera &camera = open == cameras.end() ? cameras.front() : *open;
    CameraPicture picture(cameraName(camera), { 1280, 720 });
    picture.resize(1280, 720);
    picture.report(camera.view);
    picture.settle();
    return picture.grab().save(file) ? 0 : complain(file + " cannot be written", 1);
}

bool hasDisplay()
{
#ifdef Q_OS_LINUX
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    return (!platform.isEmpty() && platform != "xcb") || qEnvironmentVariableIsSet("DISPLAY")
        || (platform.isEmpty() && qEnvironmentVariableIsSet("WAYLAND_DISPLAY"));
#else
    return true;
#endif
}

} // namespace

int main(int argc, char *argv[])
{
    if (!hasDisplay()) // the toolkit would abort
        return complain("there is no display", 1);
    QApplication application(argc, argv);
    QApplication::setApplicationVersion(PTZ_VERSION);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Shows what the cameras of a running virtual-camera see, and lets them be unplugged\n"
        "and disturbed.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        "SOCKET", "what virtual-camera was given with --control", "SOCKET");
    const QCommandLineOption picture(
        "picture", "write what the open camera sees to FILE, 1280 x 720, and end", "FILE");
    parser.addOption(picture);
    if (!parser.parse(QApplication::arguments()))
        return complain(parser.errorText(), wrongUsage);
    if (parser.isSet("help"))
        parser.showHelp();
    if (parser.isSet("version"))
        parser.showVersion();
    if (parser.positionalArguments().size() != 1)
        return complain("expected one socket (see --help)", wrongUsage);

    CameraLink link;
    ViewWindow window(link);
    QObject::connect(&link, &CameraLink::ended, [&link](const QString &reason) {
        QCoreApplication::exit(link.cameras().empty() ? complain(reason, 1) : 0);
    });
    QObject::connect(&link, &CameraLink::described, [&] {
        if (parser.isSet(picture))
            QCoreApplication::exit(savePicture(link.cameras(), parser.value(picture)));
        else
            window.show();
    });
    // From within the event loop, which is what exit() leaves.
    QTimer::singleShot(
        0, &link, [&link, &parser] { link.follow(parser.positionalArguments().first()); });
    return QApplication::exec();
}
