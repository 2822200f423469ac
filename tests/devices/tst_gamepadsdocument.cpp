// SPDX-License-Identifier: MIT
#include "gamepadsdocument.h"

#include "testmain.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <limits>

using namespace Qt::StringLiterals;

class TestGamepadsDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void readsDevicesInKeyOrderWithKvApart()
    {
        const GamepadsDocument document = parseGamepads(R"({
            "lastCount": 2,
            "devices": {
                "gp:3": {"deviceId": "3", "name": "B", "extra": [1], "kv": {"selected": true, "mine": 1}},
                "gp:1": {"deviceId": "1"}
            }
        })");
        const GamepadsDocument expected{
            .devices =
                {{.usn = u"gp:1"_s, .infoObject = {{u"deviceId"_s, u"1"_s}}, .kv = {}},
                 {.usn = u"gp:3"_s,
                  .infoObject = {{u"deviceId"_s, u"3"_s}, {u"name"_s, u"B"_s}, {u"extra"_s, QJsonArray{1}}},
                  .kv = {{u"selected"_s, true}, {u"mine"_s, 1}}}},
            .lastCount = 2,
            .otherKeys = {},
        };
        QCOMPARE(document, expected);
    }

    void textThatIsNoObjectGivesAnEmptyDocument_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("broken") << QByteArray(R"({"devices": {)");
        QTest::newRow("array") << QByteArray(R"([{"devices": {"gp:1": {}}}])");
        QTest::newRow("number") << QByteArray("5");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("invalid UTF-8")
            << QByteArray("{\"devices\": {\"gp:1\xff\xfe\": {}}, \"lastCount\": 1}");
        QTest::newRow("zero bytes") << QByteArray(64, '\0');
        QTest::newRow("10 MB of nested arrays") << QByteArray(10'000'000, '[');
        QTest::newRow("10 MB of nested objects") << QByteArray(R"({"devices":)").repeated(1'000'000);
        QTest::newRow("something after the object") << QByteArray(R"({"devices": {"gp:1": {}}} x)");
    }
    void textThatIsNoObjectGivesAnEmptyDocument()
    {
        QFETCH(const QByteArray, json);
        QCOMPARE(parseGamepads(json), GamepadsDocument());
    }

    void anEmptyKeyIsSkipped()
    {
        const GamepadsDocument document = parseGamepads(R"({"devices": {"": {"name": "x"}, "gp:1": {}}})");
        QCOMPARE(document.devices, (QList<StoredDevice>{{.usn = u"gp:1"_s, .infoObject = {}, .kv = {}}}));
    }

    void wrongTypesCountAsMissing()
    {
        for (const char *value : {"null", "true", "1", "1.5", R"("text")", "[1]"}) {
            QCOMPARE(parseGamepads(QByteArray(R"({"devices": )") + value + '}').devices,
                     QList<StoredDevice>());
            QCOMPARE(parseGamepads(QByteArray(R"({"devices": {"a": )") + value + "}}").devices,
                     (QList<StoredDevice>{{.usn = u"a"_s, .infoObject = {}, .kv = {}}}));
            QCOMPARE(parseGamepads(QByteArray(R"({"devices": {"a": {"kv": )") + value + "}}}").devices,
                     (QList<StoredDevice>{{.usn = u"a"_s, .infoObject = {}, .kv = {}}}));
        }
    }

    void lastCountSaturates_data()
    {
        QTest::addColumn<QByteArray>("number");
        QTest::addColumn<int>("count");
        QTest::newRow("plain") << QByteArray("3") << 3;
        QTest::newRow("zero") << QByteArray("0") << 0;
        QTest::newRow("text") << QByteArray(R"("3")") << 0;
        QTest::newRow("null") << QByteArray("null") << 0;
        QTest::newRow("object") << QByteArray("{}") << 0;
        QTest::newRow("beyond int") << QByteArray("4294967297") << std::numeric_limits<int>::max();
        QTest::newRow("beyond 64 bits") << QByteArray("1e300") << std::numeric_limits<int>::max();
        QTest::newRow("far negative") << QByteArray("-1e300") << std::numeric_limits<int>::min();
    }
    void lastCountSaturates()
    {
        QFETCH(const QByteArray, number);
        QTEST(parseGamepads(R"({"lastCount": )" + number + '}').lastCount, "count");
    }

    void lastCountIsNoughtWhenMissing() { QCOMPARE(parseGamepads(R"({"devices": {}})").lastCount, 0); }

    void writesCompactlyWithTheNumberOfRows()
    {
        const GamepadsDocument document{
            .devices = {{.usn = u"gp:1"_s, .infoObject = {{u"name"_s, u"A"_s}}, .kv = {}},
                        {.usn = u"gp:0"_s, .infoObject = {}, .kv = {{u"selected"_s, true}}}},
            .lastCount = 17,
            .otherKeys = {},
        };
        QCOMPARE(gamepadsJson(document), QByteArray(R"({"devices":{"gp:0":{"kv":{"selected":true}},)"
                                                    R"("gp:1":{"kv":{},"name":"A"}},"lastCount":2})"));
    }

    void everyFieldComesBack()
    {
        const GamepadsDocument document{
            .devices = {{.usn = u"gp:2"_s,
                         .infoObject = {{u"deviceId"_s, u"2"_s},
                                        {u"later"_s, QJsonObject{{u"a"_s, QJsonArray{1, 2}}}}},
                         .kv = {{u"nameOverride"_s, u"é \"q\" \u2028"_s}, {u"selected"_s, true}}}},
            .lastCount = 1,
            .otherKeys = {{u"version"_s, 9}, {u"note"_s, u"kept"_s}},
        };
        QCOMPARE(parseGamepads(gamepadsJson(document)), document);
    }

    void theDevicesOwnKvIsTheOneThatIsWritten()
    {
        const GamepadsDocument document{
            .devices = {{.usn = u"gp:2"_s,
                         .infoObject = {{u"kv"_s, u"stale"_s}},
                         .kv = {{u"product"_s, u"P"_s}}}},
            .lastCount = 1,
            .otherKeys = {{u"devices"_s, u"stale"_s}, {u"lastCount"_s, u"stale"_s}},
        };
        QCOMPARE(gamepadsJson(document),
                 QByteArray(R"({"devices":{"gp:2":{"kv":{"product":"P"}}},"lastCount":1})"));
    }
};

GAMEPAD_TEST_MAIN(TestGamepadsDocument)
#include "tst_gamepadsdocument.moc"
