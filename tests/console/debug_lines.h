// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QtGlobal>

/// Collects what is written to the debug stream while it lives; nothing reaches the terminal.
class DebugLines
{
public:
    DebugLines()
    {
        collected().clear();
        previous = qInstallMessageHandler(collect);
    }
    ~DebugLines() { qInstallMessageHandler(previous); }
    DebugLines(const DebugLines &) = delete;
    DebugLines &operator=(const DebugLines &) = delete;

    QStringList lines() const { return collected(); }

private:
    static QStringList &collected()
    {
        static QStringList lines;
        return lines;
    }
    static void collect(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
    {
        collected() += type == QtDebugMsg ? text : "not debug: " + text;
    }

    QtMessageHandler previous = nullptr;
};
