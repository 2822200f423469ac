// SPDX-License-Identifier: MIT
#include "bridgerefresh.h"

#include "mappingdocument.h"

using namespace Qt::StringLiterals;

namespace
{
/// Nothing where there is no action to rebuild it from.
std::optional<QJsonObject> rebuiltBridge(const QJsonObject &bridge, const FunctionIndex &actions)
{
    const QString name = bridgeActionName(bridge);
    const QJsonObject action = actions.find(name);
    if (action.isEmpty())
        return std::nullopt;
    const QJsonObject args = bridge["args"_L1].toObject();
    const QJsonArray tasks = buildTaskList(action, args);
    if (tasks.isEmpty())
        return std::nullopt;

    QJsonObject rebuilt = bridge;
    rebuilt["dst"_L1] = tasks;
    rebuilt["action"_L1] = name;
    if (args.isEmpty())
        rebuilt.remove("args"_L1);
    return rebuilt;
}
} // namespace

QString bridgeActionName(const QJsonObject &bridge)
{
    const QString action = bridge["action"_L1].toString().trimmed();
    if (!action.isEmpty())
        return action;
    const QJsonArray tasks = bridge["dst"_L1].toArray();
    for (const QJsonValue &task : tasks) {
        for (const auto key : {"ref"_L1, "action"_L1}) {
            const QString name = task[key].toString().trimmed();
            if (!name.isEmpty())
                return name;
        }
    }
    return {};
}

std::optional<QJsonArray> refreshedBridges(const QJsonArray &bridges, const FunctionIndex &actions)
{
    QJsonArray refreshed;
    bool anyRebuilt = false;
    for (const QJsonValue &bridge : bridges) {
        const auto rebuilt = bridge.isObject() ? rebuiltBridge(bridge.toObject(), actions) : std::nullopt;
        anyRebuilt = anyRebuilt || rebuilt;
        refreshed.append(rebuilt ? QJsonValue(*rebuilt) : bridge);
    }
    return anyRebuilt ? std::optional(refreshed) : std::nullopt;
}
