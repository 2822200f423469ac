// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QString>

/// One remembered device. Both objects are kept as they were found, so that unknown keys survive.
struct StoredDevice
{
    QString usn;
    QJsonObject infoObject;
    QJsonObject kv;

    bool operator==(const StoredDevice &) const = default;
};

/// The list of devices that outlives a run.
struct GamepadsDocument
{
    QList<StoredDevice> devices;
    int lastCount = 0;     ///< rows when the document was written
    QJsonObject otherKeys; ///< of the root

    bool operator==(const GamepadsDocument &) const = default;
};

/// Reads what it can: text that is no JSON object gives an empty document, a value of the wrong type counts
/// as missing, a `lastCount` beyond `int` saturates. Devices come in the order of their keys.
[[nodiscard]] GamepadsDocument parseGamepads(const QByteArray &json);

/// Compact JSON. `lastCount` is written as the number of devices.
[[nodiscard]] QByteArray gamepadsJson(const GamepadsDocument &document);
