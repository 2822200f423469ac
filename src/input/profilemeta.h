// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <optional>
#include <utility>

/// What a profile's `meta.json` tells of the gamepad that it is for. Each answer is read when it is asked
/// for: a lookup goes past most profiles after one or two.
class ProfileMeta
{
public:
    /// Nothing where `json` is no JSON object of the type "GamepadDefinderMeta".
    [[nodiscard]] static std::optional<ProfileMeta> fromJson(const QByteArray &json);

    /// Whether the profile is linked to a gamepad of this name, whatever the case.
    [[nodiscard]] bool isLinkedTo(const QString &name) const;
    /// Whether the profile's document is for this gamepad. A profile that carries a `luid` is for any.
    [[nodiscard]] bool serves(const QString &name, uint vendorId, uint productId) const;
    /// Plain file name of the no-code application in the profile's folder.
    [[nodiscard]] QString config() const;
    /// Plain file name of the picture in the profile's folder.
    [[nodiscard]] QString image() const;

private:
    explicit ProfileMeta(QJsonObject object)
        : m_object(std::move(object))
    {}

    QJsonObject m_object;
};
