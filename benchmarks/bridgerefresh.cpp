// SPDX-License-Identifier: MIT
// A change of the actions goes through the mappings of all profiles, so it may cost little more than reading
// and writing them, and no more for each bridge where there are many.
#include "actionlinker.h"
#include "mappingdocument.h"
#include "pair.h"
#include "profilesroot.h"
#include "subjects.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QUuid>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr int actionCount = 50;

void write(const QString &path, const QJsonObject &document)
{
    QFile file(path);
    const QByteArray text = QJsonDocument(document).toJson(QJsonDocument::Indented);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("%s cannot be written", qUtf8Printable(path));
}

QJsonObject read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

QString actionName(int i)
{
    return u"Action %1"_s.arg(i % actionCount);
}

/// Actions of three steps that differ between versions, so that every bridge changes.
QJsonArray actionsOf(int version)
{
    QJsonArray actions;
    for (int i = 0; i < actionCount; ++i) {
        QJsonArray tasks;
        for (int step = 0; step < 3; ++step) {
            tasks.append(QJsonObject{
                {u"ref"_s, u"device.move%1"_s.arg(step)},
                {u"args"_s, QJsonObject{{u"speed"_s, u"param:speed"_s}, {u"mode"_s, version}}},
            });
        }
        actions.append(QJsonObject{
            {u"name"_s, actionName(i)},
            {u"params"_s, QJsonArray{QJsonObject{{u"name"_s, u"speed"_s}, {u"preferredType"_s, u"int"_s}}}},
            {u"tasks"_s, tasks},
        });
    }
    return actions;
}

QJsonArray bridgesOf(int count)
{
    QJsonArray bridges;
    for (int i = 0; i < count; ++i) {
        bridges.append(QJsonObject{
            {u"src"_s, QJsonObject{{u"deviceType"_s, u"gamepade"_s},
                                   {u"deviceId"_s, 0},
                                   {u"packetId"_s, 1},
                                   {u"stringKey"_s, u"but_%1"_s.arg(i)}}},
            {u"action"_s, actionName(i)},
            {u"args"_s, QJsonObject{{u"speed"_s, i}}},
            {u"dst"_s, QJsonArray()},
        });
    }
    return bridges;
}

/// A data location of its own with profiles, and the linker that keeps them up to date. Each refresh goes
/// from one version of the actions to the other, whichever side runs it.
class BoundProfiles
{
public:
    BoundProfiles(int profiles, int bridges)
        : m_name(u"%1-times-%2-bridges"_s.arg(profiles).arg(bridges))
        , m_bridges(profiles * bridges)
    {
        enter();
        const QJsonObject mapping{{u"signals"_s, QJsonArray()}, {u"bridges"_s, bridgesOf(bridges)}};
        for (int i = 0; i < profiles; ++i) {
            const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
            const QString folder = profilesRootPath() + u'/' + id;
            if (!QDir().mkpath(folder))
                qFatal("%s cannot be made", qUtf8Printable(folder));
            write(folder + "/meta.json"_L1, {{u"type"_s, u"GamepadDefinderMeta"_s}, {u"id"_s, id}});
            write(folder + "/configActionGamepad.json"_L1, mapping);
        }
        // It remembers the root that it sees now.
        m_linker.refreshBridgesFromActions(m_versions[0]);
    }
    ~BoundProfiles()
    {
        enter();
        QDir(profilesRootPath()).removeRecursively();
    }
    Q_DISABLE_COPY_MOVE(BoundProfiles)

    void refresh() { m_linker.refreshBridgesFromActions(nextActions()); }

    /// The same work on the same files, without anything around it.
    void refreshBare()
    {
        enter();
        QHash<QString, QJsonObject> actions;
        for (const QJsonValue &action : nextActions())
            actions.insert(action["name"_L1].toString(), action.toObject());
        const QDir root(profilesRootPath());
        const QStringList folders = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
        for (const QString &name : folders) {
            const QString folder = root.filePath(name);
            const QJsonObject meta = read(folder + "/meta.json"_L1);
            const QString path = folder + u'/' + meta["config"_L1].toString(u"configActionGamepad.json"_s);
            QJsonObject mapping = read(path);
            QJsonArray built;
            const QJsonArray bridges = mapping["bridges"_L1].toArray();
            for (const QJsonValue &value : bridges) {
                QJsonObject bridge = value.toObject();
                const QJsonObject action = actions.value(bridge["action"_L1].toString());
                bridge["dst"_L1] = buildTaskList(action, bridge["args"_L1].toObject());
                built.append(bridge);
            }
            mapping["bridges"_L1] = built;
            write(path, mapping);
        }
    }

    /// How many bridges carry the tasks of the actions that came last.
    [[nodiscard]] int upToDate() const
    {
        enter();
        int count = 0;
        const QDir root(profilesRootPath());
        const QStringList folders = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &name : folders) {
            const QJsonObject document = read(root.filePath(name + "/configActionGamepad.json"_L1));
            const QJsonArray bridges = document["bridges"_L1].toArray();
            for (const QJsonValue &bridge : bridges) {
                const QJsonValue last = bridge["dst"_L1][2]["args"_L1];
                if (last["mode"_L1].toInt(-1) == m_current &&
                    last["speed"_L1] == bridge["args"_L1]["speed"_L1])
                    ++count;
            }
        }
        return count;
    }

    [[nodiscard]] int bridges() const { return m_bridges; }

private:
    void enter() const { QCoreApplication::setApplicationName(m_name); }

    const QJsonArray &nextActions()
    {
        m_current = 1 - m_current;
        return m_versions.at(static_cast<std::size_t>(m_current));
    }

    QString m_name;
    int m_bridges;
    std::array<QJsonArray, 2> m_versions{actionsOf(0), actionsOf(1)};
    int m_current = 0;
    ActionLinker m_linker;
};

void measureOverBareWork(benchmark::State &state, int count, int bridges)
{
    BoundProfiles profiles(count, bridges);
    compare(state, timed([&] { profiles.refresh(); }), timed([&] { profiles.refreshBare(); }));
    profiles.refresh();
    require(state, profiles.upToDate() == profiles.bridges(), "not every bridge was brought up to date");
    profiles.refreshBare();
    require(state, profiles.upToDate() == profiles.bridges(), "the bare side did not build every bridge");
}

void measureGrowth(benchmark::State &state)
{
    BoundProfiles many(20, 1000);
    BoundProfiles few(20, 50);
    const auto refreshes = [](BoundProfiles &profiles) {
        return repeated([&profiles] { profiles.refresh(); }, profiles.bridges());
    };
    compare(state, refreshes(many), refreshes(few));
    require(state, many.upToDate() == many.bridges() && few.upToDate() == few.bridges(),
            "not every bridge was brought up to date");
}
} // namespace

void addBridgeRefreshPairs(const Suite &suite)
{
    for (const auto &[profiles, bridges] : {std::pair(200, 50), std::pair(20, 1000)}) {
        suite.add(
            {.name = "bridges/refresh-" + std::to_string(profiles) + "x" + std::to_string(bridges),
             .what = "refreshBridgesFromActions, over reading, parsing, building and writing the same files",
             .limit = 1.3,
             .rounds = 31},
            [profiles, bridges](benchmark::State &state) { measureOverBareWork(state, profiles, bridges); });
    }
    suite.add({.name = "bridges/growth",
               .what = "a bridge among 1,000 in a profile, over one among 50",
               .limit = 1.5,
               .rounds = 31},
              measureGrowth);
}
