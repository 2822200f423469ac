// SPDX-License-Identifier: MIT
#include "nocodedocument.h"
#include "testmain.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QObject>
#include <QtTest/QTest>

using namespace Qt::StringLiterals;

namespace
{
NoCodeDocument documentOf(const QByteArray &json)
{
    const QString path = temporaryHome() + "/document.json"_L1;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size())
        return {};
    file.close();
    return readNoCodeDocument(path);
}

QJsonArray tasks(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).array();
}

ValueBatch batch(const QStringList &keys, const QVariantList &values)
{
    return {
        .device = 1, .deviceType = u"gamepade"_s, .deviceId = 0, .catId = 1, .keys = keys, .values = values};
}

Bridge bridge(const QString &key)
{
    return {.deviceType = u"gamepade"_s, .deviceId = 0, .packetId = 1, .key = key, .action = {}, .tasks = {}};
}
} // namespace

class TestNoCodeDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aMissingFileSaysSo();
    void aBrokenFileSaysWhy();
    void anArrayIsNoDocument();
    void bridgesAreReadInOrder();
    void numbersMayBeTexts();
    void aPressFiresAReleaseDoesNot();
    void everyValueOfAnAxisFires();
    void keysCompareWithoutCase();
    void anotherDeviceDoesNotFire();
    void tasksReadAsCalls_data();
    void tasksReadAsCalls();
};

void TestNoCodeDocument::aMissingFileSaysSo()
{
    const NoCodeDocument document = readNoCodeDocument(temporaryHome() + "/nowhere.json"_L1);
    QCOMPARE(document.problem, u"not written yet"_s);
    QVERIFY(document.bridges.isEmpty());
}

void TestNoCodeDocument::aBrokenFileSaysWhy()
{
    QVERIFY(!documentOf("{\"bridges\": [").problem.isEmpty());
}

void TestNoCodeDocument::anArrayIsNoDocument()
{
    QCOMPARE(documentOf("[]").problem, u"not an object"_s);
}

void TestNoCodeDocument::bridgesAreReadInOrder()
{
    const NoCodeDocument document = documentOf(
        R"({"bridges": [
            {"action": "A", "src": {"deviceType": "gamepade", "deviceId": 3, "packetId": 2, "stringKey": "but_1"},
             "dst": [{"ref": "f"}]},
            7,
            {"src": {"stringKey": "joy_0"}}]})");
    QCOMPARE(document.problem, QString());
    QCOMPARE(document.bridges.size(), 3);
    QCOMPARE(document.bridges.at(0).action, u"A"_s);
    QCOMPARE(document.bridges.at(0).deviceId, 3);
    QCOMPARE(document.bridges.at(0).packetId, 2);
    QCOMPARE(document.bridges.at(0).tasks.size(), 1);
    QCOMPARE(document.bridges.at(1).key, QString());
    QCOMPARE(document.bridges.at(2).key, u"joy_0"_s);
}

void TestNoCodeDocument::numbersMayBeTexts()
{
    const NoCodeDocument document =
        documentOf(R"({"bridges": [{"src": {"deviceId": "0x10", "packetId": "2"}}]})");
    QCOMPARE(document.bridges.at(0).deviceId, 16);
    QCOMPARE(document.bridges.at(0).packetId, 2);
}

void TestNoCodeDocument::aPressFiresAReleaseDoesNot()
{
    QVERIFY(firesOn(bridge(u"but_3"_s), batch({u"joy_0"_s, u"but_3"_s}, {12.0, true})));
    QVERIFY(!firesOn(bridge(u"but_3"_s), batch({u"joy_0"_s, u"but_3"_s}, {12.0, false})));
    QVERIFY(!firesOn(bridge(u"but_3"_s), batch({u"but_30"_s}, {true})));
}

void TestNoCodeDocument::everyValueOfAnAxisFires()
{
    QVERIFY(firesOn(bridge(u"joy_0"_s), batch({u"joy_0"_s}, {0.0})));
    QVERIFY(firesOn(bridge(u"joy_0"_s), batch({u"joy_0"_s}, {-80.0})));
}

void TestNoCodeDocument::keysCompareWithoutCase()
{
    QVERIFY(firesOn(bridge(u"JOY_0"_s), batch({u"joy_0"_s}, {1.0})));
}

void TestNoCodeDocument::anotherDeviceDoesNotFire()
{
    const ValueBatch pressed = batch({u"but_3"_s}, {true});
    Bridge other = bridge(u"but_3"_s);
    other.deviceId = 1;
    QVERIFY(!firesOn(other, pressed));
    other = bridge(u"but_3"_s);
    other.packetId = 0;
    QVERIFY(!firesOn(other, pressed));
    other = bridge(u"but_3"_s);
    other.deviceType = u"gimbal"_s;
    QVERIFY(!firesOn(other, pressed));
    other.deviceType.clear();
    QVERIFY(firesOn(other, pressed));
}

void TestNoCodeDocument::tasksReadAsCalls_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QByteArray("[]") << u"nothing"_s;
    QTest::newRow("a call") << QByteArray(R"([{"ref": "fly", "args": {"speed": 5, "to": "B"}}])")
                            << u"fly(speed=5, to=B)"_s;
    QTest::newRow("two calls") << QByteArray(R"([{"ref": "a"}, {"ref": "b", "args": {"on": true}}])")
                               << u"a(); b(on=true)"_s;
    QTest::newRow("a condition") << QByteArray(R"([{"ref": "a", "when": "x > 1"}])") << u"a() when x > 1"_s;
    QTest::newRow("switched off") << QByteArray(R"([{"when": false}])") << u"nothing (no tasks)"_s;
    QTest::newRow("a bare action") << QByteArray(R"([{"action": "Old"}])") << u"Old()"_s;
    QTest::newRow("nested values") << QByteArray(R"([{"ref": "a", "args": {"p": [1, {"q": null}]}}])")
                                   << u"a(p=[1,{\"q\":null}])"_s;
}

void TestNoCodeDocument::tasksReadAsCalls()
{
    QFETCH(QByteArray, json);
    QTEST(tasksText(tasks(json)), "text");
}

GAMEPAD_TEST_MAIN(TestNoCodeDocument)
#include "tst_nocodedocument.moc"
