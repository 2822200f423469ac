// SPDX-License-Identifier: MIT
#include "inputsource.h"

#include "inputkey.h"
#include "jsonnumbers.h"

using namespace Qt::StringLiterals;

InputSource readInputSource(const QJsonObject &src)
{
    const QJsonValue isJoy = src["isJoy"_L1];
    return {
        .deviceType = src["deviceType"_L1].toString(),
        .deviceId = wholeNumberOrText(src["deviceId"_L1]),
        .packetId = wholeNumberOrText(src["packetId"_L1]),
        .stringKey = src["stringKey"_L1].toString(),
        .isJoy = isJoy.isBool() ? std::optional(isJoy.toBool()) : std::nullopt,
    };
}

QJsonObject inputSourceJson(const NodeInput &input)
{
    return {
        {u"deviceType"_s, input.deviceType},
        {u"deviceId"_s, input.deviceId},
        {u"packetId"_s, input.packetId},
        {u"stringKey"_s, input.stringKey},
    };
}

void takeDevice(NodeInput &input, const InputSource &src)
{
    if (!src.deviceType.isEmpty())
        input.deviceType = src.deviceType;
    input.deviceId = src.deviceId.value_or(input.deviceId);
    input.packetId = src.packetId.value_or(input.packetId);
}

bool standsForAxis(const InputSource &src)
{
    bool isJoy = true;
    int index = -1;
    if (parseInputKey(src.stringKey, &isJoy, &index))
        return isJoy;
    return src.isJoy.value_or(isJoy);
}
