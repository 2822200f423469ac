// SPDX-License-Identifier: MIT
#include "overlaystage.h"

#include "testmain.h"

#include <QtWidgets/QComboBox>

using namespace Qt::StringLiterals;

namespace
{
QJsonObject config(const QString &function, const QByteArray &args = "{}")
{
    return {{u"ref"_s, function}, {u"action"_s, function}, {u"args"_s, object(args)}};
}

QJsonArray bridgesOf(const OverlayStage &stage)
{
    return stage.overlay()->exportBridges()["bridges"_L1].toArray();
}

bool take(OverlayStage &stage, const QByteArray &bridges)
{
    return stage->applyMapping(object("{'bridges':" + bridges + "}"));
}
} // namespace

class TestInteractiveOverlayMapping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    // Export.

    void anEmptyOverlayHasNoBridges()
    {
        OverlayStage stage;
        QCOMPARE(stage->exportBridges(), object("{'bridges':[]}"));
        stage->addPastille({}, u"joy_1"_s);
        QCOMPARE(stage->exportBridges(), object("{'bridges':[]}"));
    }

    void boundNodesAreExportedInTheirOrder()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (const QString &title : {u"Tir"_s, u"but_7"_s, u"free"_s, u"c"_s, u"d"_s})
            stage->addPastille({}, title);
        stage.box(0)->applyConfig(config(u"Avancer"_s, "{'vitesse':2}"));
        stage.box(1)->applyConfig(config(u"Tirer"_s, "{'feu':true}"));
        stage.box(3)->applyConfig(config(u"Dire"_s));
        stage.box(4)->applyConfig(config(u"Disparue"_s));
        stage.takeDirty();
        QCOMPARE(bridgesOf(stage), array(R"([
            {'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'joy_0'},
             'dst':[{'ref':'motor.go','args':{'v':2}}],'action':'Avancer','args':{'vitesse':2,'pas':0}},
            {'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_7'},
             'dst':[{'ref':'fire'}],'action':'Tirer','args':{'feu':true}},
            {'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'joy_3'},
             'dst':[{'when':false}],'action':'Dire','args':{'texte':''}},
            {'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'joy_4'},
             'dst':[{'ref':'Disparue','action':'Disparue','args':{}}],'action':'Disparue'}])"));
        // Nothing changed by it.
        QCOMPARE(stage.takeDirty(), 0);
        QCOMPARE(stage.key(1), u"joy_1"_s);
    }

    void aVanishedFunctionKeepsItsReference()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"a"_s);
        stage.box(0)->applyConfig(config(u"Centrer"_s));
        stage->setExternalServices(array("[{'name':'Autre'}]"));
        QCOMPARE(bridgesOf(stage)[0]["dst"_L1].toArray(),
                 array("[{'ref':'Centrer','action':'Centrer','args':{}}]"));
        QCOMPARE(bridgesOf(stage)[0]["action"_L1], u"Centrer"_s);
    }

    void functionsAreLookedUpInWhatTheToolBoxesWereGiven()
    {
        // A host that keeps the catalogue to itself: the property changes, the tool boxes' copy does not.
        class Host : public InteractiveOverlay
        {
        public:
            bool keeps = false;
            void applyExternalServices(const QJsonArray &services) override
            {
                if (!keeps)
                    InteractiveOverlay::applyExternalServices(services);
            }
        };
        Host host;
        host.setExternalServices(someFunctions());
        host.addPastille({}, u"a"_s);
        host.findChild<ActionToolBox *>()->applyConfig(config(u"Centrer"_s));
        host.keeps = true;
        host.setExternalServices({});
        QCOMPARE(host.exportBridges()["bridges"_L1][0]["dst"_L1].toArray(), array("[{'ref':'center'}]"));
    }

    void aFunctionNamedNoneIsNotBound()
    {
        OverlayStage stage;
        stage->setExternalServices(array("[{'name':'None','tasks':[{'ref':'x'}]}]"));
        stage->addPastille({}, u"a"_s);
        QCOMPARE(stage.functions(), QStringList({u"None"_s}));
        QVERIFY(bridgesOf(stage).isEmpty());
    }

    // Import: what it takes.

    void anEmptyMappingIsNone()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        stage.takeDirty();
        QVERIFY(!stage->applyMapping({}));
        QCOMPARE(stage.takeDirty(), 0);
    }

    void withoutBridgesToolBoxesStayAsTheyWere_data()
    {
        QTest::addColumn<QByteArray>("mapping");
        QTest::newRow("absent") << QByteArray("{'timers':[]}");
        QTest::newRow("empty") << QByteArray("{'bridges':[]}");
        QTest::newRow("wrong type") << QByteArray("{'bridges':{'src':{'stringKey':'a'}}}");
        QTest::newRow("wrong catalogue") << QByteArray("{'ref':{'name':'x'}}");
    }

    void withoutBridgesToolBoxesStayAsTheyWere()
    {
        QFETCH(const QByteArray, mapping);
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"a"_s);
        stage.box(0)->applyConfig(config(u"Dire"_s, "{'texte':'x'}"));
        stage.takeDirty();
        QVERIFY(!stage->applyMapping(object(mapping)));
        QCOMPARE(stage.box(0)->config(), config(u"Dire"_s, "{'texte':'x'}"));
        QCOMPARE(stage.takeDirty(), 0);
    }

    void whatNoBridgeNamesIsUnbound()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"a"_s);
        stage->addPastille({}, u"b"_s);
        stage.box(0)->applyConfig(config(u"Centrer"_s));
        QVERIFY(take(stage, "[{'src':{'stringKey':'b'},'action':'Tirer'}]"));
        QCOMPARE(stage.functions(), QStringList({QString(), u"Tirer"_s}));
        QVERIFY(!take(stage, "[{'src':{'stringKey':'elsewhere'},'action':'Tirer'}]"));
        QCOMPARE(stage.functions(), QStringList({QString(), QString()}));
    }

    void unboundIsTheFunctionNoneWhereThereIsOne()
    {
        OverlayStage stage;
        stage->setExternalServices(array("[{'name':'none'},{'name':'F'}]"));
        stage->addPastille({}, u"a"_s);
        stage.box(0)->applyConfig(config(u"F"_s));
        QVERIFY(!take(stage, "[7]"));
        QCOMPARE(stage.functions(), QStringList({u"none"_s}));
    }

    void pastillesAreFoundByTitle()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (const QString &title : {u"joy_1"_s, u"JOY_1"_s, u" joy_1 "_s, u"Tir"_s})
            stage->addPastille({}, title);
        // The key of a node is no title: "joy_3" is the fourth one's.
        QVERIFY(take(stage, "[{'src':{'stringKey':'joy_1'},'action':'Centrer'},"
                            "{'src':{'stringKey':'joy_3'},'action':'Tirer'}]"));
        QCOMPARE(stage.functions(), QStringList({u"Centrer"_s, u"Centrer"_s, u"Centrer"_s, QString()}));
    }

    void aPlainWordLosesItsBridgeOnTheWay()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (int i = 0; i < 4; ++i)
            stage->addPastille({}, u"x%1"_s.arg(i));
        stage->addPastille({}, u"Tir"_s);
        stage.box(4)->applyConfig(config(u"Tirer"_s));
        const QJsonObject exported = stage->exportBridges();
        QCOMPARE(exported["bridges"_L1][0]["src"_L1]["stringKey"_L1], u"joy_4"_s);
        QVERIFY(!stage->applyMapping(exported));
        QCOMPARE(stage.functions().last(), QString());
    }

    void badBridgesArePassedOver()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        stage->addPastille({}, QString());
        QVERIFY(take(stage,
                     "[null,3,'a',[{}],{},{'src':7},{'src':{'stringKey':''}},{'src':{'stringKey':' '}},"
                     "{'src':{'stringKey':['a']}},{'dst':5,'args':3,'action':{},'src':{'stringKey':'a'}}]"));
        QCOMPARE(stage.functions(), QStringList({QString(), QString()}));
    }

    // Import: the input.

    void theInputOfTheNodeFollowsTheBridge_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QByteArray>("src");
        QTest::addColumn<QByteArray>("node");
        const auto row = [](const char *name, const char16_t *title, const char *src, const char *node) {
            QTest::newRow(name) << QString::fromUtf16(title) << QByteArray(src) << QByteArray(node);
        };
        row("button", u"but_3", "{'stringKey':' BUT_3 '}",
            "{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_3','isJoy':false}");
        row("all of it", u"joy_3",
            "{'stringKey':'joy_3','deviceType':'volant','deviceId':2.9,'packetId':'0x10'}",
            "{'deviceType':'volant','deviceId':2,'packetId':16,'stringKey':'joy_3','isJoy':true}");
        row("ids that are none", u"joy_3",
            "{'stringKey':'joy_3','deviceType':'','deviceId':'x','packetId':true}",
            "{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'joy_3','isJoy':true}");
        row("word", u"Tir", "{'stringKey':' tir'}",
            "{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':' tir','isJoy':true}");
        row("word, told a button", u"Tir", "{'stringKey':'Tir','isJoy':false}",
            "{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'Tir','isJoy':false}");
        row("bad button", u"but_x", "{'stringKey':'but_x','isJoy':1}",
            "{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_x','isJoy':false}");
        row("bad button, told an axis", u"but_x", "{'stringKey':'but_x','isJoy':true}",
            "{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_x','isJoy':true}");
        row("ids out of range", u"joy_3", "{'stringKey':'joy_3','deviceId':1e300,'packetId':-1e300}",
            "{'deviceType':'gamepade','deviceId':2147483647,'packetId':-2147483648,'stringKey':'joy_3',"
            "'isJoy':true}");
    }

    void theInputOfTheNodeFollowsTheBridge()
    {
        QFETCH(const QString, title);
        QFETCH(const QByteArray, src);
        QFETCH(const QByteArray, node);
        OverlayStage stage;
        stage->setExternalServices(array("[{'name':'F','params':[{'name':'n','preferredType':'int'},"
                                         "{'name':'on','preferredType':'bool'}]}]"));
        stage->addPastille({}, title);
        QVERIFY(take(stage, "[{'src':" + src + ",'action':'F'}]"));
        QCOMPARE(stage.node(0)["src"_L1].toObject(), object(node));
        // The tool box has been told the kind before it was given the function.
        const bool isJoy = object(node)["isJoy"_L1].toBool();
        QCOMPARE(stage.box(0)->config()["args"_L1].toObject(),
                 object(isJoy ? "{'n':'arg_0','on':false}" : "{'n':0,'on':'arg_0'}"));
    }

    void theInputFollowsABridgeThatBindsNothing()
    {
        OverlayStage stage;
        stage->addPastille({}, u"but_3"_s);
        QVERIFY(take(stage, "[{'src':{'stringKey':'but_3','deviceId':5}}]"));
        QCOMPARE(stage.key(0), u"but_3"_s);
        QCOMPARE(stage.node(0)["src"_L1]["deviceId"_L1], QJsonValue(5));
        QCOMPARE(stage.functions(), QStringList({QString()}));
    }

    void knownInputsRaiseTheCounters()
    {
        OverlayStage stage;
        stage->addPastille({}, u"joy_20"_s);
        stage->addPastille({}, u"but_40"_s);
        QVERIFY(take(stage, "[{'src':{'stringKey':'joy_20'}},{'src':{'stringKey':'but_40'}}]"));
        stage->addPastille({}, u"next"_s);
        QCOMPARE(stage.key(2), u"joy_21"_s);
    }

    // Import: the configuration.

    void theActionAndItsArgumentsAreTaken_data()
    {
        QTest::addColumn<QByteArray>("bridge");
        QTest::addColumn<QJsonObject>("expected");
        QTest::newRow("action with arguments")
            << QByteArray("'action':' Dire ','args':{'texte':'x'}") << config(u"Dire"_s, "{'texte':'x'}");
        QTest::newRow("action without arguments")
            << QByteArray("'action':'Dire'") << config(u"Dire"_s, "{'texte':''}");
        QTest::newRow("its input fills itself in")
            << QByteArray("'action':'Avancer'") << config(u"Avancer"_s, "{'vitesse':'arg_0','pas':0}");
        QTest::newRow("stored arguments leave the input out")
            << QByteArray("'action':'Avancer','args':{'pas':3}")
            << config(u"Avancer"_s, "{'vitesse':1.5,'pas':3}");
        QTest::newRow("first reference") << QByteArray("'dst':[{'ref':' Dire '}],'args':{'texte':'x'}")
                                         << config(u"Dire"_s, "{'texte':'x'}");
        QTest::newRow("an action inside the tasks")
            << QByteArray(
                   "'dst':[{'when':false},{'action':'Dire','args':{'texte':'y'}}],'args':{'texte':'x'}")
            << config(u"Dire"_s, "{'texte':'y'}");
        QTest::newRow("unknown action")
            << QByteArray("'action':'Disparue','args':{'a':1}") << config(u"Disparue"_s);
        QTest::newRow("none") << QByteArray("'action':'NONE'") << QJsonObject();
        QTest::newRow("nothing to do") << QByteArray("'dst':[{'when':false}]") << QJsonObject();
    }

    void theActionAndItsArgumentsAreTaken()
    {
        QFETCH(const QByteArray, bridge);
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"joy_1"_s);
        QVERIFY(take(stage, "[{'src':{'stringKey':'joy_1'}," + bridge + "}]"));
        QTEST(stage.box(0)->config(), "expected");
    }

    void theLastBridgeOfATitleHasTheSay()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"joy_1"_s);
        stage->addPastille({}, u"JOY_1"_s);
        QVERIFY(take(stage, "[{'src':{'stringKey':'joy_1'},'action':'Dire','args':{'texte':'x'}},"
                            "{'src':{'stringKey':'joy_1'},'action':'Centrer'}]"));
        QCOMPARE(stage.functions(), QStringList({u"Centrer"_s, u"Centrer"_s}));
    }

    void aBridgeWithoutConfigurationTellsTheInputOnceMore()
    {
        const QByteArray bound = "{'src':{'stringKey':'joy_1'},'action':'Avancer'}";
        const QByteArray bare = "{'src':{'stringKey':'joy_1'},'dst':[{'when':false}]}";
        const QByteArrayList mappings{bound, bare + "," + bound, bound + "," + bare,
                                      bound + "," + bare + "," + bare + "," + bare};
        const QList<QByteArray> args{"{'vitesse':'arg_0','pas':0}", "{'vitesse':'arg_0','pas':0}",
                                     "{'vitesse':'arg_0','pas':'arg_0'}",
                                     "{'vitesse':'arg_0','pas':'arg_0'}"};
        for (qsizetype i = 0; i < mappings.size(); ++i) {
            OverlayStage stage;
            stage->setExternalServices(someFunctions());
            stage->addPastille({}, u"joy_1"_s);
            QVERIFY(take(stage, "[" + mappings[i] + "]"));
            QCOMPARE(stage.box(0)->config(), config(u"Avancer"_s, args[i]));
        }
    }

    void aFieldThatTakesTheInputByDefaultIsFilledInAsAnyOther()
    {
        OverlayStage stage;
        stage->setExternalServices(
            array("[{'name':'F','params':[{'name':'a','preferredType':'int','default':'arg_0'},"
                  "{'name':'b','preferredType':'int'},{'name':'c','preferredType':'int'}]}]"));
        stage->addPastille({}, u"joy_1"_s);
        const QByteArray bare = "{'src':{'stringKey':'joy_1'}}";
        QVERIFY(take(stage, "[{'src':{'stringKey':'joy_1'},'action':'F','args':{'c':5}}," + bare + "," +
                                bare + "]"));
        QCOMPARE(stage.box(0)->config(), config(u"F"_s, "{'a':'arg_0','b':'arg_0','c':5}"));
    }

    void theKindToldLastStays()
    {
        OverlayStage stage;
        stage->setExternalServices(array("[{'name':'F','params':[{'name':'n','preferredType':'int'},"
                                         "{'name':'on','preferredType':'bool'}]}]"));
        stage->addPastille({}, u"Tir"_s);
        QVERIFY(take(stage,
                     "[{'src':{'stringKey':'Tir','isJoy':true}},{'src':{'stringKey':'Tir','isJoy':false}}]"));
        QCOMPARE(stage.node(0)["src"_L1]["isJoy"_L1], QJsonValue(false));
        stage.box(0)->applyConfig(object("{'ref':'F'}"));
        QCOMPARE(stage.box(0)->config()["args"_L1].toObject(), object("{'n':0,'on':'arg_0'}"));
    }

    void nothingSpreadsWhileAMappingIsTaken()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"joy_1"_s);
        stage->addPastille({}, u"joy_1 "_s);
        stage->addPastille({}, QString());
        QSignalSpy first(stage.box(0), &ActionToolBox::durty);
        QSignalSpy second(stage.box(1), &ActionToolBox::durty);
        QSignalSpy third(stage.box(2), &ActionToolBox::durty);
        stage.takeDirty();
        QVERIFY(take(stage, "[{'src':{'stringKey':'joy_1'},'action':'Centrer'},"
                            "{'src':{'stringKey':'bouton 1'},'action':'Tirer'}]"));
        // A nameless pastille keeps the title by which it was found.
        QCOMPARE(stage.titles().last(), u"Bouton 1"_s);
        QCOMPARE(stage.functions(), QStringList({u"Centrer"_s, u"Centrer"_s, u"Tirer"_s}));
        QCOMPARE(stage.takeDirty(), int(first.size() + second.size() + third.size()));
    }

    void whatIsExportedComesBack()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (const QString &title : {u"joy_1"_s, u"but_2"_s, u"joy_3"_s, u"but_4"_s})
            stage->addPastille({}, title);
        stage.box(0)->applyConfig(config(u"Avancer"_s, "{'vitesse':2.5,'pas':7}"));
        stage.box(1)->applyConfig(config(u"Tirer"_s, "{'feu':true}"));
        stage.box(2)->applyConfig(config(u"Disparue"_s));
        const QJsonObject exported = stage->exportBridges();
        const QJsonObject overlay = stage->toJson();

        QVERIFY(stage->fromJson(overlay));
        stage.deleteRetired();
        QVERIFY(stage->applyMapping(exported));
        QCOMPARE(stage->exportBridges(), exported);
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayMapping)
#include "tst_interactiveoverlaymapping.moc"
