// SPDX-License-Identifier: MIT
#include "devicerecord.h"

#include "deviceidentity.h"
#include "iconvalue.h"

#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

namespace
{
struct HexIds
{
    QString vendor;
    QString product;
};

HexIds hexIds(const DeviceRecord &record)
{
    if (record.live)
        return {.vendor = hexText(record.live->vendorId()), .product = hexText(record.live->productId())};
    return {
        .vendor = record.infoObject["vendorIdHex"_L1].toString(),
        .product = record.infoObject["productIdHex"_L1].toString(),
    };
}

QString ownName(const DeviceRecord &record)
{
    return record.live ? record.live->name() : record.infoObject["name"_L1].toString();
}

QJsonObject description(const DeviceRecord &record)
{
    if (!record.live)
        return record.infoObject;
    return {
        {u"deviceId"_s, record.live->deviceId()},
        {u"name"_s, record.live->name()},
        {u"vendorId"_s, QString("0x"_L1 + hexText(record.live->vendorId()))},
        {u"productId"_s, QString("0x"_L1 + hexText(record.live->productId()))},
        {u"connected"_s, record.live->isConnected()},
    };
}
} // namespace

bool selectedByUser(const DeviceRecord &record)
{
    return record.kv[UserKey::selected].toBool();
}

QString nameText(const DeviceRecord &record)
{
    const QString chosen = record.kv[UserKey::nameOverride].toString();
    return chosen.isEmpty() ? ownName(record) : chosen;
}

QString addressText(const DeviceRecord &record)
{
    const HexIds ids = hexIds(record);
    if (ids.vendor.isEmpty() || ids.product.isEmpty())
        return u"ID:%1"_s.arg(record.infoObject["deviceId"_L1].toString());
    return u"VID:%1 PID:%2"_s.arg(ids.vendor, ids.product);
}

QString productText(const DeviceRecord &record)
{
    if (!record.productName.isEmpty())
        return record.productName;
    const QString chosen = record.kv[UserKey::product].toString();
    return chosen.isEmpty() ? ownName(record) : chosen;
}

QString modelText(const DeviceRecord &record)
{
    const HexIds ids = hexIds(record);
    return u"%1-%2"_s.arg(ids.vendor, ids.product);
}

QByteArray jsonText(const DeviceRecord &record)
{
    QJsonObject object = description(record);
    object["kv"_L1] = record.kv;
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QVariant image(const DeviceRecord &record)
{
    if (!record.deviceIcon.isNull())
        return record.deviceIcon;
    QString path = record.live ? record.live->imagePathForDevice() : QString();
    if (path.isEmpty())
        path = record.infoObject["imagePath"_L1].toString();
    return path.isEmpty() ? QVariant() : QVariant(path);
}

QVariant decoration(const DeviceRecord &record)
{
    const QVariant found = image(record);
    if (const auto icon = iconOf(found))
        return *icon;
    if (found.typeId() != QMetaType::QString)
        return {};
    return iconAt(found.toString());
}
