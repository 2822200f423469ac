// SPDX-License-Identifier: MIT
#include "systemconfig.h"

#include "testmain.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QJsonObject>
#include <QtCore/QScopeGuard>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

class TestSystemConfig : public QObject
{
    Q_OBJECT

    QTemporaryDir m_installation;
    QString m_before;
    int m_writes = 0;

    /// Writes `text` to the path and gives the file a time of its own, as clocks are coarse.
    void write(const QString &path, const QByteArray &text)
    {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
        file.close();
        setTime(path, ++m_writes);
    }

    static void setTime(const QString &path, int second)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(1'700'000'000 + second),
                                 QFileDevice::FileModificationTime));
    }

    static QString usersFile()
    {
        return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
               u"/system/systemConfig.json"_s;
    }

    [[nodiscard]] QString installedFile() const
    {
        return m_installation.path() + u"/configuration/system/systemConfig.json"_s;
    }

    /// The program's folder and the three above it, which no other program shares.
    static QStringList programFolders()
    {
        QStringList folders{QCoreApplication::applicationDirPath()};
        while (folders.size() < 4)
            folders.append(QFileInfo(folders.last()).path());
        return folders;
    }

    static void clearProgramFolders()
    {
        const QStringList folders = programFolders();
        for (const QString &folder : folders)
            QVERIFY(QDir(folder + u"/configuration"_s).removeRecursively());
    }

    static void expectWarning(const QString &path)
    {
        static QByteArray text; // read while the message is awaited
        text = u"[Gamepad] Failed to read systemConfig.json: \"%1\""_s.arg(path).toUtf8();
        QTest::ignoreMessage(QtWarningMsg, text.constData());
    }

