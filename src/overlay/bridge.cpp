// SPDX-License-Identifier: MIT
#include "bridge.h"

#include "casekey.h"
#include "inputkey.h"
#include "mappingdocument.h"

using namespace Qt::StringLiterals;

namespace
{
QString functionName(const QJsonObject &config)
{
    const QString ref = config["ref"_L1].toString();
    return ref.isEmpty() ? config["action"_L1].toString() : ref;
}

QJsonArray tasksOf(const QString &name, const QJsonObject &config, const FunctionIndex &functions)
{
    if (name.isEmpty())
        return {};
    const QJsonObject function = functions.find(name);
    if (function.isEmpty())
        return {normalizedToolConfig(config)};
    const QJsonArray tasks = buildTaskList(function, config["args"_L1].toObject());
    // A bridge of a function without tasks stays, and does nothing.
    return tasks.isEmpty() ? QJsonArray{QJsonObject{{u"when"_s, false}}} : tasks;
}

/// The action of a bridge that tells none: that of its first task that has one.
QString firstReference(const QJsonArray &tasks)
{
    for (const QJsonValue &task : tasks) {
        const QString ref = task["ref"_L1].toString().trimmed();
        if (!ref.isEmpty())
            return ref;
    }
    return {};
}

std::optional<QJsonObject> firstConfig(const QJsonArray &tasks)
{
    for (const QJsonValue &task : tasks) {
        const QJsonObject config = task.toObject();
        if (config.contains("ref"_L1) || config.contains("action"_L1))
            return config;
    }
    return std::nullopt;
}

QJsonObject configOf(const QString &action, const QJsonValue &args)
{
    QJsonObject config{{u"action"_s, action}};
    if (args.isObject())
        config["args"_L1] = args;
    return config;
}
} // namespace

QString exportedKey(const BoundPastille &pastille)
{
    bool isJoy = true;
    int index = -1;
    if (parseInputKey(pastille.title, &isJoy, &index))
        return inputKey(isJoy, index);
    const QString key = pastille.input.stringKey.trimmed();
    return key.isEmpty() ? inputKey(pastille.input.isJoy, 0) : key;
}

std::optional<QJsonObject> bridgeOf(const BoundPastille &pastille, const FunctionIndex &functions)
{
    const QJsonObject &config = pastille.config;
    const QString name = functionName(config);
    if (config.isEmpty() || equalWithoutCase(name.trimmed(), u"none"_s))
        return std::nullopt;

    NodeInput input = pastille.input;
    input.stringKey = exportedKey(pastille);
    QJsonObject bridge{
        {u"src"_s, inputSourceJson(input)},
        {u"dst"_s, tasksOf(name, config, functions)},
    };
    if (!name.isEmpty())
        bridge["action"_L1] = name;
    if (const QJsonObject args = config["args"_L1].toObject(); !args.isEmpty())
        bridge["args"_L1] = args;
    return bridge;
}

Bridge readBridge(const QJsonObject &bridge)
{
    const QJsonArray tasks = bridge["dst"_L1].toArray();
    Bridge read;
    read.src = readInputSource(bridge["src"_L1].toObject());
    read.action = bridge["action"_L1].toString().trimmed();
    if (read.action.isEmpty())
        read.action = firstReference(tasks);
    read.config = read.action.isEmpty() ? firstConfig(tasks) : configOf(read.action, bridge["args"_L1]);
    return read;
}

void takeSource(NodeInput &input, const InputSource &src)
{
    takeDevice(input, src);
    if (src.stringKey.isEmpty())
        return;
    input.isJoy = standsForAxis(src);
    bool isJoy = true;
    int index = -1;
    input.stringKey = parseInputKey(src.stringKey, &isJoy, &index) ? inputKey(isJoy, index) : src.stringKey;
}
