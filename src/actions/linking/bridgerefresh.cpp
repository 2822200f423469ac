// SPDX-License-Identifier: MIT
#include "bridgerefresh.h"

#include "mappingdocument.h"

using namespace Qt::StringLiterals;

namespace
{
QJsonObject refreshedBridge(const QJsonObject &bridge, const FunctionIndex &actions)
{
    const QString name = bridgeActionName(bridge);
    const QJsonObject action = actions.find(name);
    if (action.isEmpty())
        return bridge;
    const QJsonObject args = bridge["args"_L1].toObject();
    const QJsonArray tasks = buildTaskList(action, args);
    if (tasks.isEmpty())
        return bridge;

    QJsonObject refreshed = bridge;
    refreshed["dst"_L1] = tasks;
    refreshed["action"_L1] = name;
    if (args.isEmpty())
        refreshed.remove("args"_L1);
    return refreshed;
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
    bool differs = false;
    for (const QJsonValue &element : bridges) {
        if (!element.isObject()) {
            refreshed.append(element);
            continue;
        }
        const QJsonObject bridge = element.toObject();
        const QJsonObject now = refreshedBridge(bridge, actions);
        differs = differs || now != bridge;
        refreshed.append(now);
    }
    return differs ? std::optional(refreshed) : std::nullopt;
}
