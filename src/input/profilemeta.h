// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/// What a profile's `meta.json` tells of the gamepad that it is for.
struct ProfileMeta
{
    QString luid;
    QString deviceName;
    uint vendorId = 0; ///< 0 where the document names none
    uint productId = 0;
    QString config; ///< plain file name of the no-code application in the profile's folder
    QString image;  ///< plain file name of the picture in the profile's folder

    /// Whether the profile is linked to a gamepad of this name, whatever the case.
    [[nodiscard]] bool isLinkedTo(const QString &name) const;
    /// Whether the profile's document is for this gamepad. A profile that carries a `luid` is for any.
    [[nodiscard]] bool serves(const QString &name, uint vendorId, uint productId) const;
};

/// The meta in `json`, or nothing where that is no JSON object of the type "GamepadDefinderMeta".
[[nodiscard]] std::optional<ProfileMeta> profileMetaFromJson(const QByteArray &json);