private Q_SLOTS:
    void initTestCase()
    {
        // Only what lies there is this test's to remove: elsewhere it would be somebody's installation.
        QCOMPARE(QFileInfo(programFolders().last()).fileName(), u"tst_systemconfig.installation"_s);
    }
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
        m_before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_installation.path()));
        QDir(m_installation.path() + u"/configuration"_s).removeRecursively();
        clearProgramFolders(); // an aborted run leaves its files there
    }
    void cleanup() { QVERIFY(QDir::setCurrent(m_before)); }

    void withoutAFileThereAreNoFunctionsAndNoMessage()
    {
        QCOMPARE(findSystemConfigPath(), QString());
        QCOMPARE(loadSystemConfigRefs(), QJsonArray());
    }

    void theCurrentFolderIsSearched()
    {
        write(installedFile(), R"({"refs": ["a"]})");
        QCOMPARE(QFileInfo(findSystemConfigPath()).canonicalFilePath(),
                 QFileInfo(installedFile()).canonicalFilePath());
        QCOMPARE(loadSystemConfigRefs(), QJsonArray{u"a"_s});
    }

    void theUsersFileWinsOverAnInstalledOne()
    {
        write(installedFile(), R"(["installed"])");
        write(usersFile(), R"(["users"])");
        QCOMPARE(findSystemConfigPath(), QDir::cleanPath(usersFile()));
        QCOMPARE(loadSystemConfigRefs(), QJsonArray{u"users"_s});
    }

    void theProgramsFoldersAreSearchedBeforeTheCurrentOne_data()
    {
        QTest::addColumn<int>("levelsUp");
        QTest::newRow("program's own") << 0;
        QTest::newRow("above it") << 1;
        QTest::newRow("two above it") << 2;
        QTest::newRow("three above it") << 3;
    }
    void theProgramsFoldersAreSearchedBeforeTheCurrentOne()
    {
        QFETCH(const int, levelsUp);
        const QStringList folders = programFolders().mid(levelsUp);
        const auto tidy = qScopeGuard([] { clearProgramFolders(); });
        write(installedFile(), "[]");
        for (const QString &folder : folders)
            write(folder + u"/configuration/system/systemConfig.json"_s, "[]");
        // Clean, too: the folder above is looked up as the program's "..".
        QCOMPARE(findSystemConfigPath(), folders.first() + u"/configuration/system/systemConfig.json"_s);
    }

    void aTouchedFileIsReadAgainAndAnUnchangedOneIsNotOpened()
    {
        write(usersFile(), R"(["first"])");
        QCOMPARE(loadSystemConfigRefs(), QJsonArray{u"first"_s});

        // Other content under the same time: only who opens the file sees it.
        const int writes = m_writes;
        write(usersFile(), R"(["second"])");
        setTime(usersFile(), writes);
        QCOMPARE(loadSystemConfigRefs(), QJsonArray{u"first"_s});

        setTime(usersFile(), writes + 1);
        QCOMPARE(loadSystemConfigRefs(), QJsonArray{u"second"_s});
    }

    void anotherPathOfTheSameTimeIsRead()
    {
        write(installedFile(), R"(["installed"])");
        QCOMPARE(loadSystemConfigRefs(), QJsonArray{u"installed"_s});
        write(usersFile(), R"(["users"])");
        setTime(usersFile(), m_writes - 1);
        QCOMPARE(loadSystemConfigRefs(), QJsonArray{u"users"_s});
    }

    void aDocumentWithoutAListIsEmptyAndRemembered()
    {
        write(usersFile(), R"({"other": ["a"]})");
        QCOMPARE(loadSystemConfigRefs(), QJsonArray());
        const int writes = m_writes;
        write(usersFile(), R"(["a"])");
        setTime(usersFile(), writes);
        QCOMPARE(loadSystemConfigRefs(), QJsonArray());
    }

    void aMalformedFileIsLoggedAndNotRemembered()
    {
        write(usersFile(), R"(["good"])");
        QCOMPARE(loadSystemConfigRefs(), QJsonArray{u"good"_s});
        const int good = m_writes;
        write(usersFile(), R"(["good")");
        for (int i = 0; i < 2; ++i) {
            expectWarning(usersFile());
            QCOMPARE(loadSystemConfigRefs(), QJsonArray());
        }
        setTime(usersFile(), good);
        QCOMPARE(loadSystemConfigRefs(), QJsonArray{u"good"_s});
    }

    void whatCannotBeReadIsLogged_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("Bonjour");
        QTest::newRow("invalid UTF-8") << QByteArray("[\"\xff\xfe\"]");
        QTest::newRow("10 MB of nesting") << QByteArray(10'000'000, '[');
    }
    void whatCannotBeReadIsLogged()
    {
        QFETCH(const QByteArray, text);
        write(usersFile(), text);
        expectWarning(usersFile());
        QCOMPARE(loadSystemConfigRefs(), QJsonArray());
    }

    void aFileThatIsTooMuchForAHostIsLogged()
    {
        write(usersFile(), "[]");
        QFile file(usersFile());
        QVERIFY(file.resize(2LL * 1024 * 1024 * 1024));
        expectWarning(usersFile());
        QCOMPARE(loadSystemConfigRefs(), QJsonArray());
        QVERIFY(file.remove());
    }

    void aFolderInPlaceOfTheFileIsLogged()
    {
        QVERIFY(QDir().mkpath(usersFile()));
        expectWarning(usersFile());
        QCOMPARE(loadSystemConfigRefs(), QJsonArray());
    }

#ifdef Q_OS_UNIX
    void aPipeInPlaceOfTheFileDoesNotKeepTheHostWaiting()
    {
        QVERIFY(QDir().mkpath(QFileInfo(usersFile()).path()));
        QCOMPARE(mkfifo(QFile::encodeName(usersFile()).constData(), 0600), 0);
        expectWarning(usersFile());
        QCOMPARE(loadSystemConfigRefs(), QJsonArray());
    }
#endif
};

GAMEPAD_TEST_MAIN(TestSystemConfig)
#include "tst_systemconfig.moc"
