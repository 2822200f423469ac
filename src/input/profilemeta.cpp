// SPDX-License-Identifier: MIT
#include "profilemeta.h"

#include "plainfilename.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

using namespace Qt::StringLiterals;

namespace
{
uint hexadecimal(const QString &text)
{
    return text.toUInt(nullptr, 16);
}

QString fileName(const QJsonValue &value, const QString &fallback)
{
    const QString name = value.toString();
    return isPlainFileName(name) ? name : fallback;
}
} // namespace

bool ProfileMeta::isLinkedTo(const QString &name) const
{
    return !deviceName.isEmpty() && deviceName.compare(name, Qt::CaseInsensitive) == 0;
}

bool ProfileMeta::serves(const QString &name, uint vendor, uint product) const
{
    return !luid.isEmpty() || isLinkedTo(name) ||
           (vendorId != 0 && productId != 0 && vendorId == vendor && productId == product);
}

std::optional<ProfileMeta> profileMetaFromJson(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    if (object["type"_L1].toString() != "GamepadDefinderMeta"_L1)
        return std::nullopt;
    return ProfileMeta{
        .luid = object["luid"_L1].toString(),
        .deviceName = object["deviceName"_L1].toString(),
        .vendorId = hexadecimal(object["vendorId"_L1].toString()),
        .productId = hexadecimal(object["productId"_L1].toString()),
        .config = fileName(object["config"_L1], u"configActionGamepad.json"_s),
        .image = fileName(object["image"_L1], u"image.png"_s),
    };
}
