// SPDX-License-Identifier: MIT
#pragma once

#include "controlmanette.h"

#include <QtCore/QDebug>

/// Every signal of a device as one line, in the order in which they come.
class DeviceLog : public QObject
{
    Q_OBJECT

public:
    explicit DeviceLog(const ControlManette &device);

    /// The lines since the last call.
    QStringList take() { return std::exchange(m_lines, {}); }

private:
    void note(const QString &line) { m_lines.append(line); }

    QStringList m_lines;
};
