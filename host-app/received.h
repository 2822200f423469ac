// SPDX-License-Identifier: MIT
#pragma once

#include "icominterface.h"

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>

#include <optional>

/// A selected device as this host holds it. The interface is the plugin's and can go at any time.
struct HeldDevice
{
    int number = 0; ///< of the interface object, counted by this host from 1
    QString usn;    ///< key of the device's row; empty when no row has this interface
    QString name;   ///< as the row shows it
    QPointer<IComInterface> interface;
};

/// One batch of values in the numeric form.
struct ValueBatch
{
    int device = 0;
    QString deviceType; ///< word of the device's type, as documents name it
    int deviceId = 0;
    int catId = 0;
    QStringList keys;
    QVariantList values; ///< parallel to `keys`
};

/// What an input key names.
struct InputKey
{
    bool isAxis = false;
    int index = 0;
};

/// "joy_3" is axis 3, "but_12" is button 12, case aside; anything else is none.
[[nodiscard]] std::optional<InputKey> parseInputKey(QStringView key);

/// The contract's word for a type or a status number, or the number itself where it has no word.
[[nodiscard]] QString deviceTypeWord(int type);
[[nodiscard]] QString statusWord(int status);

/// A value as people read it: axes with one decimal, buttons as words.
[[nodiscard]] QString valueText(const QVariant &value);
/// "joy_0 35.7  but_3 pressed".
[[nodiscard]] QString batchText(const QStringList &keys, const QVariantList &values);

Q_DECLARE_METATYPE(HeldDevice)
Q_DECLARE_METATYPE(ValueBatch)
