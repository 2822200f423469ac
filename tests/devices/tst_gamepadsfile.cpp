// SPDX-License-Identifier: MIT
#include "gamepadsfile.h"

#include "machine.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace
{
QString location()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("a test file cannot be written");
}

void putPipe(const QString &path)
{
    if (mkfifo(QFile::encodeName(path).constData(), 0600) != 0)
        qFatal("a pipe cannot be made");
}
} // namespace

class TestGamepadsFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void liesBelowTheContext()
    {
        QCOMPARE(gamepadsFilePath(u"host"_s), location() + u"/host/VelorCom/gamepads.json"_s);
        QCOMPARE(gamepadsFilePath(u"a/b"_s), location() + u"/a/b/VelorCom/gamepads.json"_s);
    }

    void foldersAreMadeSoThatAFirstRunPersists()
    {
        QVERIFY(!QFileInfo::exists(location()));
        const QString path = gamepadsFilePath(u"host"_s);
        QVERIFY(QFileInfo(location() + u"/host/VelorCom"_s).isDir());
        QVERIFY(!QFileInfo::exists(path));
        QVERIFY(writeGamepadsFile(path, "{}"));
        QCOMPARE(readGamepadsFile(path), QByteArray("{}"));
    }

    void anyContextGivesAFileThatCanBeWritten_data()
    {
        QTest::addColumn<QString>("context");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("absolute") << u"/absolute/context"_s;
        QTest::newRow("dot") << u"."_s;
        QTest::newRow("upwards") << u"../.."_s;
        QTest::newRow("spaces") << u" a b "_s;
        QTest::newRow("not ASCII") << u"contexte é 漢 🎮"_s;
        QTest::newRow("half a character") << u"a"_s + QChar(0xD800);
    }
    void anyContextGivesAFileThatCanBeWritten()
    {
        QFETCH(const QString, context);
        const QString path = gamepadsFilePath(context);
        QVERIFY(writeGamepadsFile(path, "{}"));
        QVERIFY(QDir::cleanPath(path).startsWith(temporaryHome()));
        QVERIFY(!QFileInfo::exists(u"/absolute"_s));
        QCOMPARE(readGamepadsFile(path), QByteArray("{}"));
    }

    void aContextThatNoDiskTakesIsSilent_data()
    {
        QTest::addColumn<QString>("context");
        QTest::newRow("too long") << QString(5000, u'x');
        QTest::newRow("end of text within") << u"a"_s + QChar::Null + u'b';
    }
    void aContextThatNoDiskTakesIsSilent()
    {
        QFETCH(const QString, context);
        const QString path = gamepadsFilePath(context);
        QVERIFY(!QFileInfo::exists(location() + u"/a"_s));
        QVERIFY(!writeGamepadsFile(path, "{}"));
        QCOMPARE(readGamepadsFile(path), QByteArray());
    }

    void aMissingFileReadsAsNothing()
    {
        QCOMPARE(readGamepadsFile(gamepadsFilePath(u"host"_s)), QByteArray());
    }

    void aFolderInItsPlaceReadsAsNothingAndIsLeftAlone()
    {
        const QString path = gamepadsFilePath(u"host"_s);
        QVERIFY(QDir().mkpath(path + u"/inside"_s));
        QCOMPARE(readGamepadsFile(path), QByteArray());
        QVERIFY(!writeGamepadsFile(path, "{}"));
        QVERIFY(QFileInfo(path + u"/inside"_s).isDir());
    }

    void aFileThatIsTooLargeReadsAsNothing()
    {
        const QString path = gamepadsFilePath(u"host"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.resize(512LL * 1024 * 1024 + 1)); // takes no room on the disk
        file.close();
        QVERIFY(readGamepadsFile(path).isEmpty());
    }

    // Whoever opens a pipe waits for the one at its other end.
    void aPipeInItsPlaceReadsAsNothingAndIsReplaced()
    {
        const QString path = gamepadsFilePath(u"host"_s);
        putPipe(path);
        QCOMPARE(readGamepadsFile(path), QByteArray());
        QVERIFY(writeGamepadsFile(path, "{}"));
        QCOMPARE(readGamepadsFile(path), QByteArray("{}"));
    }

    void aPipeInTheTemporaryFilesPlaceIsReplaced()
    {
        const QString path = gamepadsFilePath(u"host"_s);
        put(path, "old");
        putPipe(path + u".tmp"_s);
        QVERIFY(writeGamepadsFile(path, "{}"));
        QCOMPARE(readGamepadsFile(path), QByteArray("{}"));
        QVERIFY(!QFileInfo::exists(path + u".tmp"_s));
    }

    void writingReplacesTheFileWholeAndLeavesNoTemporaryOne()
    {
        const QString path = gamepadsFilePath(u"host"_s);
        put(path, QByteArray(100, 'x'));
        QVERIFY(writeGamepadsFile(path, "{}"));
        QCOMPARE(readGamepadsFile(path), QByteArray("{}"));
        QCOMPARE(QFileInfo(path).dir().entryList(QDir::Files), QStringList{u"gamepads.json"_s});
    }

    void aStaleTemporaryFileIsWrittenOver()
    {
        const QString path = gamepadsFilePath(u"host"_s);
        put(path + u".tmp"_s, QByteArray(100, 'x'));
        QVERIFY(writeGamepadsFile(path, "{}"));
        QCOMPARE(readGamepadsFile(path), QByteArray("{}"));
    }

    void theOldFileStaysWhereTheTemporaryOneCannotBeOpened()
    {
        const QString path = gamepadsFilePath(u"host"_s);
        put(path, "old");
        QVERIFY(QDir().mkpath(path + u".tmp"_s));
        QVERIFY(!writeGamepadsFile(path, "{}"));
        QCOMPARE(readGamepadsFile(path), QByteArray("old"));
    }

    void theOldFileStaysWhereTheDiskIsFull_data()
    {
        QTest::addColumn<qsizetype>("size");
        QTest::newRow("refused when flushed") << qsizetype(2);
        QTest::newRow("refused when written") << qsizetype(10'000'000);
    }
    void theOldFileStaysWhereTheDiskIsFull()
    {
        QFETCH(const qsizetype, size);
        GAMEPAD_NEED_FULL_DEVICE();
        const QString path = gamepadsFilePath(u"host"_s);
        put(path, "old");
        QVERIFY(QFile::link(fullDevice(), path + u".tmp"_s));
        QVERIFY(!writeGamepadsFile(path, QByteArray(size, 'x')));
        QCOMPARE(readGamepadsFile(path), QByteArray("old"));
        QVERIFY(!QFileInfo(path + u".tmp"_s).isSymLink());
    }
};

GAMEPAD_TEST_MAIN(TestGamepadsFile)
#include "tst_gamepadsfile.moc"
