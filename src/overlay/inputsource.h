// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <optional>

/// The input of a node: what its pastille stands for, as it is written to both documents.
struct NodeInput
{
    bool isJoy = true; ///< an axis, or a button
    QString deviceType = QStringLiteral("gamepade");
    int deviceId = 0;
    int packetId = 1;
    QString stringKey; ///< the input key; empty only where a document that is read tells none

    bool operator==(const NodeInput &) const = default;
};

/// The `src` object of a document, with what it leaves open.
struct InputSource
{
    QString deviceType; ///< empty: not told
    std::optional<int> deviceId;
    std::optional<int> packetId;
    QString stringKey; ///< empty: not told
    std::optional<bool> isJoy;

    bool operator==(const InputSource &) const = default;
};

/// Both ids may be numbers or texts; they saturate. What has the wrong type is not told.
[[nodiscard]] InputSource readInputSource(const QJsonObject &src);

/// `deviceType`, `deviceId`, `packetId` and `stringKey`.
[[nodiscard]] QJsonObject inputSourceJson(const NodeInput &input);

/// Gives `input` the device that `src` tells, and leaves what it does not tell.
void takeDevice(NodeInput &input, const InputSource &src);

/// Whether a key stands for an axis: by the key where it is one, else by what `src` tells, else by its
/// prefix.
[[nodiscard]] bool standsForAxis(const InputSource &src);
