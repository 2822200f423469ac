// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

// Entries of a catalogue, as a host or a user's file would have them.

inline QJsonObject param(const QString &name, const QString &type)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("preferredType"), type}};
}

inline QJsonObject param(const QString &name, const QString &type, const QJsonValue &byDefault)
{
    QJsonObject entry = param(name, type);
    entry.insert(QStringLiteral("default"), byDefault);
    return entry;
}

inline QJsonObject function(const QString &name, const QJsonArray &params = {})
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("params"), params}};
}

inline QJsonObject task(const QString &ref, const QJsonObject &args = {})
{
    return {{QStringLiteral("ref"), ref}, {QStringLiteral("args"), args}};
}
