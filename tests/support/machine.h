// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtTest/QTest>

/// Ends a test that the machine cannot run, saying that it lacks `what`, a string literal. The project's own
/// build environment has everything, so there a lack is a failure: a check that went missing in silence would
/// pass for one that holds.
#ifdef GAMEPAD_COMPLETE_ENVIRONMENT
#define GAMEPAD_NEED(condition, what)                                                                        \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            QFAIL("This machine lacks " what ".");                                                           \
    } while (false)
#else
#define GAMEPAD_NEED(condition, what)                                                                        \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            QSKIP("This machine lacks " what "."); /* a person's own system may do without it */             \
    } while (false)
#endif

/// The device that opens like a file and has no room for any byte.
inline QString fullDevice()
{
    return QStringLiteral("/dev/full");
}

#define GAMEPAD_NEED_FULL_DEVICE() GAMEPAD_NEED(QFile::exists(fullDevice()), "a device that is always full")
