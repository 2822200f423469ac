// SPDX-License-Identifier: MIT
#include "actionsfile.h"

#include "actionsdocument.h"
#include "designerstage.h"
#include "installationfolders.h"
#include "machine.h"
#include "testmain.h"

#include <QtCore/QTemporaryDir>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace
{
const QJsonArray &ofTheUser()
{
    static const QJsonArray actions{action(u"mine"_s)};
    return actions;
}

QJsonArray ofTheSeed()
{
    return {action(u"seeded"_s)};
}

void makePipe(const QString &path)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
}

const QString inPlugins = u"plugins/DeviceInterface/GamepadInterface/configuration/Gamepads/actions.json"_s;
const QString inConfiguration = u"configuration/Gamepads/actions.json"_s;
} // namespace

class TestActionsFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_dir->path()).mkpath(u"Gamepads"_s));
    }

    void theUsersFileLiesBesideTheProfiles()
    {
        QCOMPARE(userActionsPath(), userFile());
        QVERIFY(userFile().startsWith(temporaryHome()));
    }

    void installationsAreLookedForAroundTheProgramAndInTheCurrentFolder()
    {
        const QString program = QCoreApplication::applicationDirPath();
        QCOMPARE(installationFolders(), (QStringList{program, program + u"/.."_s, program + u"/../.."_s,
                                                     program + u"/../../.."_s, QDir::currentPath()}));
    }

    void theFirstSeedThatExistsCounts()
    {
        const QStringList folders{path(u"a"_s), path(u"a/b/.."_s), path(u"a/../c"_s), path(u"d"_s)};
        QStringList seeds;
        for (const QString &folder : {u"a"_s, u"c"_s, u"d"_s})
            seeds << path(folder + u'/' + inPlugins) << path(folder + u'/' + inConfiguration);
        QVERIFY(QDir().mkpath(path(u"a/b"_s)));
        QCOMPARE(seedActionsPath(folders), QString());
        while (!seeds.isEmpty()) {
            writeFile(seeds.last(), "[]");
            QCOMPARE(seedActionsPath(folders), seeds.takeLast());
        }
    }

    void aWayUpIsCleaned()
    {
        writeFile(path(u"x/"_s + inConfiguration), "[]");
        QVERIFY(QDir().mkpath(path(u"x/y/z"_s)));
        QCOMPARE(seedActionsPath({path(u"x/y/z/../.."_s)}), path(u"x/"_s + inConfiguration));
    }

    void theUsersFileIsTakenAndNoSeed()
    {
        writeFile(user(), actionsJson(ofTheUser()));
        writeSeed(actionsJson(ofTheSeed()));
        QCOMPARE(load(), (LoadedActions{ofTheUser(), user()}));
        writeFile(user(), R"({"nothing": "usable"})");
        QCOMPARE(load(), (LoadedActions{{}, user()}));
    }

    void aSeedIsCopiedOnceInTheWrittenForm_data()
    {
        QTest::addColumn<QByteArray>("seed");
        const QByteArray list = QJsonDocument(ofTheSeed()).toJson();
        QTest::newRow("array") << list;
        QTest::newRow("ref") << QByteArray(R"({"ref": )" + list + R"(, "other": 1})");
        QTest::newRow("refs") << QByteArray(R"({"refs": )" + list + '}');
    }

    void aSeedIsCopiedOnceInTheWrittenForm()
    {
        QFETCH(QByteArray, seed);
        writeSeed(seed);
        QCOMPARE(load(), (LoadedActions{ofTheSeed(), user()}));
        QCOMPARE(readFile(user()), actionsJson(ofTheSeed()));
        QCOMPARE(readFile(path(u"seeds/"_s + inConfiguration)), seed);
        writeSeed("[]");
        QCOMPARE(load(), (LoadedActions{ofTheSeed(), user()}));
    }

    void aSeedWithoutAListIsCopiedAsAnEmptyOne()
    {
        writeSeed("{}");
        QCOMPARE(load(), (LoadedActions{{}, user()}));
        QCOMPARE(readFile(user()), actionsJson({}));
    }

    void aBrokenFileOfTheUsersIsLeftAlone()
    {
        writeFile(user(), "{ broken");
        writeSeed(actionsJson(ofTheSeed()));
        QCOMPARE(load(), (LoadedActions{ofTheSeed(), user()}));
        QCOMPARE(readFile(user()), "{ broken");
    }

    void withoutAnyFileThereAreNoActions()
    {
        QCOMPARE(load(), (LoadedActions{{}, user()}));
        QVERIFY(!QFileInfo::exists(user()));
    }

    void aSeedThatDoesNotParseOrOpenIsNone_data()
    {
        QTest::addColumn<QString>("seed");
        for (const char *seed : {"text", "folder", "pipe"})
            QTest::newRow(seed) << QString::fromLatin1(seed);
    }

    void aSeedThatDoesNotParseOrOpenIsNone()
    {
        QFETCH(QString, seed);
        const QString place = path(u"seeds/"_s + inPlugins);
        if (seed == u"text"_s)
            writeFile(place, "{ broken");
        else if (seed == u"folder"_s)
            QVERIFY(QDir().mkpath(place));
        else
            makePipe(place);
        writeSeed(actionsJson(ofTheSeed())); // behind it: the first that exists is the one
        QCOMPARE(load(), (LoadedActions{{}, user()}));
        QVERIFY(!QFileInfo::exists(user()));
    }

    void withoutAPlaceForTheUserTheSeedIsOnlyRead()
    {
        writeSeed(actionsJson(ofTheSeed()));
        QCOMPARE(loadActions({}, {path(u"seeds"_s)}), (LoadedActions{ofTheSeed(), {}}));
        QCOMPARE(loadActions({}, {}), LoadedActions());
    }

    void aFolderForTheUsersFileIsNotMade()
    {
        writeSeed(actionsJson(ofTheSeed()));
        const QString away = path(u"away/actions.json"_s);
        QCOMPARE(loadActions(away, {path(u"seeds"_s)}), (LoadedActions{ofTheSeed(), away}));
        QVERIFY(!QFileInfo::exists(path(u"away"_s)));
        QVERIFY(!writeActions(away, ofTheUser()));
    }

    void aFolderInPlaceOfTheFileStays()
    {
        QVERIFY(QDir().mkpath(user()));
        writeSeed(actionsJson(ofTheSeed()));
        QCOMPARE(load(), (LoadedActions{ofTheSeed(), user()}));
        QVERIFY(!writeActions(user(), ofTheUser()));
        QVERIFY(QFileInfo(user()).isDir());
    }

    void aPipeInPlaceOfTheFileKeepsNobodyWaiting()
    {
        makePipe(user());
        writeSeed(actionsJson(ofTheSeed()));
        QCOMPARE(load(), (LoadedActions{ofTheSeed(), user()}));
        QVERIFY(!writeActions(user(), ofTheUser()));
        QVERIFY(!QFileInfo(user()).isFile());
    }

    void writingReplacesTheWholeFile()
    {
        writeFile(user(), QByteArray(100000, 'x'));
        QVERIFY(writeActions(user(), ofTheUser()));
        QCOMPARE(readFile(user()), actionsJson(ofTheUser()));
        QCOMPARE(QDir(QFileInfo(user()).path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{u"actions.json"_s});
    }

    void writingGoesThroughALink()
    {
        QVERIFY(QFile::link(path(u"real.json"_s), user()));
        QVERIFY(writeActions(user(), ofTheUser()));
        QVERIFY(QFileInfo(user()).isSymLink());
        QCOMPARE(readFile(path(u"real.json"_s)), actionsJson(ofTheUser()));
    }

    void aFullDiskIsAFailure()
    {
        GAMEPAD_NEED_FULL_DEVICE();
        QVERIFY(!writeActions(fullDevice(), ofTheUser()));
    }

private:
    QString path(const QString &below) const { return m_dir->path() + u'/' + below; }
    QString user() const { return path(u"Gamepads/actions.json"_s); }
    void writeSeed(const QByteArray &bytes) { writeFile(path(u"seeds/"_s + inConfiguration), bytes); }
    LoadedActions load() { return loadActions(user(), {path(u"nowhere"_s), path(u"seeds"_s)}); }

    std::unique_ptr<QTemporaryDir> m_dir;
};

GAMEPAD_TEST_MAIN(TestActionsFile)
#include "tst_actionsfile.moc"
