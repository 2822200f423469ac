// SPDX-License-Identifier: MIT
#include "bridge.h"

#include "jsontext.h"
#include "testmain.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace
{
const FunctionIndex functions(array(R"([
    {'name':'Avancer','tasks':[{'ref':'motor.go','args':{'v':'param:speed','s':'%'},'when':'state(on)'},
                               {'ref':'log'}]},
    {'name':'Rien'}, {'name':'Vide','tasks':[1,2]}])"));

BoundPastille pastille(const QByteArray &config, const QString &title = u"Tir"_s)
{
    BoundPastille bound;
    bound.title = title;
    bound.input.stringKey = u"joy_4"_s;
    bound.config = object(config);
    return bound;
}

QJsonObject bridge(const QByteArray &config)
{
    return bridgeOf(pastille(config), functions).value();
}
} // namespace

class TestBridge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theSourceIsTheNodesInput()
    {
        BoundPastille bound = pastille("{'ref':'x'}");
        bound.input = {.isJoy = false,
                       .deviceType = u"volant"_s,
                       .deviceId = 3,
                       .packetId = 8,
                       .stringKey = u" but_6 "_s};
        QCOMPARE(bridgeOf(bound, functions).value()["src"_L1].toObject(),
                 object("{'deviceType':'volant','deviceId':3,'packetId':8,'stringKey':'but_6'}"));
    }

    void theTitleOutdoesTheKey_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("isJoy");
        QTest::addColumn<QString>("exported");
        QTest::newRow("plain word") << u"Tir"_s << u"joy_4"_s << true << u"joy_4"_s;
        QTest::newRow("learned button") << u"but_7"_s << u"joy_4"_s << true << u"but_7"_s;
        QTest::newRow("rebuilt") << u"  JOY_09 "_s << u"but_1"_s << false << u"joy_9"_s;
        QTest::newRow("bad key") << u"but_x"_s << u"joy_4"_s << true << u"joy_4"_s;
        QTest::newRow("beyond int") << u"joy_99999999999"_s << u"but_1"_s << false << u"but_1"_s;
        QTest::newRow("the node's key is trimmed") << u"Tir"_s << u" Volant \n"_s << true << u"Volant"_s;
        QTest::newRow("no key of an axis") << u"Tir"_s << QString() << true << u"joy_0"_s;
        QTest::newRow("blank key of a button") << u"Tir"_s << u"  "_s << false << u"but_0"_s;
        QTest::newRow("no key, but a title") << u"but_3"_s << QString() << true << u"but_3"_s;
    }

    void theTitleOutdoesTheKey()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, key);
        QFETCH(const bool, isJoy);
        BoundPastille bound = pastille("{'ref':'x'}", title);
        bound.input.stringKey = key;
        bound.input.isJoy = isJoy;
        QTEST(exportedKey(bound), "exported");
        QTEST(bridgeOf(bound, functions).value()["src"_L1]["stringKey"_L1].toString(), "exported");
    }

    void whatIsNotBoundHasNoBridge_data()
    {
        QTest::addColumn<QByteArray>("config");
        QTest::newRow("no configuration") << QByteArray("{}");
        QTest::newRow("none") << QByteArray("{'ref':'none'}");
        QTest::newRow("none as an action") << QByteArray("{'action':' NoNe '}");
        QTest::newRow("none with arguments") << QByteArray("{'ref':'none','args':{'a':1}}");
    }

    void whatIsNotBoundHasNoBridge()
    {
        QFETCH(const QByteArray, config);
        QVERIFY(!bridgeOf(pastille(config), functions));
    }

    void aFunctionIsExpandedIntoItsTasks()
    {
        QCOMPARE(bridge("{'ref':'avancer','action':'avancer','args':{'Speed':5}}"),
                 object(R"({'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'joy_4'},
                            'dst':[{'ref':'motor.go','args':{'v':5,'s':'%'},'when':'state(on)'},{'ref':'log'}],
                            'action':'avancer','args':{'Speed':5}})"));
    }

    void aFunctionWithoutTasksStaysAndDoesNothing()
    {
        for (const char *config : {"{'ref':'Rien'}", "{'ref':'Vide'}"})
            QCOMPARE(bridge(config)["dst"_L1].toArray(), array("[{'when':false}]"));
        QCOMPARE(bridge("{'ref':'Rien'}")["action"_L1], u"Rien"_s);
    }

    void anUnknownFunctionIsItsBareReference()
    {
        QCOMPARE(bridge("{'ref':'Partie','action':'Partie','args':{'a':1}}"),
                 object(R"({'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'joy_4'},
                            'dst':[{'ref':'Partie','action':'Partie','args':{'a':1}}],
                            'action':'Partie','args':{'a':1}})"));
        QCOMPARE(bridge("{'action':'Partie'}")["dst"_L1].toArray(),
                 array("[{'ref':'Partie','action':'Partie','args':{}}]"));
    }

    void aBlankNameIsABareReferenceToo()
    {
        const QJsonObject blank = bridge("{'ref':'  '}");
        QCOMPARE(blank["dst"_L1].toArray(), array("[{'ref':'  ','args':{}}]"));
        QCOMPARE(blank["action"_L1], u"  "_s);
    }

    void argumentsAloneGiveAnEmptyBridge()
    {
        QCOMPARE(bridge("{'args':{'a':1}}"),
                 object("{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'joy_4'},"
                        "'dst':[],'args':{'a':1}}"));
        QCOMPARE(bridge("{'action':{'x':1}}")["dst"_L1].toArray(), QJsonArray());
        QVERIFY(!bridge("{'action':{'x':1}}").contains("action"_L1));
    }

    void emptyArgumentsAreLeftOut()
    {
        QVERIFY(!bridge("{'ref':'x','args':{}}").contains("args"_L1));
        QVERIFY(!bridge("{'ref':'x','args':[1]}").contains("args"_L1));
    }

    void aBridgeIsRead_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QByteArray>("config"); // empty: none
        const auto row = [](const char *name, const char *json, const char16_t *action, const char *config) {
            QTest::newRow(name) << QByteArray(json) << QString::fromUtf16(action) << QByteArray(config);
        };
        row("action", "{'action':' A ','args':{'x':1},'dst':[{'ref':'b'}]}", u"A",
            "{'action':'A','args':{'x':1}}");
        row("action without arguments", "{'action':'A'}", u"A", "{'action':'A'}");
        row("empty arguments are arguments", "{'action':'A','args':{}}", u"A", "{'action':'A','args':{}}");
        row("arguments of a wrong type", "{'action':'A','args':[1]}", u"A", "{'action':'A'}");
        row("first reference of the tasks",
            "{'args':{'x':1},'dst':[7,{'ref':' '},{'ref':' b '},{'ref':'c'}]}", u"b",
            "{'action':'b','args':{'x':1}}");
        row("blank action", "{'action':'  ','dst':[{'ref':'b'}]}", u"b", "{'action':'b'}");
        row("action of a wrong type", "{'action':3,'dst':[{'ref':'b'}]}", u"b", "{'action':'b'}");
        row("an action inside the tasks", "{'dst':[{'when':false},{'action':'c','args':{'y':2}}]}", u"",
            "{'action':'c','args':{'y':2}}");
        row("an empty reference", "{'dst':[{'x':1},{'ref':'','args':{'y':2}},{'action':'d'}]}", u"",
            "{'ref':'','args':{'y':2}}");
        row("nothing to do", "{'dst':[{'when':false}]}", u"", "");
        row("no tasks", "{}", u"", "");
        row("tasks of a wrong type", "{'dst':{'ref':'b'}}", u"", "");
    }

    void aBridgeIsRead()
    {
        QFETCH(const QByteArray, json);
        QFETCH(const QByteArray, config);
        const Bridge read = readBridge(object(json));
        QTEST(read.action, "action");
        QCOMPARE(read.config.has_value(), !config.isEmpty());
        if (read.config)
            QCOMPARE(*read.config, object(config));
    }

    void theSourceOfABridgeIsRead()
    {
        const Bridge read =
            readBridge(object("{'src':{'stringKey':'but_2','deviceId':'0x1f','packetId':2,'isJoy':true}}"));
        QCOMPARE(read.src, (InputSource{.deviceType = QString(),
                                        .deviceId = 31,
                                        .packetId = 2,
                                        .stringKey = u"but_2"_s,
                                        .isJoy = true}));
    }

    void aNodeTakesTheSourceOfItsBridge_data()
    {
        QTest::addColumn<QByteArray>("src");
        QTest::addColumn<bool>("isJoy");
        QTest::addColumn<QString>("key");
        QTest::newRow("axis") << QByteArray("{'stringKey':'JOY_07'}") << true << u"joy_7"_s;
        QTest::newRow("button") << QByteArray("{'stringKey':' but_3 ','isJoy':true}") << false << u"but_3"_s;
        QTest::newRow("word") << QByteArray("{'stringKey':' Tir '}") << true << u" Tir "_s;
        QTest::newRow("word, told a button")
            << QByteArray("{'stringKey':'Tir','isJoy':false}") << false << u"Tir"_s;
        QTest::newRow("bad button") << QByteArray("{'stringKey':'but_x'}") << false << u"but_x"_s;
        QTest::newRow("bad button, told an axis")
            << QByteArray("{'stringKey':'but_x','isJoy':true}") << true << u"but_x"_s;
        QTest::newRow("no key changes neither") << QByteArray("{'isJoy':true}") << false << u"but_9"_s;
    }

    void aNodeTakesTheSourceOfItsBridge()
    {
        QFETCH(const QByteArray, src);
        NodeInput input{
            .isJoy = false, .deviceType = u"a"_s, .deviceId = 5, .packetId = 6, .stringKey = u"but_9"_s};
        takeSource(input, readInputSource(object(src)));
        QTEST(input.isJoy, "isJoy");
        QTEST(input.stringKey, "key");
        QCOMPARE(input.deviceType, u"a"_s);
        QCOMPARE(input.deviceId, 5);
        QCOMPARE(input.packetId, 6);
    }

    void aNodeTakesTheDeviceOfItsBridge()
    {
        NodeInput input;
        takeSource(input, readInputSource(object("{'deviceType':'b','deviceId':'012','packetId':1e99}")));
        QCOMPARE(input.deviceType, u"b"_s);
        QCOMPARE(input.deviceId, 10);
        QCOMPARE(input.packetId, std::numeric_limits<int>::max());
    }
};

GAMEPAD_TEST_MAIN(TestBridge)
#include "tst_bridge.moc"
