// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

/// The one timer that `owner` has, or the one of that name.
inline QTimer &timerOf(const QObject &owner, const QString &name = {})
{
    return *owner.findChild<QTimer *>(name, Qt::FindDirectChildrenOnly);
}

/// Lets a running timer expire now, as the event loop would; a stopped one does nothing.
inline void expire(QTimer &timer)
{
    QTimerEvent expiry(timer.id());
    if (timer.isActive())
        QCoreApplication::sendEvent(&timer, &expiry);
}

/// Runs ticks of a started device, without waiting.
inline void tick(const QObject &device, int times = 1)
{
    for (int i = 0; i < times; ++i)
        expire(timerOf(device));
}
