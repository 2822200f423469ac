// SPDX-License-Identifier: MIT
#include "metadocument.h"

#include "plainfilename.h"

#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto metaType = "GamepadDefinderMeta"_L1;

QString fileName(const QJsonValue &value, const QString &fallback)
{
    const QString name = value.toString();
    return isPlainFileName(name) ? name : fallback;
}

QString fileNameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}
} // namespace

std::optional<MetaDocument> readMetaDocument(const QJsonObject &json)
{
    if (json["type"_L1].toString() != metaType)
        return std::nullopt;
    const QUuid id(json["id"_L1].toString());
    if (id.isNull())
        return std::nullopt;
    return MetaDocument{
        .id = id,
        .name = json["name"_L1].toString(u"Gamepad"_s),
        .image = fileName(json["image"_L1], u"image.png"_s),
        .overlayFile = fileName(json["overlayFile"_L1], u"overlay.json"_s),
        .deviceName = json["deviceName"_L1].toString(),
    };
}

QJsonObject metaDocumentJson(const GamepadEntry &entry, const QDateTime &now)
{
    return {
        {"type"_L1, metaType},
        {"version"_L1, 2},
        {"id"_L1, entry.id.toString(QUuid::WithoutBraces)},
        {"name"_L1, entry.name},
        {"image"_L1, fileNameOf(entry.imagePath)},
        {"overlayFile"_L1, fileNameOf(entry.overlayPath)},
        {"config"_L1, "configActionGamepad.json"_L1},
        {"deviceName"_L1, entry.deviceName},
        {"modifiedAt"_L1, now.toString(Qt::ISODate)},
    };
}

QJsonObject newMetaDocumentJson(const GamepadEntry &entry, const QDateTime &now)
{
    QJsonObject json = metaDocumentJson(entry, now);
    // A value of its own: the place that holds it moves when the new key comes in.
    const QJsonValue thisMoment = json["modifiedAt"_L1];
    json["createdAt"_L1] = thisMoment;
    return json;
}
