// SPDX-License-Identifier: MIT
// The search for a gamepad's no-code application reads every profile anew, so it may cost little more than
// reading them, and no more for each where there are many.
#include "controlmanette.h"
#include "pair.h"
#include "profilesroot.h"
#include "scriptedjoystick.h"
#include "subjects.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QScopeGuard>
#include <QtCore/QUuid>

using namespace Qt::StringLiterals;

namespace
{
void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("%s cannot be written", qUtf8Printable(path));
}

/// A profile as the editor writes it.
QByteArray metaJson(const QString &id, const QString &deviceName)
{
    const QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    return QJsonDocument(QJsonObject{
                             {u"type"_s, u"GamepadDefinderMeta"_s},
                             {u"version"_s, 2},
                             {u"id"_s, id},
                             {u"name"_s, "Gamepad "_L1 + id.first(4)},
                             {u"image"_s, u"image.png"_s},
                             {u"overlayFile"_s, u"overlay.json"_s},
                             {u"config"_s, u"configActionGamepad.json"_s},
                             {u"deviceName"_s, deviceName},
                             {u"createdAt"_s, now},
                             {u"modifiedAt"_s, now},
                         })
        .toJson(QJsonDocument::Indented);
}

/// A data location of its own with `count` profiles, of which the last is the one of the gamepad in slot 0.
class Profiles
{
public:
    explicit Profiles(int count)
        : m_count(count)
    {
        enter();
        QStringList ids;
        for (int i = 0; i < count; ++i)
            ids.append(QUuid::createUuid().toString(QUuid::WithoutBraces));
        ids.sort(Qt::CaseInsensitive);
        for (const QString &id : std::as_const(ids)) {
            const QString folder = profilesRootPath() + u'/' + id;
            if (!QDir().mkpath(folder))
                qFatal("%s cannot be made", qUtf8Printable(folder));
            const bool linked = id == ids.constLast();
            write(folder + "/meta.json"_L1, metaJson(id, linked ? u"scripted pad"_s : QString()));
            write(folder + "/configActionGamepad.json"_L1, "{}");
        }
        m_served = profilesRootPath() + u'/' + ids.constLast() + "/configActionGamepad.json"_L1;
    }

    ~Profiles()
    {
        enter();
        QDir(profilesRootPath()).removeRecursively();
    }

    /// Makes these the profiles that a lookup finds.
    void enter() const { QCoreApplication::setApplicationName(u"%1-profiles"_s.arg(m_count)); }

    [[nodiscard]] bool servedBy(ControlManette &pad) const
    {
        enter();
        return pad.noCodeApp() == QStringList{m_served};
    }

    [[nodiscard]] int count() const { return m_count; }

private:
    int m_count;
    QString m_served;
};

/// Opens and parses the same documents, and returns how many there were.
int readAllMetas()
{
    int read = 0;
    const QDir root(profilesRootPath());
    const QStringList folders = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &folder : folders) {
        QFile file(root.filePath(folder + "/meta.json"_L1));
        if (file.open(QIODevice::ReadOnly) && QJsonDocument::fromJson(file.readAll()).isObject())
            ++read;
    }
    return read;
}

void measureOverReading(benchmark::State &state, int count)
{
    const auto unplug = qScopeGuard(scripted::reset);
    scripted::plug(0, scripted::restingPad());
    ControlManette pad(0, nullptr);
    const Profiles profiles(count);
    profiles.enter();
    compare(state, repeated([&pad] { benchmark::DoNotOptimize(pad.noCodeApp()); }),
            repeated([] { benchmark::DoNotOptimize(readAllMetas()); }));
    require(state, profiles.servedBy(pad), "the pad did not find its profile, the last");
    require(state, readAllMetas() == count, "the bare side did not read every profile");
}

void measureGrowth(benchmark::State &state, int many, int few)
{
    const auto unplug = qScopeGuard(scripted::reset);
    scripted::plug(0, scripted::restingPad());
    ControlManette pad(0, nullptr);
    const Profiles manyProfiles(many);
    const Profiles fewProfiles(few);
    const auto lookup = [&pad](const Profiles &profiles) {
        return repeated(
            [&pad, &profiles] {
                profiles.enter();
                benchmark::DoNotOptimize(pad.noCodeApp());
            },
            profiles.count());
    };
    compare(state, lookup(manyProfiles), lookup(fewProfiles));
    require(state, manyProfiles.servedBy(pad) && fewProfiles.servedBy(pad),
            "the pad did not find its profile, the last");
}
} // namespace

void addProfileLookupPairs(const Suite &suite)
{
    for (const int count : {10, 100, 1000}) {
        suite.add({.name = "profiles/no-code-app-" + std::to_string(count),
                   .what = "noCodeApp, over listing, opening and parsing the same files",
                   .limit = 1.2,
                   .rounds = count < 1000 ? 301 : 61},
                  [count](benchmark::State &state) { measureOverReading(state, count); });
    }
    suite.add({.name = "profiles/growth",
               .what = "noCodeApp among 1,000 profiles, over among 10, for each profile",
               .limit = 1.2,
               .rounds = 61},
              [](benchmark::State &state) { measureGrowth(state, 1000, 10); });
}
