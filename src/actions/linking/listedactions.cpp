// SPDX-License-Identifier: MIT
#include "listedactions.h"

#include <QtCore/QJsonObject>
#include <QtCore/QSet>

using namespace Qt::StringLiterals;

QStringList listedActions(const QJsonArray &catalogue)
{
    QStringList names;
    QSet<QString> seen;
    for (const QJsonValue &entry : catalogue) {
        const QString name = entry.isObject() ? entry["name"_L1].toString().trimmed() : QString();
        const QString key = name.toLower();
        if (key.isEmpty() || seen.contains(key))
            continue;
        seen.insert(key);
        names.append(name);
    }
    return names;
}
