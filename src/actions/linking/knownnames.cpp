// SPDX-License-Identifier: MIT
#include "knownnames.h"

#include "bridge.h"
#include "functionindex.h"

#include <QtCore/QSet>

using namespace Qt::StringLiterals;

namespace
{
QSet<QString> namesOf(const QJsonArray &actions)
{
    QSet<QString> names;
    for (const QJsonValue &action : actions)
        names.insert(action["name"_L1].toString());
    return names;
}

/// The action that a tool box would look for.
QString actionIn(const QJsonObject &config)
{
    const QString ref = config["ref"_L1].toString();
    return (ref.isEmpty() ? config["action"_L1].toString() : ref).trimmed();
}
} // namespace

QJsonArray withTrimmedNames(const QJsonArray &actions)
{
    const QSet<QString> exact = namesOf(actions);
    QJsonArray trimmed = actions;
    for (qsizetype i = 0; i < actions.size(); ++i) {
        const QString name = actions.at(i)["name"_L1].toString().trimmed();
        if (name.isEmpty() || exact.contains(name))
            continue;
        QJsonObject action = actions.at(i).toObject();
        action["name"_L1] = name;
        trimmed[i] = action;
    }
    return trimmed;
}

QJsonObject withKnownNames(const QJsonObject &mapping, const QJsonArray &actions)
{
    const QSet<QString> exact = namesOf(actions);
    const FunctionIndex index(actions);

    const QJsonArray bridges = mapping["bridges"_L1].toArray();
    QJsonArray spelledBridges;
    bool differs = false;
    for (const QJsonValue &element : bridges) {
        QJsonObject bridge = element.toObject();
        const QJsonObject config = readBridge(bridge).config.value_or(QJsonObject());
        const QString name = actionIn(config);
        const QString known = exact.contains(name) ? QString() : index.find(name).value("name"_L1).toString();
        if (!known.isEmpty()) {
            bridge["action"_L1] = known;
            // A task that names its action by `action` alone has brought its own.
            if (const QJsonValue args = config["args"_L1]; args.isObject())
                bridge["args"_L1] = args;
            differs = true;
        }
        spelledBridges.append(known.isEmpty() ? element : QJsonValue(bridge));
    }
    if (!differs)
        return mapping;
    QJsonObject spelled = mapping;
    spelled["bridges"_L1] = spelledBridges;
    return spelled;
}
