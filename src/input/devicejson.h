// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantList>

/// What a gamepad tells the host of itself.
struct DeviceFacts
{
    int deviceId = -1;
    QString name;
    uint vendorId = 0;
    uint productId = 0;
    bool connected = false;
    QVariantList axes;    ///< 8 `double`
    QVariantList bias;    ///< 8 `double`
    QVariantList buttons; ///< 32 `bool`
};

/// The facts as one compact JSON object; the ids as "0x%1" in lower-case hexadecimal.
[[nodiscard]] QString deviceJsonText(const DeviceFacts &facts);
