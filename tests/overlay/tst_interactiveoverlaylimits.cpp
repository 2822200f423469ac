// SPDX-License-Identifier: MIT
// Documents that nobody draws by hand: too many nodes, too deep, of wrong types. And listeners that change
// the nodes while the overlay goes through them.
#include "overlaystage.h"

#include "nodedocument.h"
#include "sanitizers.h"
#include "testmain.h"

#include <QtCore/QScopedValueRollback>
#include <QtWidgets/QComboBox>

#include <algorithm>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr int slowness = sanitized ? 10 : 1;

/// Every document that has one value of `json` replaced by one of `stand-ins`.
void forEachChanged(const QJsonValue &json, const QJsonArray &standIns,
                    const std::function<void(const QJsonValue &)> &act)
{
    for (const QJsonValue &standIn : standIns)
        act(standIn);
    if (json.isObject()) {
        const QJsonObject object = json.toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            forEachChanged(it.value(), standIns, [&](const QJsonValue &changed) {
                QJsonObject copy = object;
                copy[it.key()] = changed;
                act(copy);
            });
            QJsonObject without = object;
            without.remove(it.key());
            act(without);
        }
    }
    if (json.isArray()) {
        const QJsonArray array = json.toArray();
        for (qsizetype i = 0; i < array.size(); ++i) {
            forEachChanged(array[i], standIns, [&](const QJsonValue &changed) {
                QJsonArray copy = array;
                copy[i] = changed;
                act(copy);
            });
        }
    }
}

QJsonArray standIns()
{
    return array(
        "[null,true,false,0,-1,1.5,1e308,-1e308,2147483648,-2147483649,'','x','joy_1','but_99999999999',"
        "[],[[]],{},{'x':1}]");
}

/// What an overlay does while it goes through its nodes.
using Run = void (*)(OverlayStage &);

/// A listener that takes the last node away whenever something changed.
void removeLastAtEachDirty(OverlayStage &stage)
{
    const auto removeLast = [&stage, busy = false]() mutable {
        if (busy)
            return;
        const QScopedValueRollback removing(busy, true);
        const QJsonArray nodes = stage->toJson()["nodes"_L1].toArray();
        const QUuid last = QUuid::fromString(nodes.last()["id"_L1].toString());
        for (TouchArea *area : stage.pastilles()) {
            if (area->id() == last)
                stage->removePastille(area);
        }
    };
    QObject::connect(stage.overlay(), &InteractiveOverlay::dirty, stage.overlay(), removeLast);
}
} // namespace

class TestInteractiveOverlayLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void thousandsOfNodesAreShownAndReplaced_data()
    {
        QTest::addColumn<QJsonArray>("nodes");
        QJsonArray bare;
        QJsonArray titled;
        for (int i = 0; i < 10'000 / slowness; ++i)
            bare.append(QJsonValue::Null);
        // Fewer, since Qt itself takes more than twice as long for twice as many.
        for (int i = 0; i < 5'000 / slowness; ++i)
            titled.append(nodeAt(i, u"joy_%1"_s.arg(i)));
        QTest::newRow("each of its own title") << titled;
        QTest::newRow("no objects, so all of one title") << bare;
    }

    void thousandsOfNodesAreShownAndReplaced()
    {
        QFETCH(const QJsonArray, nodes);
        OverlayStage stage;
        QVERIFY(stage->fromJson(documentOf(nodes)));
        QCOMPARE(stage->toJson()["nodes"_L1].toArray().size(), nodes.size());
        QCOMPARE(stage.pastilles().size(), nodes.size());
        // Qt needs so much stack to paint more that the host would be at an end.
        const auto shown = std::ranges::count_if(stage.pastilles(), &QWidget::isVisible);
        QCOMPARE(shown, std::min<qsizetype>(nodes.size(), 5'000));
        stage->grab();
        stage->resize(500, 400);
        stage->setMode(InteractiveOverlay::Normal);
        QCoreApplication::processEvents();
        QVERIFY(stage->fromJson(documentOf({})));
        stage.deleteRetired();
        QVERIFY(stage.pastilles().isEmpty());
    }

    void aThousandLikeTitledNodesAreBoundAndUnbound()
    {
        // Where each bridge of a title goes to each pastille of that title, this takes minutes.
        const int count = 1'000 / slowness;
        QJsonArray nodes;
        QJsonArray bridges;
        for (int i = 0; i < count; ++i) {
            nodes.append(nodeAt(i, u"joy_1"_s));
            bridges.append(
                QJsonObject{{u"src"_s, QJsonObject{{u"stringKey"_s, u"joy_1"_s}}}, {u"action"_s, u"Dire"_s}});
        }
        for (int i = 0; i < count; ++i)
            bridges.append(QJsonObject{{u"src"_s, QJsonObject{{u"stringKey"_s, u"JOY_1"_s}}}});

        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        QVERIFY(stage->fromJson(documentOf(nodes)));
        QCoreApplication::processEvents();
        stage->applyActionToTitle(u"Avancer"_s, u"joy_1"_s);
        QCOMPARE(stage->exportBridges()["bridges"_L1].toArray().size(), count);
        QJsonArray more = someFunctions();
        more.append(QJsonObject{{u"name"_s, u"Plus"_s}});
        stage->setExternalServices(more);
        QCOMPARE(stage.functions(), QStringList(count, u"Avancer"_s));
        QVERIFY(stage->applyMapping({{u"bridges"_s, bridges}}));
        QCOMPARE(stage.functions(), QStringList(count, u"Dire"_s));
        stage.box(0)->applyConfig({});
        QVERIFY(stage->exportBridges()["bridges"_L1].toArray().isEmpty());
        // Qt looks for the posted events of each widget that dies, among all that wait.
        QCoreApplication::processEvents();
    }

    void fiveHundredLevelsAreRead()
    {
        QJsonValue deep = u"x"_s;
        for (int i = 0; i < 250; ++i)
            deep = QJsonObject{{u"nodes"_s, QJsonArray{deep}}};
        OverlayStage stage;
        QJsonObject document = documentOf({deep, QJsonObject{{u"pastille"_s, deep}, {u"src"_s, deep}}});
        document[u"overlaySize"_s] = deep;
        QVERIFY(stage->fromJson(document));
        QCOMPARE(stage.titles(), QStringList({u"Bouton"_s, u"Bouton"_s}));

        stage->setExternalServices({deep, QJsonObject{{u"name"_s, u"F"_s},
                                                      {u"params"_s, QJsonArray{deep}},
                                                      {u"tasks"_s, QJsonArray{deep}}}});
        const QJsonObject src{{u"stringKey"_s, u"bouton"_s}};
        QVERIFY(stage->applyMapping({{u"bridges"_s, QJsonArray{QJsonObject{{u"src"_s, src},
                                                                           {u"action"_s, u"F"_s},
                                                                           {u"args"_s, deep},
                                                                           {u"dst"_s, QJsonArray{deep}}}}}}));
        QCOMPARE(stage->exportBridges()["bridges"_L1][0]["dst"_L1].toArray(), QJsonArray{deep});
    }

    void nodesMayShareAnIdentity()
    {
        const QString id = u"6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77"_s;
        QJsonArray nodes;
        for (int i = 0; i < 3; ++i) {
            QJsonObject node = nodeAt(i, u"joy_%1"_s.arg(i));
            node[u"id"_s] = id;
            nodes.append(node);
        }
        OverlayStage stage;
        QVERIFY(stage->fromJson(documentOf(nodes)));
        for (const TouchArea *area : stage.pastilles())
            QCOMPARE(area->id().toString(QUuid::WithoutBraces), id);
        // Only the one that is meant goes.
        stage->removePastille(stage.pastille(1));
        stage.deleteRetired();
        QCOMPARE(stage.titles(), QStringList({u"joy_0"_s, u"joy_2"_s}));
        const QJsonObject saved = stage->toJson();
        QVERIFY(stage->fromJson(saved));
        stage.deleteRetired();
        QCOMPARE(stage->toJson(), saved);
    }

    void anyTypeMayStandAnywhereInADocument()
    {
        const QJsonObject good = object(
            "{'type':'InteractiveOverlay','version':1,'coordSpace':'widget','overlaySize':{'w':100,'h':50},"
            "'bgMode':'Cover','nodes':[{'id':'6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77','title':'joy_1','state':'"
            "Active',"
            "'freeAspect':true,'pastille':{'x':0.1,'y':0.2,'w':0.3,'h':0.4},'toolbox':{'x':1,'y':1,'w':1,'h':"
            "1},"
            "'src':{'deviceType':'gamepade','deviceId':1,'packetId':2,'stringKey':'but_1','isJoy':true}}]}");
        OverlayStage stage;
        QPixmap pixmap(300, 200);
        pixmap.fill(Qt::gray);
        stage->setBackgroundPixmap(pixmap);
        int read = 0;
        forEachChanged(good, standIns(), [&](const QJsonValue &changed) {
            const QJsonObject document = changed.toObject();
            const bool isOne = document["type"_L1] == "InteractiveOverlay"_L1;
            QCOMPARE(stage->fromJson(document), isOne);
            stage.deleteRetired();
            read += isOne;
            const QJsonObject written = stage->toJson();
            QVERIFY(stage->fromJson(written));
            QVERIFY(stage->fromJson(stage->toJson()));
            stage.deleteRetired();
            // A key with a good prefix decides on the kind from the first reading on.
            QJsonObject again = stage->toJson();
            QCOMPARE(again["nodes"_L1].toArray().size(), document["nodes"_L1].toArray().size() * isOne +
                                                             written["nodes"_L1].toArray().size() * !isOne);
            QVERIFY(stage->fromJson(again));
            stage.deleteRetired();
            QCOMPARE(stage->toJson(), again);
            stage->grab();
        });
        QVERIFY(read > 300);
    }

    void anyTypeMayStandAnywhereInAMapping()
    {
        const QJsonObject good = object(
            "{'ref':[{'name':'F','deviceType':'x','params':[{'name':'n','preferredType':'int','default':1}],"
            "'tasks':[{'ref':'go','args':{'v':'param:n'},'when':'x'}]},'G'],"
            "'bridges':[{'src':{'deviceType':'a','deviceId':1,'packetId':'2','stringKey':'joy_1','isJoy':"
            "true},"
            "'dst':[{'ref':'F','action':'G','args':{'n':5}}],'action':'F','args':{'n':4}}]}");
        OverlayStage stage;
        stage.load("[{'title':'joy_1'},{'title':'x'},{'title':'JOY_1'}]");
        int bound = 0;
        forEachChanged(good, standIns(), [&](const QJsonValue &changed) {
            stage->setExternalServices({});
            bound += stage->applyMapping(changed.toObject());
            const QJsonArray bridges = stage->exportBridges()["bridges"_L1].toArray();
            for (const QJsonValue &bridge : bridges) {
                QVERIFY(bridge["src"_L1]["stringKey"_L1].isString());
                QVERIFY(bridge["dst"_L1].isArray());
            }
            stage->applyMapping({{u"bridges"_s, bridges}});
        });
        QVERIFY(bound > 300);
    }

    // Listeners that change the nodes.

    void aListenerMayRemoveNodesAtAnyTime_data()
    {
        QTest::addColumn<Run>("run");
        QTest::newRow("load") << Run([](OverlayStage &stage) {
            QVERIFY(stage->fromJson(documentWith(
                "[{'title':'a'},{'title':'b','state':'Active'},{'title':'c','state':'Listening'}]")));
            // Each went at its creation.
            QVERIFY(stage->toJson()["nodes"_L1].toArray().isEmpty());
            QVERIFY(!stage->listeningPastille());
        });
        QTest::newRow("mapping") << Run([](OverlayStage &stage) {
            stage->applyMapping(object("{'bridges':[{'src':{'stringKey':'a'},'action':'Dire'}]}"));
        });
        QTest::newRow("catalogue") << Run(
            [](OverlayStage &stage) { stage->setExternalServices(someFunctions()); });
        QTest::newRow("binding by title")
            << Run([](OverlayStage &stage) { stage->applyActionToTitle(u"Tirer"_s, u"a"_s); });
    }

    void aListenerMayRemoveNodesAtAnyTime()
    {
        QFETCH(const Run, run);
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (int i = 0; i < 3; ++i)
            stage->addPastille(QPoint(100, 100 + 100 * i), u"a"_s);
        stage->applyActionToTitle(u"Avancer"_s, u"a"_s);
        removeLastAtEachDirty(stage);
        run(stage);
        QVERIFY(stage->toJson()["nodes"_L1].toArray().size() < 3);
        stage->grab();
        stage.deleteRetired();
        QCOMPARE(stage.pastilles().size(), stage->toJson()["nodes"_L1].toArray().size());
        stage->grab();
    }

    void aLoadMakesNoPastilleActiveThatIsRemovedMeanwhile()
    {
        OverlayStage stage;
        QPointer<TouchArea> active;
        QPointer<TouchArea> listening;
        connect(stage.overlay(), &InteractiveOverlay::dirty, this, [&, busy = false]() mutable {
            if (busy || stage.pastilles().size() < 3)
                return;
            const QScopedValueRollback removing(busy, true);
            active = stage.pastille(0);
            listening = stage.pastille(1);
            stage->removePastille(active);
            stage->removePastille(listening);
        });
        QVERIFY(stage->fromJson(documentWith("[{'title':'active','state':'Active'},"
                                             "{'title':'listening','state':'Listening'},{'title':'last'}]")));
        QVERIFY(active && listening);
        QVERIFY(!stage->listeningPastille());
        QCOMPARE(active->state(), TouchArea::Normal);
        QCOMPARE(listening->state(), TouchArea::Normal);
        stage.deleteRetired();
        QCOMPARE(stage.pastilles().size(), 1);
    }

    void aNodeThatIsRemovedMeanwhileKeepsNoOtherFromItsFunction_data()
    {
        QTest::addColumn<Run>("run");
        QTest::addColumn<QString>("function");
        // The last one fills a field, and so its function goes to the ones before it.
        QTest::newRow("catalogue") << Run([](OverlayStage &stage) {
            stage->setExternalServices(someFunctions());
        }) << u"Avancer"_s;
        QTest::newRow("binding by title")
            << Run([](OverlayStage &stage) { stage->applyActionToTitle(u"Tirer"_s, u"a"_s); }) << u"Tirer"_s;
    }

    void aNodeThatIsRemovedMeanwhileKeepsNoOtherFromItsFunction()
    {
        QFETCH(const Run, run);
        QFETCH(const QString, function);
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (const QString &own : {u"Centrer"_s, u"Dire"_s, u"Avancer"_s}) {
            stage->addPastille({}, own);
            stage->applyActionToTitle(own, own);
        }
        for (TouchArea *area : stage.pastilles())
            area->setTitle(u"a"_s);
        TouchArea *first = stage.pastille(0);
        connect(stage.box(0), &ActionToolBox::durty, this, [&] { stage->removePastille(first); });
        run(stage);
        stage.deleteRetired();
        QCOMPARE(stage.functions(), QStringList({function, function}));
    }

    void theBridgeOfANodeThatIsRemovedMeanwhileIsDropped()
    {
        OverlayStage stage;
        stage->addPastille({}, u"joy_1"_s);
        TouchArea *last = stage->addPastille({}, u"joy_41"_s);
        connect(stage.box(0), &ActionToolBox::durty, this, [&] { stage->removePastille(last); });
        QVERIFY(stage->applyMapping(object("{'bridges':[{'src':{'stringKey':'joy_1'},'action':'Dire'},"
                                           "{'src':{'stringKey':'joy_41'},'action':'Tirer'}]}")));
        QCOMPARE(stage.functions(), QStringList({u"Dire"_s, QString()}));
        // The key that it would have been given is not taken either.
        stage->addPastille({}, u"next"_s);
        QCOMPARE(stage.key(0), u"joy_1"_s);
        QCOMPARE(stage.key(1), u"joy_2"_s);
    }

    void nodesThatAreAddedMeanwhileKeepNoneFromTheCatalogue()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (int i = 0; i < 3; ++i)
            stage->addPastille({}, u"a"_s);
        stage->applyActionToTitle(u"Avancer"_s, u"a"_s);
        // So many that the list of nodes needs another place.
        bool added = false;
        connect(stage.overlay(), &InteractiveOverlay::dirty, this, [&] {
            for (int left = std::exchange(added, true) ? 0 : 20; left > 0; --left)
                stage->addPastille({}, u"b"_s);
        });
        QJsonArray more = someFunctions();
        more.append(QJsonObject{{u"name"_s, u"Plus"_s}});
        stage->setExternalServices(more);
        QCOMPARE(stage.boxes().size(), 23);
        for (const ActionToolBox *box : stage.boxes())
            QCOMPARE(box->findChild<QComboBox *>()->count(), 6);
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayLimits)
#include "tst_interactiveoverlaylimits.moc"
