// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QTimer>
#include <QtCore/QTimerEvent>

/// Does to `timer`, which runs, what the event loop does when its time has come.
inline void expire(QTimer &timer)
{
    QTimerEvent event(timer.id());
    static_cast<QObject &>(timer).event(&event);
}
