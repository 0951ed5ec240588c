// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/pictures.h"

#include <QDir>
#include <QFile>
#include <cstdio>

// draw_pictures DIRECTORY: writes every picture of the user interface into the directory.
int main(int argc, char **argv)
{
    if (argc != 2 || argv[1][0] == '-') {
        std::fprintf(stderr, "usage: draw_pictures DIRECTORY\n");
        return 2;
    }
    const QDir directory(QFile::decodeName(argv[1]));
    for (const art::Picture &picture : art::drawPictures()) {
        QFile file(directory.filePath(picture.name));
        if (!file.open(QIODevice::WriteOnly) || file.write(picture.bytes) != picture.bytes.size()) {
            std::fprintf(stderr, "draw_pictures: %s: %s\n", qPrintable(file.fileName()),
                qPrintable(file.errorString()));
            return 1;
        }
    }
    return 0;
}
