// SPDX-License-Identifier: MIT
#include "mappingfile.h"

#include "jsontext.h"
#include "machine.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

using namespace Qt::StringLiterals;

namespace
{
QString below(const QString &name)
{
    return temporaryHome() + u'/' + name;
}

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}
} // namespace

class TestMappingFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void anyDocumentIsRead_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("object") << QByteArray("{\"bridges\": []}");
        QTest::newRow("array") << QByteArray("[1, 2]");
    }

    void anyDocumentIsRead()
    {
        QFETCH(const QByteArray, text);
        const QString path = below(u"read é.json"_s);
        write(path, text);
        QJsonDocument document;
        QString error;
        QVERIFY(loadMappingFile(path, &document, &error));
        QCOMPARE(document, QJsonDocument::fromJson(text));
        QVERIFY(error.isEmpty());
    }

    void whatCannotBeOpenedIsSaid_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("missing") << below(u"missing.json"_s);
        QTest::newRow("folder") << temporaryHome();
        QTest::newRow("no name") << QString();
        QTest::newRow("percent signs") << below(u"%1 %2.json"_s);
    }

    void whatCannotBeOpenedIsSaid()
    {
        QFETCH(const QString, path);
        QJsonDocument document(object("{'kept':1}"));
        QString error;
        QVERIFY(!loadMappingFile(path, &document, &error));
        QCOMPARE(error, "Cannot open "_L1 + path);
        QCOMPARE(document.object(), object("{'kept':1}"));
    }

    void whatIsNoJsonIsSaid_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut short") << QByteArray("{\"bridges\": [");
        QTest::newRow("bare value") << QByteArray("7 7");
        QTest::newRow("number beyond double") << QByteArray("[1e999]");
        QTest::newRow("nested too deep") << QByteArray(5000, '[') + QByteArray(5000, ']');
    }

    void whatIsNoJsonIsSaid()
    {
        QFETCH(const QByteArray, text);
        const QString path = below(u"broken.json"_s);
        write(path, text);
        QJsonParseError reason;
        QJsonDocument::fromJson(text, &reason);
        QVERIFY(reason.error != QJsonParseError::NoError);

        QJsonDocument document(object("{'kept':1}"));
        QString error;
        QVERIFY(!loadMappingFile(path, &document, &error));
        QCOMPARE(error, QString(u"Invalid JSON in "_s + path + u" ("_s + reason.errorString() + u')'));
        QCOMPARE(document.object(), object("{'kept':1}"));
    }

    void aDocumentIsWrittenIndented()
    {
        const QString path = below(u"written.json"_s);
        write(path, QByteArray(10000, 'x'));
        const QJsonObject document = object("{'bridges':[{'dst':[]}],'timers':[]}");
        QString error;
        QVERIFY(writeMappingFile(path, document, &error));
        QVERIFY(error.isEmpty());
        QCOMPARE(contentOf(path), QJsonDocument(document).toJson(QJsonDocument::Indented));
    }

    void whatCannotBeWrittenIsSaid_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("no folder") << below(u"missing/map.json"_s);
        QTest::newRow("folder") << temporaryHome();
        QTest::newRow("no name") << QString();
    }

    void whatCannotBeWrittenIsSaid()
    {
        QFETCH(const QString, path);
        QString error;
        QVERIFY(!writeMappingFile(path, object("{'a':1}"), &error));
        QCOMPARE(error, "Cannot write "_L1 + path);
    }

    void aFullDiskIsSaid()
    {
        GAMEPAD_NEED_FULL_DEVICE();
        QString error;
        QVERIFY(!writeMappingFile(fullDevice(), object("{'a':1}"), &error));
        QCOMPARE(error, u"Write failed for /dev/full"_s);
    }

    void theReasonNeedNotBeAsked()
    {
        QJsonDocument document;
        QVERIFY(!loadMappingFile(below(u"missing.json"_s), &document, nullptr));
        QVERIFY(!writeMappingFile(below(u"missing/map.json"_s), {}, nullptr));
    }
};

GAMEPAD_TEST_MAIN(TestMappingFile)
#include "tst_mappingfile.moc"
