// SPDX-License-Identifier: MIT
#include "profilemeta.h"

#include "plainfilename.h"

#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

namespace
{
/// 0 where the document names none.
uint id(const QJsonValue &value)
{
    return value.toString().toUInt(nullptr, 16);
}

QString fileName(const QJsonValue &value, const QString &fallback)
{
    const QString name = value.toString();
    return isPlainFileName(name) ? name : fallback;
}
} // namespace

std::optional<ProfileMeta> ProfileMeta::fromJson(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    if (object["type"_L1].toString() != "GamepadDefinderMeta"_L1)
        return std::nullopt;
    return ProfileMeta(object);
}

bool ProfileMeta::isLinkedTo(const QString &name) const
{
    const QString linked = m_object["deviceName"_L1].toString();
    return !linked.isEmpty() && linked.compare(name, Qt::CaseInsensitive) == 0;
}

bool ProfileMeta::serves(const QString &name, uint vendorId, uint productId) const
{
    if (!m_object["luid"_L1].toString().isEmpty() || isLinkedTo(name))
        return true;
    const auto isFor = [this](QLatin1StringView key, uint wanted) {
        return wanted != 0 && id(m_object[key]) == wanted;
    };
    return isFor("vendorId"_L1, vendorId) && isFor("productId"_L1, productId);
}

QString ProfileMeta::config() const
{
    return fileName(m_object["config"_L1], u"configActionGamepad.json"_s);
}

QString ProfileMeta::image() const
{
    return fileName(m_object["image"_L1], u"image.png"_s);
}
