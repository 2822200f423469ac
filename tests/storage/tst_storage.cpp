// SPDX-License-Identifier: MIT
#include "machine.h"
#include "makepath.h"
#include "openfile.h"
#include "plainfilename.h"
#include "profilesroot.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QStandardPaths>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

class TestStorage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void profilesLieBelowTheApplicationsData()
    {
        const QString location = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        QVERIFY(location.startsWith(temporaryHome()));
        QCOMPARE(profilesBasePath(), location);
        QCOMPARE(profilesRootPath(), location + u"/Gamepads"_s);
    }

    void askingForTheRootCreatesNothing()
    {
        clearTemporaryHome();
        QVERIFY(!QDir(profilesRootPath()).exists());
        QVERIFY(!QDir(profilesBasePath()).exists());
    }

    void aPathIsMadeWithAllThatLiesAboveIt()
    {
        const QString path = temporaryHome() + u"/made/été/x"_s;
        QVERIFY(!QDir(path).exists());
        QVERIFY(makePath(path));
        QVERIFY(QDir(path).exists());
        QVERIFY(makePath(path));
        QVERIFY(makePath(path + u"/../y/"_s));
        QVERIFY(QDir(temporaryHome() + u"/made/été/y"_s).exists());
    }

    void aPathThroughAFileIsNotMade()
    {
        QFile file(temporaryHome() + u"/file"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(!makePath(temporaryHome() + u"/file"_s));
        QVERIFY(!makePath(temporaryHome() + u"/file/below"_s));
        QVERIFY(!makePath({}));
    }

    void aNameThatNoFileCanHaveIsRefusedWithoutATrace()
    {
        QVERIFY(!makePath(temporaryHome() + u"/cut\0off"_s));
        QVERIFY(!QDir(temporaryHome() + u"/cut"_s).exists());
        // Text that is no valid UTF-16 must not throw; whether it becomes a folder is the system's matter.
        const QString halfASurrogate = temporaryHome() + u"/half"_s + QChar(0xd800);
        const bool made = makePath(halfASurrogate);
        QCOMPARE(made, QDir(halfASurrogate).exists());
    }

    void aFileIsWrittenFromItsStartAndRead()
    {
        QFile file(temporaryHome() + u"/document"_s);
        QVERIFY(!openToRead(file));
        QVERIFY(openToWrite(file));
        QCOMPARE(file.write("longer text"), 11);
        file.close();
        QVERIFY(openToWrite(file));
        QCOMPARE(file.write("short"), 5);
        file.close();
        QVERIFY(openToRead(file));
        QCOMPARE(file.readAll(), "short");
    }

    void aFolderAndAFileWithoutANameDoNotOpen()
    {
        QFile folder(temporaryHome());
        QVERIFY(!openToRead(folder));
        QVERIFY(!openToWrite(folder));
        QFile nameless;
        QVERIFY(!openToRead(nameless));
        QVERIFY(!openToWrite(nameless));
    }

    // Nothing of it is read: it would be the host's memory.
    void aFileThatIsTooMuchForAHostDoesNotOpen()
    {
        QFile file(temporaryHome() + u"/sparse"_s);
        constexpr qint64 most = 512LL * 1024 * 1024;
        for (const qint64 size : {most, most + 1}) {
            QVERIFY(openToWrite(file) && file.resize(size));
            file.close();
            QCOMPARE(openToRead(file), size == most);
            file.close();
        }
        QVERIFY(file.remove());
    }

#ifdef Q_OS_UNIX
    void aPipeDoesNotKeepTheHostWaiting()
    {
        QFile pipe(temporaryHome() + u"/pipe"_s);
        QCOMPARE(mkfifo(QFile::encodeName(pipe.fileName()).constData(), 0600), 0);
        QVERIFY(!openToRead(pipe));
        QVERIFY(!openToWrite(pipe));
    }

    void aFullDiskIsHeardOf()
    {
        GAMEPAD_NEED_FULL_DEVICE();
        QFile full(fullDevice());
        QVERIFY(openToWrite(full));
        QVERIFY(full.write("text") < 4);
    }
#endif

    void aPlainFileNameStaysInItsFolder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("plain");
        QTest::newRow("a file") << u"image.png"_s << true;
        QTest::newRow("hidden") << u".hidden"_s << true;
        QTest::newRow("three dots") << u"..."_s << true;
        QTest::newRow("spaces and accents") << u"ma manette à moi.json"_s << true;
        QTest::newRow("empty") << u""_s << false;
        QTest::newRow("this folder") << u"."_s << false;
        QTest::newRow("folder above") << u".."_s << false;
        QTest::newRow("path") << u"a/b.json"_s << false;
        QTest::newRow("path above") << u"../other/meta.json"_s << false;
        QTest::newRow("backslash") << u"a\\b.json"_s << false;
        QTest::newRow("absolute") << u"/etc/passwd"_s << false;
        QTest::newRow("resource") << u":/icon"_s << false;
        QTest::newRow("closing separator") << u"a/"_s << false;
        QTest::newRow("NUL inside") << u"a\0b"_s << false;
    }
    void aPlainFileNameStaysInItsFolder()
    {
        QFETCH(const QString, name);
        QTEST(isPlainFileName(name), "plain");
    }
};

GAMEPAD_TEST_MAIN(TestStorage)
#include "tst_storage.moc"
