// SPDX-License-Identifier: MIT
#include "profilestore.h"

#include "exchangefiles.h"
#include "profilesroot.h"
#include "testmain.h"

#include <QtCore/QStandardPaths>
#include <QtCore/QTimeZone>

using namespace Qt::StringLiterals;

namespace
{
const QString firstId = u"0f0e0d0c-0b0a-4908-8706-050403020100"_s;

QString folderOf(const QString &name)
{
    return profilesRootPath() + u'/' + name;
}

QByteArray meta(const QByteArray &more = {})
{
    return "{\"type\": \"GamepadDefinderMeta\", \"id\": \"" + firstId.toLatin1() + "\"" + more + "}";
}

/// A folder in the root with these two files; no overlay for a null one.
QString store(const QString &name, const QByteArray &metaText = meta(), const QByteArray &overlay = "{}")
{
    QString folder = folderOf(name);
    write(folder + "/meta.json"_L1, metaText);
    if (!overlay.isNull())
        write(folder + "/overlay.json"_L1, overlay);
    return folder;
}

QStringList scannedNames()
{
    QStringList names;
    const QStringList folders = profileFolders(profilesRootPath());
    for (const QString &folder : folders) {
        GamepadEntry entry;
        if (loadEntryFromDir(folder, &entry))
            names.append(entry.name);
    }
    return names;
}

/// An entry none of whose values is a default.
GamepadEntry filled()
{
    GamepadEntry entry;
    entry.id = QUuid::createUuid();
    entry.name = u"n"_s;
    entry.dirPath = u"d"_s;
    entry.imagePath = u"i"_s;
    entry.overlayPath = u"o"_s;
    entry.deviceName = u"g"_s;
    return entry;
}
} // namespace

class TestProfileStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void theFirstUseMakesTheRoot()
    {
        const QString root =
            QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/Gamepads"_L1;
        QVERIFY(!QFileInfo::exists(root));
        QCOMPARE(makeProfilesRoot(), root);
        QVERIFY(QFileInfo(root).isDir());
        QVERIFY(profileFolders(root).isEmpty());
        store(u"kept"_s);
        QCOMPARE(makeProfilesRoot(), root);
        QCOMPARE(profileFolders(root), QStringList({root + "/kept"_L1}));
    }

    void aRootThatCannotBeMadeIsNamedAllTheSame()
    {
        const QString base = profilesBasePath();
        QVERIFY(QDir().mkpath(base));
        write(base + "/Gamepads"_L1, "in the way");
        const QString root = makeProfilesRoot();
        QCOMPARE(root, base + "/Gamepads"_L1);
        QVERIFY(profileFolders(root).isEmpty());
        QString error;
        QVERIFY(!writeMeta(makeProfileFolder(root), &error));
        QCOMPARE(bytesIn(root), "in the way");
    }

    void foldersComeByNameWhateverTheCase()
    {
        for (const QString &name : {u"b"_s, u"C"_s, u"a"_s})
            store(name, meta(", \"name\": \"" + name.toLatin1() + '"'));
        write(folderOf(u"file"_s), "no folder");
        QCOMPARE(scannedNames(), QStringList({u"a"_s, u"b"_s, u"C"_s}));
    }

    void onlyDirectFoldersAreProfiles()
    {
        store(u"empty/nested"_s);
        QCOMPARE(scannedNames(), QStringList());
    }

    void aFolderIsReadIntoAnEntry()
    {
        const QString folder =
            store(u"another name"_s,
                  meta(", \"name\": \"Mon pad\", \"image\": \"photo.jpg\", \"overlayFile\": \"layer.json\", "
                       "\"deviceName\": \"Pad 3000\", \"config\": \"x.json\""),
                  {});
        write(folder + "/layer.json"_L1, "not even JSON");
        GamepadEntry entry = filled();
        QVERIFY(loadEntryFromDir(folder, &entry));
        QCOMPARE(entry.id, QUuid(firstId));
        QCOMPARE(entry.name, u"Mon pad"_s);
        QCOMPARE(entry.dirPath, folder);
        QCOMPARE(entry.imagePath, folder + "/photo.jpg"_L1);
        QCOMPARE(entry.overlayPath, folder + "/layer.json"_L1);
        QCOMPARE(entry.deviceName, u"Pad 3000"_s);
        QCOMPARE(entry.item, nullptr);
        QVERIFY(loadEntryFromDir(folder, nullptr));
    }

    // Neither the picture nor the mapping is needed.
    void theLeastProfileTakesDefaults()
    {
        const QString folder = store(u"x"_s);
        GamepadEntry entry = filled();
        QVERIFY(loadEntryFromDir(folder, &entry));
        QCOMPARE(entry.name, u"Gamepad"_s);
        QCOMPARE(entry.imagePath, folder + "/image.png"_L1);
        QCOMPARE(entry.overlayPath, folder + "/overlay.json"_L1);
        QCOMPARE(entry.deviceName, QString());
    }

    void whatIsNoProfileLeavesTheEntryAlone_data()
    {
        QTest::addColumn<QByteArray>("meta");
        QTest::addColumn<QByteArray>("overlay");
        const QByteArray overlay = "{}";
        QTest::newRow("type in lower case")
            << QByteArray("{\"type\": \"gamepaddefindermeta\", \"id\": \"" + firstId.toLatin1() + "\"}")
            << overlay;
        QTest::newRow("no id") << QByteArray("{\"type\": \"GamepadDefinderMeta\"}") << overlay;
        QTest::newRow("broken") << meta().chopped(1) << overlay;
        QTest::newRow("array") << QByteArray('[' + meta() + ']') << overlay;
        QTest::newRow("empty") << QByteArray("") << overlay;
        QTest::newRow("no overlay") << meta() << QByteArray();
        QTest::newRow("another overlay") << meta(", \"overlayFile\": \"layer.json\"") << overlay;
    }

    void whatIsNoProfileLeavesTheEntryAlone()
    {
        QFETCH(const QByteArray, meta);
        QFETCH(const QByteArray, overlay);
        const QString folder = store(u"x"_s, meta, overlay);
        const GamepadEntry before = filled();
        GamepadEntry entry = before;
        QVERIFY(!loadEntryFromDir(folder, &entry));
        QVERIFY(!loadEntryFromDir(folder, nullptr));
        QCOMPARE(entry.id, before.id);
        QCOMPARE(entry.name, before.name);
        QCOMPARE(entry.dirPath, before.dirPath);
        QCOMPARE(entry.imagePath, before.imagePath);
        QCOMPARE(entry.overlayPath, before.overlayPath);
        QCOMPARE(entry.deviceName, before.deviceName);
    }

    void aFolderWithoutMetaIsNoProfile()
    {
        QVERIFY(QDir().mkpath(folderOf(u"x/meta.json"_s)));
        write(folderOf(u"x/overlay.json"_s), "{}");
        QVERIFY(!loadEntryFromDir(folderOf(u"x"_s), nullptr));
        QVERIFY(!loadEntryFromDir(folderOf(u"gone"_s), nullptr));
    }

    void idsMayRepeat()
    {
        store(u"a"_s, meta(", \"name\": \"one\""));
        store(u"b"_s, meta(", \"name\": \"two\""));
        QCOMPARE(scannedNames(), QStringList({u"one"_s, u"two"_s}));
    }

    void namesThatLeaveTheFolderNeverDo_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("parent") << u"../other/secret"_s;
        QTest::newRow("absolute") << folderOf(u"other/secret"_s);
        QTest::newRow("below") << u"sub/secret"_s;
        QTest::newRow("dots") << u".."_s;
        QTest::newRow("dot") << u"."_s;
    }

    void namesThatLeaveTheFolderNeverDo()
    {
        QFETCH(const QString, name);
        write(folderOf(u"other/secret"_s), "{}");
        write(folderOf(u"x/sub/secret"_s), "{}");
        const QByteArray hostile =
            meta(", \"image\": \"" + name.toUtf8() + "\", \"overlayFile\": \"" + name.toUtf8() + '"');
        const QString folder = store(u"x"_s, hostile, {});
        QVERIFY(!loadEntryFromDir(folder, nullptr)); // what it names outside is there
        write(folder + "/overlay.json"_L1, "{}");
        GamepadEntry entry;
        QVERIFY(loadEntryFromDir(folder, &entry));
        QCOMPARE(entry.overlayPath, folder + "/overlay.json"_L1);
        QCOMPARE(entry.imagePath, folder + "/image.png"_L1);
    }

    void aMetaOfHundredMegabytesLoads()
    {
        const QString folder =
            store(u"x"_s, meta(", \"more\": \"" + QByteArray(100 * 1024 * 1024, 'x') + '"'));
        QVERIFY(loadEntryFromDir(folder, nullptr));
    }

    void aNewFolderIsCalledAsItsId()
    {
        const GamepadEntry entry = makeProfileFolder(makeProfilesRoot());
        const GamepadEntry other = makeProfileFolder(makeProfilesRoot());
        QVERIFY(!entry.id.isNull());
        QVERIFY(entry.id != other.id);
        QCOMPARE(entry.dirPath, folderOf(entry.id.toString(QUuid::WithoutBraces)));
        QVERIFY(QDir(entry.dirPath).exists());
        QVERIFY(QDir(entry.dirPath).isEmpty());
    }

    void aFolderGoesWithAllThatIsInIt()
    {
        const QString folder = store(u"x"_s);
        write(folder + "/deep/er/file"_L1, "x");
        store(u"y"_s);
        removeProfileFolder(folder);
        QVERIFY(!QFileInfo::exists(folder));
        QCOMPARE(scannedNames(), QStringList({u"Gamepad"_s}));
        removeProfileFolder(folder); // gone already
    }

    void ofALinkedFolderOnlyTheLinkGoes()
    {
        const QString elsewhere = temporaryHome() + "/elsewhere"_L1;
        write(elsewhere + "/meta.json"_L1, meta());
        write(elsewhere + "/overlay.json"_L1, "{}");
        QVERIFY(QDir().mkpath(profilesRootPath()));
        QVERIFY(QFile::link(elsewhere, folderOf(u"link"_s)));
        QVERIFY(loadEntryFromDir(folderOf(u"link"_s), nullptr));
        removeProfileFolder(folderOf(u"link"_s));
        QCOMPARE(profileFolders(profilesRootPath()), QStringList());
        QCOMPARE(treeOf(elsewhere), QStringList({u"meta.json"_s, u"overlay.json"_s}));
        QVERIFY(QDir(elsewhere).removeRecursively());
    }

    void aMissingMappingIsWritten()
    {
        const QString folder = store(u"x"_s);
        QString error;
        QVERIFY(ensureMapping(folder, &error));
        QVERIFY(error.isEmpty());
        QCOMPARE(mappingPath(folder), folder + "/configActionGamepad.json"_L1);
        const QByteArray expected = "{\n"
                                    "    \"bridges\": [\n    ],\n"
                                    "    \"onClose\": [\n    ],\n"
                                    "    \"onStartup\": [\n    ],\n"
                                    "    \"ref\": [\n    ],\n"
                                    "    \"signals\": [\n    ],\n"
                                    "    \"timers\": [\n    ]\n"
                                    "}\n";
        QCOMPARE(bytesIn(mappingPath(folder)), expected);
        QCOMPARE(QJsonDocument::fromJson(expected).object(), defaultMappingDocument());
    }

    void aMappingThatIsThereStays()
    {
        const QString folder = store(u"x"_s);
        write(mappingPath(folder), "the user's own");
        QVERIFY(ensureMapping(folder, nullptr));
        QCOMPARE(bytesIn(mappingPath(folder)), "the user's own");
    }

    void aMappingThatCannotBeWrittenIsSaid()
    {
        QString error;
        QVERIFY(!ensureMapping(folderOf(u"gone"_s), &error));
        QCOMPARE(error, u"Impossible dâ€™Ã©crire %1"_s.arg(mappingPath(folderOf(u"gone"_s))));
    }

    void metaIsWrittenAsOfNow()
    {
        GamepadEntry entry = makeProfileFolder(makeProfilesRoot());
        entry.name = u"Mon pad"_s;
        entry.imagePath = entry.dirPath + "/image.jpg"_L1;
        entry.overlayPath = entry.dirPath + "/layer.json"_L1;
        entry.deviceName = u"Pad"_s;
        const QString path = entry.dirPath + "/meta.json"_L1;

        const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
        QVERIFY(writeNewMeta(entry, nullptr));
        QVERIFY(bytesIn(path).startsWith("{\n    \"")); // indented
        QJsonObject written = objectIn(path);
        QCOMPARE(written.size(), 10);
        QCOMPARE(written["createdAt"_L1], written["modifiedAt"_L1]);
        const auto modified = QDateTime::fromString(written["modifiedAt"_L1].toString(), Qt::ISODate);
        QVERIFY(before <= modified && modified <= QDateTime::currentDateTimeUtc());
        QCOMPARE(written["image"_L1].toString(), u"image.jpg"_s);
        QCOMPARE(written["overlayFile"_L1].toString(), u"layer.json"_s);

        QVERIFY(writeMeta(entry, nullptr));
        written = objectIn(path);
        QCOMPARE(written.size(), 9);
        QVERIFY(!written.contains("createdAt"_L1));

        QVERIFY(QFile::remove(path) && QDir().mkpath(path));
        QString error;
        QVERIFY(!writeMeta(entry, &error));
        QCOMPARE(error, u"Impossible dâ€™Ã©crire %1"_s.arg(path));
        error.clear();
        QVERIFY(!writeNewMeta(entry, &error));
        QCOMPARE(error, u"Impossible dâ€™Ã©crire %1"_s.arg(path));
    }
};

GAMEPAD_TEST_MAIN(TestProfileStore)
#include "tst_profilestore.moc"
