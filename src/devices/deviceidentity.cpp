// SPDX-License-Identifier: MIT
#include "deviceidentity.h"

#include "controlmanette.h"
#include "sfmlslot.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

QString usnOfSlot(int slot)
{
    return u"gp:%1"_s.arg(slot);
}

QString hexText(uint id)
{
    return QString::number(id, 16);
}

QJsonObject identityOf(const ControlManette &device)
{
    return {
        {u"deviceId"_s, QString::number(device.deviceId())}, {u"vendorIdHex"_s, hexText(device.vendorId())},
        {u"productIdHex"_s, hexText(device.productId())},    {u"name"_s, device.name()},
        {u"imagePath"_s, device.imagePathForDevice()},
    };
}

int placeholderSlot(const QJsonObject &identity)
{
    const QString text = identity["deviceId"_L1].toString().trimmed();
    const QStringView digits = text.startsWith(u'+') ? QStringView(text).sliced(1) : QStringView(text);
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (digits.isEmpty() || !std::ranges::all_of(digits, isDigit))
        return -1;

    bool fits = false;
    const int slot = digits.toInt(&fits);
    if (!fits)
        return std::numeric_limits<int>::max();
    return slot > 0 ? slot : -1;
}

QStringList capabilitiesOf(const ControlManette &device)
{
    const SfmlSlot slot(device.deviceId());
    int axes = 0;
    for (int axis = 0; axis < SfmlSlot::axisCount; ++axis)
        axes += slot.hasAxis(axis) ? 1 : 0;
    const uint buttons = slot.reportedButtons();

    QStringList capabilities;
    if (axes > 0)
        capabilities << u"Axes|axis://%1"_s.arg(axes);
    if (buttons != 0)
        capabilities << u"Buttons|btn://%1"_s.arg(buttons);
    return capabilities;
}
