// SPDX-License-Identifier: MIT
#include "knownnames.h"

#include "functionindex.h"

#include <QtCore/QSet>

using namespace Qt::StringLiterals;

QJsonObject withKnownNames(const QJsonObject &mapping, const QJsonArray &actions)
{
    QSet<QString> exact;
    for (const QJsonValue &action : actions)
        exact.insert(action["name"_L1].toString());
    const FunctionIndex index(actions);

    const QJsonArray bridges = mapping["bridges"_L1].toArray();
    QJsonArray spelledBridges;
    bool differs = false;
    for (const QJsonValue &element : bridges) {
        QJsonObject bridge = element.toObject();
        const QString name = bridge.value("action"_L1).toString().trimmed();
        const QString known = exact.contains(name) ? QString() : index.find(name).value("name"_L1).toString();
        if (!known.isEmpty()) {
            bridge["action"_L1] = known;
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
