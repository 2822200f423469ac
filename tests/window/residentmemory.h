// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QFile>

#include <unistd.h>

/// What this process holds in memory, in KiB; 0 where the system does not tell.
inline qint64 residentMemory()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    return statm.readAll().split(' ').value(1).toLongLong() * (sysconf(_SC_PAGESIZE) / 1024);
}
