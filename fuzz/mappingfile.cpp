// SPDX-License-Identifier: MIT
// A mapping on disk: {"actions": [...], "mapping": {...}, "bound": [{"title", "name", "args"}]}. A save, a
// change of the actions and a load take from it or put into it what they are for and leave all else, and once
// done they change nothing more.
#include "bridge.h"
#include "bridgerefresh.h"
#include "fuzzing.h"
#include "knownnames.h"
#include "mappingmerge.h"

#include <QtCore/QStringList>

using namespace Qt::StringLiterals;

namespace
{
QJsonObject without(QJsonObject object, const QStringList &keys)
{
    for (const QString &key : keys)
        object.remove(key);
    return object;
}

/// As the fields of a tool box give them.
QJsonObject plainOf(QJsonObject args)
{
    const QStringList names = args.keys();
    for (const QString &name : names) {
        if (args[name].isObject() || args[name].isArray())
            args.remove(name);
    }
    return args;
}

/// The bridges that an overlay would save.
QJsonArray boundBridges(const QJsonArray &bound, const FunctionIndex &actions)
{
    QJsonArray bridges;
    for (const QJsonValue &value : bound) {
        const QString name = value["name"_L1].toString();
        BoundPastille pastille{.title = value["title"_L1].toString(), .input = {}, .config = {}};
        if (!name.isEmpty())
            pastille.config = {
                {u"ref"_s, name}, {u"action"_s, name}, {u"args"_s, plainOf(value["args"_L1].toObject())}};
        if (const auto bridge = bridgeOf(pastille, actions))
            bridges.append(*bridge);
    }
    return bridges;
}

void checkSave(const QJsonObject &mapping, const QJsonArray &bridges)
{
    const QStringList parts{u"signals"_s, u"onStartup"_s, u"onClose"_s, u"timers"_s};
    const QJsonObject saved = mergedMapping(mapping, bridges);
    for (auto it = mapping.begin(); it != mapping.end(); ++it)
        mustHold(it.key() == "bridges"_L1 || saved[it.key()] == it.value(), "a save lost what it found");
    for (const QString &part : parts)
        mustHold(saved.contains(part), "a save lacks what hosts expect");
    mustHold(without(saved, parts + mapping.keys() + QStringList{u"bridges"_s}).isEmpty(),
             "a save brought a key of its own");

    const QJsonArray savedBridges = saved["bridges"_L1].toArray();
    mustHold(savedBridges.size() == bridges.size(), "a save lost a bridge");
    for (qsizetype i = 0; i < bridges.size(); ++i) {
        const QJsonObject bridge = bridges.at(i).toObject();
        const QJsonObject now = savedBridges.at(i).toObject();
        mustHold(without(now, {u"dst"_s}) == without(bridge, {u"dst"_s}), "a save changed more than tasks");
        const bool rebuilt = !bridge["action"_L1].toString().trimmed().isEmpty();
        mustHold(!rebuilt || now == bridge, "a save carried old tasks over into an action");
    }
    // The second save may find tasks of another new bridge for the same input, the third finds no others.
    const QJsonObject again = mergedMapping(saved, bridges);
    mustHold(mergedMapping(again, bridges) == again, "a mapping drifts from save to save");
    mustHold(QJsonDocument::fromJson(QJsonDocument(saved).toJson()).object() == saved,
             "the file says something else");
}

void checkRefresh(const QJsonArray &bridges, const FunctionIndex &actions)
{
    const auto refreshed = refreshedBridges(bridges, actions);
    if (!refreshed)
        return;
    mustHold(refreshed->size() == bridges.size(), "a change of the actions lost a bridge");
    for (qsizetype i = 0; i < bridges.size(); ++i) {
        const QJsonObject bridge = bridges.at(i).toObject();
        const QJsonObject now = refreshed->at(i).toObject();
        const QStringList rebuilt{u"action"_s, u"dst"_s, u"args"_s};
        mustHold(without(now, rebuilt) == without(bridge, rebuilt),
                 "a change of the actions reached further");
        mustHold(now["args"_L1].toObject() == bridge["args"_L1].toObject(), "a binding lost its arguments");
        mustHold(bridgeActionName(now) == bridgeActionName(bridge), "a binding is of another action");
        if (actions.find(bridgeActionName(bridge)).isEmpty())
            mustHold(refreshed->at(i) == bridges.at(i), "a binding of no action was changed");
    }
    mustHold(refreshedBridges(*refreshed, actions) == refreshed, "bridges drift from change to change");
}

QStringList namesOf(const QJsonArray &actions)
{
    QStringList names;
    for (const QJsonValue &action : actions)
        names.append(action["name"_L1].toString());
    return names;
}

void checkNames(const QJsonArray &actions, const QJsonArray &trimmed)
{
    mustHold(trimmed.size() == actions.size(), "an action was lost");
    const QStringList names = namesOf(trimmed);
    for (qsizetype i = 0; i < actions.size(); ++i) {
        const QJsonObject action = actions.at(i).toObject();
        const QJsonObject now = trimmed.at(i).toObject();
        mustHold(without(now, {u"name"_s}) == without(action, {u"name"_s}),
                 "an action lost more than blanks");
        const QString name = action["name"_L1].toString().trimmed();
        mustHold(now["name"_L1].toString().trimmed() == name, "an action has another name");
        mustHold(name.isEmpty() || names.contains(name), "a tool box does not find an action");
    }
    mustHold(withTrimmedNames(trimmed) == trimmed, "names are not settled");
}

void checkLoad(const QJsonObject &mapping, const QJsonArray &actions)
{
    const QJsonArray trimmed = withTrimmedNames(actions);
    checkNames(actions, trimmed);
    const QJsonObject known = withKnownNames(mapping, trimmed);
    mustHold(without(known, {u"bridges"_s}) == without(mapping, {u"bridges"_s}),
             "a load changes more than bridges");
    mustHold(withKnownNames(known, trimmed) == known, "names drift from load to load");

    const FunctionIndex index(trimmed);
    const QStringList names = namesOf(trimmed);
    const QJsonArray before = mapping["bridges"_L1].toArray();
    const QJsonArray after = known["bridges"_L1].toArray();
    mustHold(before.size() == after.size(), "a load loses a bridge");
    for (qsizetype i = 0; i < before.size(); ++i) {
        const Bridge read = readBridge(before.at(i).toObject());
        const Bridge spelled = readBridge(after.at(i).toObject());
        mustHold(spelled.src == read.src, "a bridge is of another input");
        mustHold(spelled.config.has_value() == read.config.has_value(), "a bridge configures something else");
        if (!read.config || !spelled.config)
            continue;
        mustHold(spelled.config->value("args"_L1).toObject() == read.config->value("args"_L1).toObject(),
                 "a bridge has other arguments");
        mustHold(read.action.isEmpty() || index.find(spelled.action) == index.find(read.action),
                 "a bridge is of another action");
        mustHold(index.find(spelled.action).isEmpty() || names.contains(spelled.action),
                 "a tool box takes a known action for an unknown one");
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonObject input = jsonOf(data, size).object();
    const QJsonObject mapping = input["mapping"_L1].toObject();
    const QJsonArray actions = input["actions"_L1].toArray();
    const FunctionIndex index(actions);
    checkSave(mapping, boundBridges(input["bound"_L1].toArray(), index));
    checkRefresh(mapping["bridges"_L1].toArray(), index);
    checkLoad(mapping, actions);
    return 0;
}
