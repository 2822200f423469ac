// SPDX-License-Identifier: MIT
#include "actionsdocument.h"

#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

QJsonArray actionsOf(const QJsonDocument &document)
{
    if (document.isArray())
        return document.array();
    const QJsonObject object = document.object();
    const QJsonValue list = object.value("ref"_L1);
    return (list.isArray() ? list : object.value("refs"_L1)).toArray();
}

std::optional<QJsonArray> readActions(const QByteArray &json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return {};
    return actionsOf(document);
}

QByteArray actionsJson(const QJsonArray &actions)
{
    return QJsonDocument(QJsonObject{{u"ref"_s, actions}}).toJson(QJsonDocument::Indented);
}

QString displayName(const QString &text, int index)
{
    const QString name = text.trimmed();
    return name.isEmpty() ? u"Action %1"_s.arg(qint64{index} + 1) : name;
}

QString storedName(const QJsonArray &actions, int index)
{
    return actions.at(index).toObject().value("name"_L1).toString();
}

QJsonObject newAction()
{
    return {{u"name"_s, u"Nouvelle action"_s}, {u"tasks"_s, QJsonArray()}};
}

QJsonArray storedTasks(const QList<QJsonObject> &tasks)
{
    QJsonArray stored;
    for (QJsonObject task : tasks) {
        task.remove("action"_L1);
        if (!task.isEmpty())
            stored.append(task);
    }
    return stored;
}
