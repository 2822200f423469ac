// SPDX-License-Identifier: MIT
#include "jsonfiles.h"

#include "exchangefiles.h"
#include "machine.h"
#include "smalldisk.h"
#include "testmain.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace
{
QString below(const QString &name)
{
    return temporaryHome() + "/json/"_L1 + name;
}

QString cannotOpen(const QString &path)
{
    return u"Impossible dâ€™ouvrir %1"_s.arg(path);
}

QString cannotWrite(const QString &path)
{
    return u"Impossible dâ€™Ã©crire %1"_s.arg(path);
}

QString incomplete(const QString &path)
{
    return u"Ã‰criture incomplÃ¨te dans %1"_s.arg(path);
}

QString pipe()
{
    QString path = below(u"pipe"_s);
#ifdef Q_OS_UNIX
    ::mkfifo(QFile::encodeName(path).constData(), 0600);
#endif
    return path;
}

/// Where no file can be opened, neither to read nor to write.
void addUnopenable()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("folder") << temporaryHome();
    QTest::newRow("below no folder") << below(u"nowhere/file.json"_s);
    QTest::newRow("no name") << QString();
    QTest::newRow("percent signs") << below(u"%1/%2.json"_s);
#ifdef Q_OS_UNIX
    QTest::newRow("pipe") << pipe();
#endif
}
} // namespace

class TestJsonFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(QDir().mkpath(below(u"."_s))); }
    void init() { failOnUnexpectedWarnings(); }

    void anObjectIsRead()
    {
        const QString path = below(u"é.json"_s);
        write(path, "{\"a\": [1, 2]}");
        bool ok = false;
        QString error;
        QCOMPARE(readJsonFile(path, &ok, &error), object("{'a':[1,2]}"));
        QVERIFY(ok);
        QVERIFY(error.isEmpty());
        QCOMPARE(readJsonFile(path, nullptr, nullptr), object("{'a':[1,2]}"));
    }

    void whatDoesNotOpenIsSaid_data()
    {
        addUnopenable();
        QTest::newRow("missing") << below(u"missing.json"_s);
#ifdef Q_OS_UNIX
        QTest::newRow("device without an end") << u"/dev/zero"_s;
#endif
    }

    void whatDoesNotOpenIsSaid()
    {
        QFETCH(const QString, path);
        bool ok = true;
        QString error;
        QCOMPARE(readJsonFile(path, &ok, &error), QJsonObject());
        QVERIFY(!ok);
        QCOMPARE(error, cannotOpen(path));
        QCOMPARE(readJsonFile(path, nullptr, nullptr), QJsonObject());
    }

    void whatIsNoObjectIsSaid_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("reason");
        const auto reasonOf = [](const QByteArray &text) {
            QJsonParseError error;
            QJsonDocument::fromJson(text, &error);
            return error.errorString();
        };
        QTest::newRow("empty") << QByteArray() << reasonOf({});
        QTest::newRow("broken") << QByteArray("{\"a\":") << reasonOf("{\"a\":");
        QTest::newRow("array") << QByteArray("[{}]") << u"no error occurred"_s;
        QTest::newRow("binary") << QByteArray("\x89PNG\0\r\n", 7) << reasonOf(QByteArray("\x89PNG\0\r\n", 7));
        QTest::newRow("deeper than the parser goes")
            << QByteArray(100'000, '[') << reasonOf(QByteArray(100'000, '['));
    }

    void whatIsNoObjectIsSaid()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QString, reason);
        const QString path = below(u"%2 bad.json"_s);
        write(path, text);
        bool ok = true;
        QString error;
        QCOMPARE(readJsonFile(path, &ok, &error), QJsonObject());
        QVERIFY(!ok);
        QCOMPARE(error, "JSON invalide dans "_L1 + path + " ("_L1 + reason + u')');
        QVERIFY(readJsonFile(path, nullptr, nullptr).isEmpty());
    }

    void aDocumentOfHundredMegabytesIsRead()
    {
        const QString path = below(u"long.json"_s);
        constexpr int length = 100 * 1024 * 1024;
        write(path, "{\"a\":\"" + QByteArray(length, 'x') + "\"}");
        bool ok = false;
        const QJsonObject read = readJsonFile(path, &ok, nullptr);
        QVERIFY(ok);
        QCOMPARE(read["a"_L1].toString().size(), length);
        QVERIFY(QFile::remove(path));
    }

    // Nothing of it is read: it would be the host's memory.
    void aFileOfGigabytesCountsAsOneThatDoesNotOpen()
    {
        const QString path = below(u"sparse.json"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(2LL * 1024 * 1024 * 1024));
        file.close();
        bool ok = true;
        QString error;
        QVERIFY(readJsonFile(path, &ok, &error).isEmpty());
        QVERIFY(!ok);
        QCOMPARE(error, cannotOpen(path));
        QVERIFY(QFile::remove(path));
    }

    void anObjectIsWrittenOverTheFile_data()
    {
        QTest::addColumn<bool>("indented");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("indented") << true << QByteArray("{\n    \"a\": 1\n}\n");
        QTest::newRow("compact") << false << QByteArray("{\"a\":1}");
    }

    void anObjectIsWrittenOverTheFile()
    {
        QFETCH(const bool, indented);
        const QString path = below(u"written.json"_s);
        write(path, QByteArray(1000, ' '));
        QString error;
        QVERIFY(writeJsonFile(path, object("{'a':1}"), &error, indented));
        QTEST(bytesIn(path), "text");
        QVERIFY(error.isEmpty());
        QVERIFY(writeJsonFile(path, object("{'a':1}"), nullptr, indented));
    }

    void bytesAreWrittenOverTheFile()
    {
        const QString path = below(u"bytes"_s);
        write(path, QByteArray(1000, ' '));
        QString error;
        QVERIFY(writeBytesFile(path, QByteArray("a\0b", 3), &error));
        QCOMPARE(bytesIn(path), QByteArray("a\0b", 3));
        QVERIFY(error.isEmpty());
        QVERIFY(writeBytesFile(path, {}, nullptr));
        QCOMPARE(bytesIn(path), QByteArray());
    }

    void whatCannotBeWrittenIsSaid_data() { addUnopenable(); }

    void whatCannotBeWrittenIsSaid()
    {
        QFETCH(const QString, path);
        QString error;
        QVERIFY(!writeJsonFile(path, object("{'a':1}"), &error, true));
        QCOMPARE(error, cannotWrite(path));
        error.clear();
        QVERIFY(!writeBytesFile(path, "a", &error));
        QCOMPARE(error, cannotWrite(path));
        QVERIFY(!writeJsonFile(path, {}, nullptr, true));
        QVERIFY(!writeBytesFile(path, "a", nullptr));
    }

    void onlyBytesAreCountedOnAFullDisk()
    {
        GAMEPAD_NEED_FULL_DEVICE();
        const QString full = fullDevice();
        QString error;
        QVERIFY(writeJsonFile(full, object("{'a':1}"), &error, true));
        QVERIFY(error.isEmpty());
        QVERIFY(!writeBytesFile(full, "a", &error));
        QCOMPARE(error, incomplete(full));
        QVERIFY(!writeBytesFile(full, "a", nullptr));
    }

    void whatFittedOnTheDiskStays()
    {
        const QString folder = below(u"disk"_s);
        const SmallDisk disk(folder, 10, 64);
        GAMEPAD_NEED_MOUNTED(disk);
        const QString path = folder + "/bytes"_L1;
        QString error;
        QVERIFY(!writeBytesFile(path, QByteArray(100'000, 'x'), &error));
        QCOMPARE(error, incomplete(path));
        const QByteArray rest = bytesIn(path);
        QVERIFY(rest.size() > 0 && rest.size() <= 65536);
        QCOMPARE(rest.count('x'), rest.size());
    }
};

GAMEPAD_TEST_MAIN(TestJsonFiles)
#include "tst_jsonfiles.moc"
