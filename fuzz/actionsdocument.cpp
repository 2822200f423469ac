// SPDX-License-Identifier: MIT
// An "actions.json", in each of the forms that are taken: what is written for it reads as the same again, and
// what a save makes of an action is settled by the first one.
#include "actionsdocument.h"
#include "fuzzing.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
// No JSON is read that is nested deeper than this.
constexpr int deepest = 1024;

int depthOf(const QJsonValue &value)
{
    int inner = 0;
    const QJsonArray array = value.toArray();
    for (const QJsonValue &element : array)
        inner = std::max(inner, depthOf(element));
    const QJsonObject object = value.toObject();
    for (const QJsonValue &element : object)
        inner = std::max(inner, depthOf(element));
    return value.isArray() || value.isObject() ? inner + 1 : 0;
}

QList<QJsonObject> objectsOf(const QJsonArray &tasks)
{
    QList<QJsonObject> objects;
    for (const QJsonValue &task : tasks)
        objects.append(task.toObject());
    return objects;
}

void checkAction(const QJsonArray &actions, int index)
{
    const QString name = displayName(storedName(actions, index), index);
    mustHold(!name.isEmpty() && name == name.trimmed(), "an action without a name");
    mustHold(displayName(name, index) == name, "a name changes from save to save");

    const QJsonArray tasks = storedTasks(objectsOf(actions.at(index)["tasks"_L1].toArray()));
    for (const QJsonValue &task : tasks) {
        mustHold(!task.toObject().isEmpty(), "a stored step calls nothing");
        mustHold(!task.toObject().contains("action"_L1), "a stored step names an action");
    }
    mustHold(storedTasks(objectsOf(tasks)) == tasks, "steps change from save to save");
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto actions = readActions(bytes);
    mustHold(actions.has_value() == !jsonOf(data, size).isNull(), "a document was refused, or none taken");
    if (!actions)
        return 0;
    for (int i = 0; i < actions->size(); ++i)
        checkAction(*actions, i);
    // A list that stood by itself lies one level deeper once it is written.
    if (depthOf(*actions) < deepest)
        mustHold(readActions(actionsJson(*actions)) == actions, "the file says something else");
    return 0;
}
