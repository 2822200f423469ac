// SPDX-License-Identifier: MIT
#include "functionrefs.h"

#include <QtCore/QJsonObject>
#include <QtCore/QSet>

using namespace Qt::StringLiterals;

QJsonArray extractRefs(const QJsonDocument &document)
{
    if (document.isArray())
        return document.array();
    const QJsonObject root = document.object();
    for (const QJsonValue &list : {root["ref"_L1], root["refs"_L1], root["services"_L1]["ref"_L1]}) {
        if (list.isArray())
            return list.toArray();
    }
    return {};
}

QString refKey(const QJsonValue &entry)
{
    const QString name = entry.isObject() ? entry["name"_L1].toString() : entry.toString();
    return name.trimmed().toLower();
}

QJsonArray mergeRefs(const QJsonArray &host, const QJsonArray &system)
{
    QSet<QString> keys;
    for (const QJsonValue &entry : host) {
        const QString key = refKey(entry);
        if (!key.isEmpty())
            keys.insert(key);
    }
    QJsonArray merged = host;
    for (const QJsonValue &entry : system) {
        const QString key = refKey(entry);
        if (!key.isEmpty() && keys.contains(key))
            continue;
        merged.append(entry);
        if (!key.isEmpty())
            keys.insert(key);
    }
    return merged;
}
