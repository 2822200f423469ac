// SPDX-License-Identifier: MIT
// Where mappings lie, how they are read, and which files a change of the actions writes.
#include "jsontext.h"
#include "profilefolder.h"
#include "profilemapping.h"
#include "profilesroot.h"
#include "smalldisk.h"
#include "testmain.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace
{
const QUuid someId(u"{6f1c3a52-0d6c-4d0e-9a42-5f4f3c0d9c11}"_s);
/// Its action has got a task.
const QByteArray staleMapping = R"({"bridges":[{"action":"B","dst":[]}]})";

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "cannot be read"_ba;
}

QJsonArray bridgesOf(const QString &path)
{
    return QJsonDocument::fromJson(contentOf(path))["bridges"_L1].toArray();
}
} // namespace

class TestProfileMapping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void aFileName_data()
    {
        QTest::addColumn<QString>("config");
        QTest::addColumn<QString>("name");

        const QString standard = u"configActionGamepad.json"_s;
        QTest::newRow("none") << QString() << standard;
        QTest::newRow("blank") << u" \t "_s << standard;
        QTest::newRow("one") << u"mine.json"_s << u"mine.json"_s;
        QTest::newRow("with blanks around it") << u" mine.json "_s << u" mine.json "_s;
        QTest::newRow("this folder") << u"."_s << standard;
        QTest::newRow("the folder above") << u".."_s << standard;
        QTest::newRow("a path") << u"a/mine.json"_s << standard;
        QTest::newRow("a path out of the folder") << u"../mine.json"_s << standard;
        QTest::newRow("another platform's path") << u"..\\mine.json"_s << standard;
        QTest::newRow("absolute") << u"/etc/passwd"_s << standard;
        QTest::newRow("a NUL") << u"mine\0.json"_s << standard;
    }

    void aFileName()
    {
        QFETCH(const QString, config);
        QTEST(mappingFileName(config), "name");
    }

    void aPath_data()
    {
        QTest::addColumn<QByteArray>("meta");
        QTest::addColumn<QString>("name");

        const QString standard = u"configActionGamepad.json"_s;
        QTest::newRow("broken") << "{"_ba << standard;
        QTest::newRow("empty") << ""_ba << standard;
        QTest::newRow("no object") << "[{'config':'mine.json'}]"_ba << standard;
        QTest::newRow("no config") << "{}"_ba << standard;
        QTest::newRow("no type is asked for") << "{'config':'mine.json'}"_ba << u"mine.json"_s;
        QTest::newRow("another type") << "{'type':'x','config':'mine.json'}"_ba << u"mine.json"_s;
        QTest::newRow("blanks count") << "{'config':' mine.json '}"_ba << u" mine.json "_s;
        QTest::newRow("no text") << "{'config':['mine.json']}"_ba << standard;
        QTest::newRow("a way out of the folder") << "{'config':'../../mine.json'}"_ba << standard;
    }

    void aPath()
    {
        QFETCH(QByteArray, meta);
        QFETCH(const QString, name);
        const QString folder = someId.toString(QUuid::WithoutBraces);
        writeBelowRoot(folder + u"/meta.json"_s, meta.replace('\'', '"'));
        QCOMPARE(mappingFilePath(profilesRootPath(), someId),
                 profilesRootPath() + u'/' + folder + u'/' + name);
    }

    void aProfileWithoutAFolderHasAPath()
    {
        QCOMPARE(mappingFilePath(u"/root"_s, someId),
                 u"/root/6f1c3a52-0d6c-4d0e-9a42-5f4f3c0d9c11/configActionGamepad.json"_s);
    }

    void noProfileHasNone() { QCOMPARE(mappingFilePath(u"/root"_s, {}), QString()); }

    void anObjectIsRead()
    {
        const QString path = writeBelowRoot(u"m.json"_s, R"({"bridges":[1]})");
        bool ok = false;
        QString error = u"untouched"_s;
        QCOMPARE(readMappingFile(path, &ok, &error), object("{'bridges':[1]}"));
        QVERIFY(ok);
        QCOMPARE(error, u"untouched"_s);
        QVERIFY(!readMappingFile(path, nullptr, nullptr).isEmpty());
    }

    void whatIsNoObjectIsRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("error");

        QTest::newRow("empty") << ""_ba << u"Invalid JSON in %1 (illegal value)"_s;
        QTest::newRow("cut off") << R"({"bridges":[)"_ba << u"Invalid JSON in %1 (unterminated array)"_s;
        QTest::newRow("an array") << "[{}]"_ba << u"Invalid JSON in %1 (no error occurred)"_s;
        QTest::newRow("more behind it")
            << "{} {}"_ba << u"Invalid JSON in %1 (garbage at the end of the document)"_s;
        QTest::newRow("too deep") << QByteArray(5000, '[') + QByteArray(5000, ']')
                                  << u"Invalid JSON in %1 (too deeply nested document)"_s;
    }

    void whatIsNoObjectIsRefused()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const QString, error);
        const QString path = writeBelowRoot(u"%2.json"_s, content);
        bool ok = true;
        QString reason;
        QVERIFY(readMappingFile(path, &ok, &reason).isEmpty());
        QVERIFY(!ok);
        QCOMPARE(reason, QString(error).replace(u"%1"_s, path));
        QVERIFY(readMappingFile(path, nullptr, nullptr).isEmpty());
    }

    void whatCannotBeOpenedIsRefused_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("missing") << temporaryHome() + u"/missing.json"_s;
        QTest::newRow("a folder") << temporaryHome();
        QTest::newRow("a very long name") << temporaryHome() + u'/' + QString(10'000, u'x');
        QTest::newRow("no name") << QString();
    }

    void whatCannotBeOpenedIsRefused()
    {
        QFETCH(const QString, path);
        bool ok = true;
        QString reason;
        QVERIFY(readMappingFile(path, &ok, &reason).isEmpty());
        QVERIFY(!ok);
        QCOMPARE(reason, u"Cannot open "_s + path);
    }

    void everyProfileIsRefreshedAtOnce()
    {
        const QByteArray stale =
            R"({"bridges":[{"action":"B","dst":[]}],"timers":[{"every":1}],"mine":true})";
        writeMeta(u"one"_s, {});
        writeMeta(u"two"_s, {{u"type"_s, u"any other"_s}, {u"config"_s, u"other.json"_s}});
        const QString one = writeBelowRoot(u"one/configActionGamepad.json"_s, stale);
        const QString two = writeBelowRoot(u"two/other.json"_s, stale);
        const QString unused = writeBelowRoot(u"two/configActionGamepad.json"_s, stale);
        refreshMappings(profilesRootPath(), actions());

        const QJsonObject expected =
            object("{'bridges':[{'action':'B','dst':[{'ref':'G'}]}],'timers':[{'every':1}],'mine':true}");
        QCOMPARE(contentOf(one), QJsonDocument(expected).toJson(QJsonDocument::Indented));
        QCOMPARE(contentOf(two), contentOf(one));
        QCOMPARE(contentOf(unused), stale);
    }

    void blanksAroundAConfigDoNotCountHere()
    {
        writeMeta(u"one"_s, {{u"config"_s, u" mine.json "_s}});
        const QString trimmed = writeBelowRoot(u"one/mine.json"_s, staleMapping);
        const QString asItStands = writeBelowRoot(u"one/ mine.json "_s, staleMapping);
        refreshMappings(profilesRootPath(), actions());
        QVERIFY(contentOf(trimmed) != staleMapping);
        QCOMPARE(contentOf(asItStands), staleMapping);
    }

    void aFileThatIsUpToDateIsWrittenLikeTheOthers()
    {
        writeMeta(u"one"_s, {});
        const QByteArray byHand = R"({ "mine": 1, "bridges": [ {"action":"B","dst":[{"ref":"G"}]} ] })";
        const QString path = writeBelowRoot(u"one/configActionGamepad.json"_s, byHand);
        refreshMappings(profilesRootPath(), actions());
        QCOMPARE(contentOf(path), QJsonDocument::fromJson(byHand).toJson(QJsonDocument::Indented));
    }

    void aFileWithoutAKnownActionIsNotWritten_data()
    {
        QTest::addColumn<QByteArray>("content");

        QTest::newRow("no bridges") << R"({"bridges":[]})"_ba;
        QTest::newRow("bridges missing") << R"({"timers":[1]})"_ba;
        QTest::newRow("bridges that are none") << R"({"bridges":{"action":"B","dst":[]}})"_ba;
        QTest::newRow("of an action that is gone")
            << R"({"bridges":[{"action":"Gone","dst":[{"ref":"x"}]}]})"_ba;
        QTest::newRow("hostile elements")
            << R"({"bridges":[1,null,"B",[],{},{"dst":7},{"action":{"name":"B"}}]})"_ba;
        QTest::newRow("broken") << R"({"bridges":[{"action":"B")"_ba;
        QTest::newRow("no object") << R"([{"action":"B","dst":[]}])"_ba;
        QTest::newRow("empty") << ""_ba;
    }

    void aFileWithoutAKnownActionIsNotWritten()
    {
        QFETCH(const QByteArray, content);
        writeMeta(u"one"_s, {});
        const QString path = writeBelowRoot(u"one/configActionGamepad.json"_s, content);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QDateTime longAgo(QDate(2001, 1, 1), QTime(0, 0));
        QVERIFY(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
        file.close();
        refreshMappings(profilesRootPath(), actions());
        QCOMPARE(contentOf(path), content);
        QCOMPARE(QFileInfo(path).lastModified(), longAgo);
    }

    void aFolderIsPassedOver_data()
    {
        QTest::addColumn<QString>("meta");
        QTest::addColumn<QByteArray>("content");

        QTest::newRow("without a meta.json") << u"one/other"_s << ""_ba;
        QTest::newRow("with a broken one") << u"one/meta.json"_s << "{"_ba;
        QTest::newRow("with one that is no object") << u"one/meta.json"_s << "[]"_ba;
        QTest::newRow("with one that is a folder") << u"one/meta.json/file"_s << "{}"_ba;
    }

    void aFolderIsPassedOver()
    {
        QFETCH(const QString, meta);
        QFETCH(const QByteArray, content);
        writeBelowRoot(meta, content);
        const QString path = writeBelowRoot(u"one/configActionGamepad.json"_s, staleMapping);
        writeMeta(u"two"_s, {});
        const QString next = writeBelowRoot(u"two/configActionGamepad.json"_s, staleMapping);
        refreshMappings(profilesRootPath(), actions());
        QCOMPARE(contentOf(path), staleMapping);
        QVERIFY(contentOf(next) != staleMapping);
    }

    void aProfileWithoutAMappingGetsNone()
    {
        writeMeta(u"one"_s, {});
        refreshMappings(profilesRootPath(), actions());
        QVERIFY(!QFile::exists(profilesRootPath() + u"/one/configActionGamepad.json"_s));
    }

    void withoutAnyProfileNothingIsMade()
    {
        refreshMappings(profilesRootPath(), actions());
        QVERIFY(!QFile::exists(profilesRootPath()));
    }

    void whatCannotBeReadDoesNotKeepTheOthersFromIt()
    {
        const QStringList folders = profilesAsTheyAreFound();
        QVERIFY(QDir().mkpath(mappingIn(folders.first())));
        for (const QString &folder : folders.sliced(1))
            writeBelowRoot(folder + u"/configActionGamepad.json"_s, staleMapping);
        refreshMappings(profilesRootPath(), actions());
        for (const QString &folder : folders.sliced(1))
            QCOMPARE(bridgesOf(mappingIn(folder)), array("[{'action':'B','dst':[{'ref':'G'}]}]"));
    }

    void whatCannotBeWrittenDoesNotKeepTheOthersFromIt()
    {
        const QStringList folders = profilesAsTheyAreFound();
        const SmallDisk disk(profilesRootPath() + u'/' + folders.first(), 10, 16);
        GAMEPAD_NEED_MOUNTED(disk);
        writeMeta(folders.first(), {});
        for (const QString &folder : folders)
            writeBelowRoot(folder + u"/configActionGamepad.json"_s, staleMapping);
        const QByteArray task = "{'ref':'G','args':{'text':'" + QByteArray(64 * 1024, 'x') + "'}}";
        refreshMappings(profilesRootPath(), array("[{'name':'B','tasks':[" + task + "]}]"));
        const QJsonArray refreshed = array("[{'action':'B','dst':[" + task + "]}]");
        QVERIFY(bridgesOf(mappingIn(folders.first())) != refreshed);
        for (const QString &folder : folders.sliced(1))
            QCOMPARE(bridgesOf(mappingIn(folder)), refreshed);
    }

    void aHostileConfigReachesNothingOutsideTheFolder()
    {
        const QString outside = writeBelowRoot(u"outside.json"_s, staleMapping);
        writeMeta(u"one"_s, {{u"config"_s, u" ../outside.json "_s}});
        writeMeta(u"two"_s, {{u"config"_s, outside}});
        refreshMappings(profilesRootPath(), actions());
        QCOMPARE(contentOf(outside), staleMapping);
    }

#ifdef Q_OS_UNIX
    void aPipeDoesNotKeepTheHostWaiting()
    {
        writeMeta(u"one"_s, {});
        writeBelowRoot(u"two/other"_s);
        for (const QString &path : {u"/one/configActionGamepad.json"_s, u"/two/meta.json"_s})
            QCOMPARE(mkfifo(QFile::encodeName(profilesRootPath() + path).constData(), 0600), 0);
        refreshMappings(profilesRootPath(), actions());
        QVERIFY(readMappingFile(profilesRootPath() + u"/two/meta.json"_s, nullptr, nullptr).isEmpty());
    }
#endif

private:
    /// Three profiles without mappings, in the order in which their folders are walked.
    static QStringList profilesAsTheyAreFound()
    {
        for (const QString &folder : {u"a"_s, u"b"_s, u"c"_s})
            writeMeta(folder, {});
        return QDir(profilesRootPath()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    }

    static QString mappingIn(const QString &folder)
    {
        return profilesRootPath() + u'/' + folder + u"/configActionGamepad.json"_s;
    }

    static QJsonArray actions() { return array("[{'name':'B','tasks':[{'ref':'G'}]}]"); }
};

GAMEPAD_TEST_MAIN(TestProfileMapping)
#include "tst_profilemapping.moc"
