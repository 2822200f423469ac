// SPDX-License-Identifier: MIT
#include "devicejson.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

using namespace Qt::StringLiterals;

namespace
{
QString hexadecimal(uint id)
{
    return u"0x%1"_s.arg(id, 0, 16);
}
} // namespace

QString deviceJsonText(const DeviceFacts &facts)
{
    const QJsonObject object{
        {u"deviceId"_s, facts.deviceId},
        {u"name"_s, facts.name},
        {u"vendorId"_s, hexadecimal(facts.vendorId)},
        {u"productId"_s, hexadecimal(facts.productId)},
        {u"connected"_s, facts.connected},
        {u"axes"_s, QJsonArray::fromVariantList(facts.axes)},
        {u"bias"_s, QJsonArray::fromVariantList(facts.bias)},
        {u"buttons"_s, QJsonArray::fromVariantList(facts.buttons)},
    };
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}
