// SPDX-License-Identifier: MIT
#include "mappingdocument.h"

#include "casekey.h"

#include <QtCore/QSet>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto placeholder = "param:"_L1;

QJsonValue argument(const QString &name, const QJsonObject &args)
{
    if (args.contains(name))
        return args[name];
    for (auto it = args.begin(); it != args.end(); ++it) {
        if (equalWithoutCase(it.key(), name))
            return it.value();
    }
    return QJsonValue::Undefined;
}

QJsonValue substitutedText(const QString &text, const QJsonObject &args)
{
    if (!text.trimmed().startsWith(placeholder, Qt::CaseInsensitive))
        return text;
    // Cut from the text as it stands: stored placeholders with leading blanks have always missed their name.
    const QJsonValue value = argument(text.sliced(placeholder.size()).trimmed(), args);
    return value.isUndefined() ? QJsonValue(text) : value;
}

QJsonObject substitutedObject(QJsonObject object, const QJsonObject &args)
{
    for (auto it = object.begin(); it != object.end(); ++it)
        it.value() = substituteParams(it.value(), args);
    return object;
}

QJsonArray substitutedArray(const QJsonArray &array, const QJsonObject &args)
{
    QJsonArray result;
    for (const QJsonValue &element : array)
        result.append(substituteParams(element, args));
    return result;
}
} // namespace

QJsonObject findFunction(const QJsonArray &catalogue, const QString &name)
{
    if (name.trimmed().isEmpty())
        return {};
    for (const QJsonValue &entry : catalogue) {
        if (entry.isObject() && equalWithoutCase(entry["name"_L1].toString().trimmed(), name))
            return entry.toObject();
    }
    return {};
}

QJsonArray buildTaskList(const QJsonObject &function, const QJsonObject &args)
{
    QJsonArray steps = function["tasks"_L1].toArray();
    if (steps.isEmpty())
        steps = function["items"_L1].toArray();
    QJsonArray tasks;
    for (const QJsonValue &step : std::as_const(steps)) {
        if (step.isObject())
            tasks.append(substituteParams(step, args));
    }
    return tasks;
}

QJsonValue substituteParams(const QJsonValue &value, const QJsonObject &args)
{
    switch (value.type()) {
    case QJsonValue::String:
        return substitutedText(value.toString(), args);
    case QJsonValue::Object:
        return substitutedObject(value.toObject(), args);
    case QJsonValue::Array:
        return substitutedArray(value.toArray(), args);
    case QJsonValue::Null:
    case QJsonValue::Bool:
    case QJsonValue::Double:
    case QJsonValue::Undefined:
        break;
    }
    return value;
}

QString functionKey(const QJsonValue &entry)
{
    const QString name = entry.isObject() ? entry["name"_L1].toString() : entry.toString();
    return name.trimmed().toLower();
}

QJsonArray refArrayOf(const QJsonDocument &document)
{
    if (document.isArray())
        return document.array();
    const QJsonValue ref = document["ref"_L1];
    return ref.isArray() ? ref.toArray() : document["services"_L1]["ref"_L1].toArray();
}

QJsonArray mergedCatalogue(const QJsonArray &catalogue, const QJsonArray &added)
{
    QSet<QString> seen;
    for (const QJsonValue &entry : catalogue)
        seen.insert(functionKey(entry));
    seen.remove(QString());

    QJsonArray merged = catalogue;
    for (const QJsonValue &entry : added) {
        const QString key = functionKey(entry);
        if (seen.contains(key))
            continue;
        merged.append(entry);
        if (!key.isEmpty())
            seen.insert(key);
    }
    return merged;
}

QJsonObject normalizedToolConfig(const QJsonObject &config)
{
    QJsonObject task;
    const QJsonValue action = config["action"_L1];
    QString ref = config["ref"_L1].toString();
    if (ref.isEmpty())
        ref = action.toString();
    if (!ref.isEmpty())
        task["ref"_L1] = ref;
    if (!action.isUndefined() && !action.isNull())
        task["action"_L1] = action;
    task["args"_L1] = config["args"_L1].toObject();
    return task;
}

QJsonObject mappingDocument(const QJsonArray &bridges)
{
    return {
        {u"signals"_s, QJsonArray()}, {u"onStartup"_s, QJsonArray()}, {u"onClose"_s, QJsonArray()},
        {u"timers"_s, QJsonArray()},  {u"bridges"_s, bridges},
    };
}
