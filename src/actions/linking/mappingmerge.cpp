// SPDX-License-Identifier: MIT
#include "mappingmerge.h"

#include "casekey.h"

using namespace Qt::StringLiterals;

namespace
{
QString sourceText(const QJsonValue &bridge, QLatin1StringView key)
{
    return bridge["src"_L1][key].toString().trimmed();
}

/// The tasks of the old bridge that stands for the same input.
QJsonArray oldTasks(const QJsonArray &bridges, const QJsonObject &bridge)
{
    const QString key = sourceText(bridge, "stringKey"_L1);
    if (key.isEmpty())
        return {};
    const QString type = sourceText(bridge, "deviceType"_L1);
    for (const QJsonValue &old : bridges) {
        if (!equalWithoutCase(sourceText(old, "stringKey"_L1), key))
            continue;
        const QString oldType = sourceText(old, "deviceType"_L1);
        if (type.isEmpty() || oldType.isEmpty() || equalWithoutCase(oldType, type))
            return old["dst"_L1].toArray();
    }
    return {};
}

QJsonObject withOldTail(const QJsonObject &bridge, const QJsonArray &oldBridges)
{
    if (!bridge["action"_L1].toString().trimmed().isEmpty())
        return bridge;
    const QJsonArray old = oldTasks(oldBridges, bridge);
    if (old.size() < 2)
        return bridge;
    QJsonArray tasks = bridge["dst"_L1].toArray();
    for (qsizetype i = 1; i < old.size(); ++i)
        tasks.append(old.at(i));
    QJsonObject merged = bridge;
    merged["dst"_L1] = tasks;
    return merged;
}
} // namespace

QJsonObject mergedMapping(const QJsonObject &document, const QJsonArray &bridges)
{
    const QJsonArray oldBridges = document["bridges"_L1].toArray();
    QJsonArray newBridges;
    for (const QJsonValue &bridge : bridges)
        newBridges.append(bridge.isObject() ? withOldTail(bridge.toObject(), oldBridges) : bridge);

    QJsonObject merged = document;
    for (const auto part : {"signals"_L1, "onStartup"_L1, "onClose"_L1, "timers"_L1}) {
        if (!merged.contains(part))
            merged.insert(part, QJsonArray());
    }
    merged["bridges"_L1] = newBridges;
    return merged;
}
