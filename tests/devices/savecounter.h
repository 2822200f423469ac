// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Counts how often the file of remembered devices in `folder` is replaced. Linux only, since no portable
/// watch tells two quick replacements from one.
class SaveCounter
{
public:
    explicit SaveCounter(const QString &folder);
    ~SaveCounter();
    Q_DISABLE_COPY_MOVE(SaveCounter)

    /// Replacements since the last call.
    int take();

private:
    int m_queue;
};
