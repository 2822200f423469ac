// SPDX-License-Identifier: MIT
#include "devicelog.h"

using namespace Qt::StringLiterals;

namespace
{
QString number(double value)
{
    return QString::number(value, 'g', 17);
}

QString pairs(const QStringList &keys, const QVariantList &values)
{
    QStringList texts;
    for (qsizetype i = 0; i < qMax(keys.size(), values.size()); ++i) {
        const QVariant &value = values.value(i);
        const bool isDouble = value.metaType() == QMetaType::fromType<double>();
        texts.append(keys.value(i) + u'=' + QLatin1StringView(value.typeName()) + u':' +
                     (isDouble ? number(value.toDouble()) : value.toString()));
    }
    return texts.join(u',');
}
} // namespace

DeviceLog::DeviceLog(const ControlManette &device)
{
    using Device = ControlManette;
    connect(&device, &Device::axisChanged, this,
            [this](int axis, double value) { note(u"axisChanged %1 %2"_s.arg(axis).arg(number(value))); });
    connect(&device, &Device::buttonChanged, this, [this](int button, bool pressed) {
        note(u"buttonChanged %1 %2"_s.arg(button).arg(QVariant(pressed).toString()));
    });
    connect(&device, &Device::axesChanged, this, [this] { note(u"axesChanged"_s); });
    connect(&device, &Device::buttonsChanged, this, [this] { note(u"buttonsChanged"_s); });
    connect(&device, &Device::deviceIdChanged, this, [this] { note(u"deviceIdChanged"_s); });
    connect(&device, &Device::nameChanged, this, [this] { note(u"nameChanged"_s); });
    connect(&device, &Device::vendorIdChanged, this, [this] { note(u"vendorIdChanged"_s); });
    connect(&device, &Device::productIdChanged, this, [this] { note(u"productIdChanged"_s); });
    connect(&device, &Device::connectedChanged, this, [this] { note(u"connectedChanged"_s); });
    connect(&device, &Device::finished, this, [this] { note(u"finished"_s); });
    connect(&device, &Device::statusChanged, this,
            [this](IComInterface::ComStatus status) { note(u"statusChanged %1"_s.arg(status)); });
    connect(&device, &Device::noCodeAppChanged, this,
            [this](const QStringList &files) { note(u"noCodeAppChanged "_s + files.join(u',')); });
    connect(&device, &Device::fonctionsChanged, this, [this] { note(u"fonctionsChanged"_s); });
    connect(&device, qOverload<int, int, const QStringList &, const QVariantList &>(&Device::dataChanged),
            this, [this](int deviceId, int catId, const QStringList &keys, const QVariantList &values) {
                note(u"dataChanged %1 %2 %3"_s.arg(deviceId).arg(catId).arg(pairs(keys, values)));
            });
    connect(&device,
            qOverload<const QString &, const QString &, const QStringList &, const QVariantList &>(
                &Device::dataChanged),
            this,
            [this](const QString &deviceName, const QString &catName, const QStringList &keys,
                   const QVariantList &values) {
                note(u"dataChanged %1 %2 %3"_s.arg(deviceName, catName, pairs(keys, values)));
            });
}
