// SPDX-License-Identifier: MIT
#include "nocodedocument.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

namespace
{
QString compactText(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    const QByteArray wrapped = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(wrapped.sliced(1, wrapped.size() - 2));
}

QString taskText(const QJsonObject &task)
{
    QStringList arguments;
    const QJsonObject args = task["args"_L1].toObject();
    for (auto it = args.begin(); it != args.end(); ++it)
        arguments.append(u"%1=%2"_s.arg(it.key(), compactText(it.value())));
    const QString ref = task["ref"_L1].toString(task["action"_L1].toString());
    const QJsonValue when = task["when"_L1];
    if (ref.isEmpty() && when.isBool() && !when.toBool())
        return u"nothing (no tasks)"_s;
    const QString call = u"%1(%2)"_s.arg(ref, arguments.join(u", "_s));
    return when.isUndefined() ? call : u"%1 when %2"_s.arg(call, compactText(when));
}

int numberOf(const QJsonValue &value)
{
    return value.isString() ? value.toString().toInt(nullptr, 0) : value.toInt();
}
} // namespace

NoCodeDocument readNoCodeDocument(const QString &path)
{
    NoCodeDocument result{.path = path, .problem = {}, .bridges = {}};
    QFile file(path);
    if (!file.exists()) {
        result.problem = u"not written yet"_s;
        return result;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        result.problem = file.errorString();
        return result;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (!document.isObject()) {
        result.problem = error.error == QJsonParseError::NoError ? u"not an object"_s : error.errorString();
        return result;
    }
    const QJsonArray bridges = document.object().value("bridges"_L1).toArray();
    for (const QJsonValue &entry : bridges) {
        const QJsonObject src = entry["src"_L1].toObject();
        result.bridges.append({.deviceType = src["deviceType"_L1].toString(),
                               .deviceId = numberOf(src["deviceId"_L1]),
                               .packetId = numberOf(src["packetId"_L1]),
                               .key = src["stringKey"_L1].toString(),
                               .action = entry["action"_L1].toString(),
                               .tasks = entry["dst"_L1].toArray()});
    }
    return result;
}

bool firesOn(const Bridge &bridge, const ValueBatch &batch)
{
    if (!bridge.deviceType.isEmpty() && bridge.deviceType.compare(batch.deviceType, Qt::CaseInsensitive) != 0)
        return false;
    if (bridge.deviceId != batch.deviceId || bridge.packetId != batch.catId)
        return false;
    for (qsizetype i = 0; i < batch.keys.size(); ++i) {
        if (batch.keys.at(i).compare(bridge.key, Qt::CaseInsensitive) != 0)
            continue;
        const QVariant value = batch.values.value(i);
        if (value.typeId() != QMetaType::Bool || value.toBool())
            return true;
    }
    return false;
}

QString tasksText(const QJsonArray &tasks)
{
    if (tasks.isEmpty())
        return u"nothing"_s;
    QStringList texts;
    for (const QJsonValue &task : tasks)
        texts.append(taskText(task.toObject()));
    return texts.join(u"; "_s);
}
