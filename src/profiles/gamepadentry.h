// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QUuid>

class QListWidgetItem;

/// A profile as the list holds it: one row of the list, one folder on disk.
struct GamepadEntry
{
    QUuid id;
    QString name;
    QString dirPath;
    QString imagePath;               ///< absolute; the file need not exist
    QString overlayPath;             ///< absolute
    QString deviceName;              ///< of the linked gamepad; empty: unlinked
    QListWidgetItem *item = nullptr; ///< the list's own
};
