// SPDX-License-Identifier: MIT
#include "gamepadsdocument.h"

#include <QtCore/QJsonDocument>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto devicesKey = "devices"_L1;
constexpr auto lastCountKey = "lastCount"_L1;
constexpr auto kvKey = "kv"_L1;

int saturatedInt(double number)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp(number, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}
} // namespace

GamepadsDocument parseGamepads(const QByteArray &json)
{
    QJsonObject root = QJsonDocument::fromJson(json).object();
    GamepadsDocument document;
    document.lastCount = saturatedInt(root.take(lastCountKey).toDouble());

    const QJsonObject devices = root.take(devicesKey).toObject();
    for (auto it = devices.begin(); it != devices.end(); ++it) {
        if (it.key().isEmpty())
            continue;
        QJsonObject device = it.value().toObject();
        const QJsonObject kv = device.take(kvKey).toObject();
        document.devices.append({.usn = it.key(), .infoObject = device, .kv = kv});
    }
    document.otherKeys = root;
    return document;
}

QByteArray gamepadsJson(const GamepadsDocument &document)
{
    QJsonObject devices;
    for (const StoredDevice &device : document.devices) {
        QJsonObject entry = device.infoObject;
        entry[kvKey] = device.kv;
        devices[device.usn] = entry;
    }

    QJsonObject root = document.otherKeys;
    root[devicesKey] = devices;
    root[lastCountKey] = document.devices.size();
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}
