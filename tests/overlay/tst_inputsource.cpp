// SPDX-License-Identifier: MIT
#include "inputsource.h"

#include "jsonnumbers.h"
#include "jsontext.h"
#include "testmain.h"

#include <QtCore/QJsonArray>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{
constexpr int greatest = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
} // namespace

class TestInputSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void anIdIsANumberOrAText_data()
    {
        QTest::addColumn<QJsonValue>("value");
        QTest::addColumn<std::optional<int>>("id");
        const std::optional<int> none;

        QTest::newRow("number") << QJsonValue(7) << std::optional(7);
        QTest::newRow("cut toward zero") << QJsonValue(2.9) << std::optional(2);
        QTest::newRow("cut toward zero from below") << QJsonValue(-2.9) << std::optional(-2);
        QTest::newRow("beyond int") << QJsonValue(1e300) << std::optional(greatest);
        QTest::newRow("below int") << QJsonValue(-1e300) << std::optional(least);
        QTest::newRow("infinite") << QJsonValue(infinity) << std::optional(greatest);
        QTest::newRow("no number") << QJsonValue(notANumber) << none;
        QTest::newRow("decimal text") << QJsonValue(u"12"_s) << std::optional(12);
        QTest::newRow("hexadecimal text") << QJsonValue(u"0x10"_s) << std::optional(16);
        QTest::newRow("octal text") << QJsonValue(u"010"_s) << std::optional(8);
        QTest::newRow("text beyond int") << QJsonValue(u"99999999999"_s) << none;
        QTest::newRow("word") << QJsonValue(u"seven"_s) << none;
        QTest::newRow("empty text") << QJsonValue(QString()) << none;
        QTest::newRow("bool") << QJsonValue(true) << none;
        QTest::newRow("null") << QJsonValue(QJsonValue::Null) << none;
        QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << none;
        QTest::newRow("array") << QJsonValue(QJsonArray{1}) << none;
        QTest::newRow("object") << QJsonValue(QJsonObject{{u"a"_s, 1}}) << none;
    }

    void anIdIsANumberOrAText()
    {
        QFETCH(const QJsonValue, value);
        QTEST(wholeNumberOrText(value), "id");
        QJsonObject src;
        src["deviceId"_L1] = value;
        src["packetId"_L1] = value;
        const InputSource read = readInputSource(src);
        QTEST(read.deviceId, "id");
        QTEST(read.packetId, "id");
    }

    void aCoordinateIsFinite()
    {
        QCOMPARE(finiteNumber(0.25), 0.25);
        QCOMPARE(finiteNumber(-1e308), -1e308);
        QCOMPARE(finiteNumber(infinity), 0.0);
        QCOMPARE(finiteNumber(notANumber), 0.0);
        QCOMPARE(finiteNumber(u"0.5"_s), 0.0);
        QCOMPARE(finiteNumber(QJsonValue::Undefined), 0.0);
    }

    void everyFieldIsRead()
    {
        const InputSource expected{
            .deviceType = u"volant"_s,
            .deviceId = 3,
            .packetId = 9,
            .stringKey = u" but_2 "_s,
            .isJoy = false,
        };
        QCOMPARE(readInputSource(object("{'deviceType':'volant','deviceId':3,'packetId':'9',"
                                        "'stringKey':' but_2 ','isJoy':false}")),
                 expected);
    }

    void whatHasTheWrongTypeIsNotTold()
    {
        QCOMPARE(readInputSource({}), InputSource{});
        QCOMPARE(readInputSource(object("{'deviceType':1,'deviceId':[],'packetId':{},'stringKey':true,"
                                        "'isJoy':'true'}")),
                 InputSource{});
        QCOMPARE(readInputSource(object("{'isJoy':1}")), InputSource{});
    }

    void whatIsToldReplacesTheDevice()
    {
        NodeInput input;
        takeDevice(input, {});
        QCOMPARE(input, NodeInput{});
        QCOMPARE(input.deviceType, u"gamepade"_s);
        QCOMPARE(input.deviceId, 0);
        QCOMPARE(input.packetId, 1);
        QVERIFY(input.isJoy);

        takeDevice(
            input,
            {.deviceType = u"a"_s, .deviceId = 0, .packetId = 0, .stringKey = u"but_1"_s, .isJoy = false});
        QCOMPARE(
            input,
            (NodeInput{
                .isJoy = true, .deviceType = u"a"_s, .deviceId = 0, .packetId = 0, .stringKey = QString()}));
    }

    void aKeyStandsForAnAxisOrAButton_data()
    {
        QTest::addColumn<QByteArray>("src");
        QTest::addColumn<bool>("axis");

        QTest::newRow("nothing") << QByteArray("{}") << true;
        QTest::newRow("told alone") << QByteArray("{'isJoy':false}") << false;
        QTest::newRow("axis key") << QByteArray("{'stringKey':'joy_1'}") << true;
        QTest::newRow("button key") << QByteArray("{'stringKey':'but_1'}") << false;
        QTest::newRow("a good key outdoes what is told")
            << QByteArray("{'stringKey':'but_1','isJoy':true}") << false;
        QTest::newRow("a good axis outdoes what is told")
            << QByteArray("{'stringKey':'JOY_1','isJoy':false}") << true;
        QTest::newRow("bad button key") << QByteArray("{'stringKey':'but_x'}") << false;
        QTest::newRow("bad button key, told") << QByteArray("{'stringKey':'but_x','isJoy':true}") << true;
        QTest::newRow("word") << QByteArray("{'stringKey':'Tir'}") << true;
        QTest::newRow("word, told") << QByteArray("{'stringKey':'Tir','isJoy':false}") << false;
        QTest::newRow("told by no bool") << QByteArray("{'stringKey':'Tir','isJoy':0}") << true;
    }

    void aKeyStandsForAnAxisOrAButton()
    {
        QFETCH(const QByteArray, src);
        QTEST(standsForAxis(readInputSource(object(src))), "axis");
    }

    void theSourceIsWrittenWithFourKeys()
    {
        const NodeInput input{
            .isJoy = false, .deviceType = u"volant"_s, .deviceId = 2, .packetId = 5, .stringKey = u"but_8"_s};
        QCOMPARE(inputSourceJson(input),
                 object("{'deviceType':'volant','deviceId':2,'packetId':5,'stringKey':'but_8'}"));
    }
};

GAMEPAD_TEST_MAIN(TestInputSource)
#include "tst_inputsource.moc"
