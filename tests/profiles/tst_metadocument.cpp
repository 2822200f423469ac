// SPDX-License-Identifier: MIT
#include "metadocument.h"

#include "testmain.h"

#include <QtCore/QJsonArray>
#include <QtCore/QTimeZone>

using namespace Qt::StringLiterals;

namespace
{
const QString someId = u"0f0e0d0c-0b0a-4908-8706-050403020100"_s;

QJsonObject completeMeta()
{
    return {
        {u"type"_s, u"GamepadDefinderMeta"_s},
        {u"version"_s, 7},
        {u"id"_s, someId},
        {u"name"_s, u"Mon pad"_s},
        {u"image"_s, u"photo.jpg"_s},
        {u"overlayFile"_s, u"layer.json"_s},
        {u"config"_s, u"other.json"_s},
        {u"deviceName"_s, u"Pad 3000"_s},
    };
}

MetaDocument completeRead()
{
    return {.id = QUuid(someId),
            .name = u"Mon pad"_s,
            .image = u"photo.jpg"_s,
            .overlayFile = u"layer.json"_s,
            .deviceName = u"Pad 3000"_s};
}

QJsonObject with(const QString &key, const QJsonValue &value)
{
    QJsonObject json = completeMeta();
    json[key] = value;
    return json;
}

GamepadEntry entry()
{
    GamepadEntry result;
    result.id = QUuid(someId);
    result.name = u"Mon pad"_s;
    result.dirPath = u"/root/x"_s;
    result.imagePath = u"/root/x/photo.jpg"_s;
    result.overlayPath = u"/root/x/layer.json"_s;
    result.deviceName = u"Pad 3000"_s;
    return result;
}

const QDateTime noon(QDate(2026, 3, 4), QTime(12, 30, 15, 999), QTimeZone::UTC);
} // namespace

class TestMetaDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void allThatIsToldIsRead() { QCOMPARE(readMetaDocument(completeMeta()), completeRead()); }

    void whatIsNotToldTakesItsDefault()
    {
        const QJsonObject least{{u"type"_s, u"GamepadDefinderMeta"_s}, {u"id"_s, someId}};
        QCOMPARE(readMetaDocument(least), (MetaDocument{.id = QUuid(someId),
                                                        .name = u"Gamepad"_s,
                                                        .image = u"image.png"_s,
                                                        .overlayFile = u"overlay.json"_s,
                                                        .deviceName = {}}));
    }

    void anotherTypeOrNoIdIsRefused_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("value");
        const QList<QJsonValue> wrong{QJsonValue::Undefined, QJsonValue::Null, 1,    true, QJsonArray{someId},
                                      QJsonObject{},         u"rubbish"_s,     u""_s};
        for (const QString &key : {u"type"_s, u"id"_s}) {
            for (int i = 0; i < wrong.size(); ++i)
                QTest::addRow("%s %d", qPrintable(key), i) << key << wrong.at(i);
        }
        QTest::newRow("type in lower case") << u"type"_s << QJsonValue(u"gamepaddefindermeta"_s);
        QTest::newRow("type of a travelling one") << u"type"_s << QJsonValue(u"VelorGamepad"_s);
        QTest::newRow("null id") << u"id"_s << QJsonValue(u"00000000-0000-0000-0000-000000000000"_s);
    }

    void anotherTypeOrNoIdIsRefused()
    {
        QFETCH(const QString, key);
        QFETCH(const QJsonValue, value);
        QVERIFY(!readMetaDocument(with(key, value)));
        QVERIFY(!readMetaDocument({}));
    }

    void anIdMayHaveBraces()
    {
        QCOMPARE(readMetaDocument(with(u"id"_s, u'{' + someId + u'}')), completeRead());
        QCOMPARE(readMetaDocument(with(u"id"_s, someId.toUpper())), completeRead());
    }

    void aWrongTypeTakesTheDefault_data()
    {
        QTest::addColumn<QJsonValue>("value");
        QTest::newRow("null") << QJsonValue(QJsonValue::Null);
        QTest::newRow("number") << QJsonValue(12.5);
        QTest::newRow("bool") << QJsonValue(true);
        QTest::newRow("array") << QJsonValue(QJsonArray{u"x"_s});
        QTest::newRow("object") << QJsonValue(QJsonObject{{u"x"_s, 1}});
    }

    void aWrongTypeTakesTheDefault()
    {
        QFETCH(const QJsonValue, value);
        MetaDocument expected = completeRead();
        expected.name = u"Gamepad"_s;
        QCOMPARE(readMetaDocument(with(u"name"_s, value)), expected);
        expected = completeRead();
        expected.image = u"image.png"_s;
        QCOMPARE(readMetaDocument(with(u"image"_s, value)), expected);
        expected = completeRead();
        expected.overlayFile = u"overlay.json"_s;
        QCOMPARE(readMetaDocument(with(u"overlayFile"_s, value)), expected);
        expected = completeRead();
        expected.deviceName.clear();
        QCOMPARE(readMetaDocument(with(u"deviceName"_s, value)), expected);
        for (const QString &key : {u"version"_s, u"config"_s, u"createdAt"_s, u"modifiedAt"_s})
            QCOMPARE(readMetaDocument(with(key, value)), completeRead());
    }

    void aNameStandsAsItIs_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("blanks") << u"  "_s;
        QTest::newRow("path") << u"../../x"_s;
        QTest::newRow("10,000 characters") << QString(10'000, u'é');
    }

    void aNameStandsAsItIs()
    {
        QFETCH(const QString, name);
        const auto read = readMetaDocument(with(u"name"_s, name));
        QVERIFY(read);
        QCOMPARE(read->name, name);
    }

    void aFileNameThatLeavesTheFolderTakesTheDefault_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : {u""_s, u"."_s, u".."_s, u"../image.png"_s, u"a/b"_s, u"/etc/passwd"_s,
                                    u"a\\b"_s, u"..\\x"_s, u"C:\\x"_s, QString(u"a"_s + QChar(u'\0'))})
            QTest::addRow("\"%s\"", qPrintable(name)) << name;
    }

    void aFileNameThatLeavesTheFolderTakesTheDefault()
    {
        QFETCH(const QString, name);
        MetaDocument expected = completeRead();
        expected.image = u"image.png"_s;
        QCOMPARE(readMetaDocument(with(u"image"_s, name)), expected);
        expected = completeRead();
        expected.overlayFile = u"overlay.json"_s;
        QCOMPARE(readMetaDocument(with(u"overlayFile"_s, name)), expected);
    }

    void aRewrittenDocumentHasNineKeys()
    {
        // These are the writer's own, whatever the document named that was read.
        QJsonObject expected = with(u"version"_s, 2);
        expected[u"config"_s] = u"configActionGamepad.json"_s;
        expected[u"modifiedAt"_s] = u"2026-03-04T12:30:15Z"_s;
        QCOMPARE(metaDocumentJson(entry(), noon), expected);
        QCOMPARE(expected.size(), 9);
    }

    void aNewDocumentHasTheDayOfItsMakingToo()
    {
        QJsonObject expected = metaDocumentJson(entry(), noon);
        expected[u"createdAt"_s] = u"2026-03-04T12:30:15Z"_s;
        QCOMPARE(newMetaDocumentJson(entry(), noon), expected);
        QCOMPARE(expected.size(), 10);
    }

    void anUnlinkedProfileHasAnEmptyDeviceName()
    {
        GamepadEntry unlinked = entry();
        unlinked.deviceName = QString();
        QCOMPARE(metaDocumentJson(unlinked, noon)["deviceName"_L1], QJsonValue(u""_s));
    }

    void whatIsWrittenIsReadBack()
    {
        QCOMPARE(readMetaDocument(metaDocumentJson(entry(), noon)), completeRead());
        QCOMPARE(readMetaDocument(newMetaDocumentJson(entry(), noon)), completeRead());
    }
};

GAMEPAD_TEST_MAIN(TestMetaDocument)
#include "tst_metadocument.moc"
