// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// How many connections a signal of the object has; the signal as SIGNAL() writes it.
inline int connectionsOf(const QObject *object, const char *signal)
{
    struct Access : QObject
    {
        using QObject::receivers; // protected
    };
    return (object->*&Access::receivers)(signal);
}
