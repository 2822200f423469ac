// SPDX-License-Identifier: MIT
#pragma once

#include "controlmanette.h"

#include <QtCore/QJsonObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtGui/QIcon>

/// What the user set, by its name in `DeviceRecord::kv`.
namespace UserKey
{
inline constexpr QLatin1StringView selected("selected");
inline constexpr QLatin1StringView nameOverride("nameOverride");
inline constexpr QLatin1StringView product("product");
inline constexpr QLatin1StringView imagePath("imagePath");
} // namespace UserKey

/// The memory of one device row. It belongs to a joystick slot and outlives the device in it.
struct DeviceRecord
{
    enum LinkState { NoLink = 0, Starting = 1, Linked = 2 };

    QPointer<ControlManette> live; ///< owned by the manager
    QJsonObject infoObject;        ///< identity, and whatever else the file held
    QJsonObject kv;                ///< user settings; unknown keys are kept
    QStringList capabilities;
    QIcon deviceIcon; ///< for this run only
    QString productName;
    bool isConnected = false;
    LinkState linkState = NoLink;
    QPointer<IComInterface> iface; ///< what the host is given
    bool ifaceIsStub = false;      ///< `iface` is a placeholder of the model's
};

/// How a record reads on a card and to the host. A device that is there comes before what is remembered.
[[nodiscard]] bool selectedByUser(const DeviceRecord &record);
[[nodiscard]] QString nameText(const DeviceRecord &record);
/// "VID:%1 PID:%2", or "ID:%1" where the ids are not known.
[[nodiscard]] QString addressText(const DeviceRecord &record);
[[nodiscard]] QString productText(const DeviceRecord &record);
/// "%1-%2" with vendor and product id.
[[nodiscard]] QString modelText(const DeviceRecord &record);
/// Compact JSON. A live device has `deviceId` as a number and ids as "0x%1" under `vendorId` and
/// `productId`; an absent one has its identity as remembered. Both have `kv`.
[[nodiscard]] QByteArray jsonText(const DeviceRecord &record);
/// A `QIcon`, a path as `QString`, or nothing. A path in `kv` is the user's note and is not shown.
[[nodiscard]] QVariant image(const DeviceRecord &record);
/// `image` as an icon, null where its path leads nowhere; invalid without an image.
[[nodiscard]] QVariant decoration(const DeviceRecord &record);
