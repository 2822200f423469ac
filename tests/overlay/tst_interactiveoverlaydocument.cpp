// SPDX-License-Identifier: MIT
#include "overlaystage.h"

#include "testmain.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace
{
QJsonObject document(const QByteArray &nodes, const QByteArray &more = "'version':2")
{
    return object("{'type':'InteractiveOverlay'," + more + ",'nodes':" + nodes + "}");
}

QPixmap picture(int width, int height)
{
    QPixmap pixmap(width, height);
    pixmap.fill(Qt::darkBlue);
    return pixmap;
}
} // namespace

class TestInteractiveOverlayDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    // Writing.

    void anOverlayIsWrittenWhole()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(picture(200, 100));
        stage->setBackgroundScaleMode(BackgroundScaleMode::Stretch);
        TouchArea *area = stage->addPastille(QPoint(188, 148), u"Gâchette"_s);
        area->setFreeAspect(true);
        area->setActive(true);
        const QSize box = stage.box(0)->size();
        QCOMPARE(stage->toJson(),
                 object("{'type':'InteractiveOverlay','version':2,'coordSpace':'background',"
                        "'overlaySize':{'w':640,'h':480},'bgMode':'Stretch','nodes':[{'id':'" +
                        area->id().toByteArray(QUuid::WithoutBraces) +
                        "','title':'Gâchette','state':'Active','freeAspect':true,"
                        "'pastille':{'x':0.25,'y':0.25,'w':0.0875,'h':" +
                        QByteArray::number(56 / 480.0, 'g', 17) +
                        "},'toolbox':{'x':0.4375,'y':" + QByteArray::number(140 / 480.0, 'g', 17) +
                        ",'w':" + QByteArray::number(box.width() / 640.0, 'g', 17) +
                        ",'h':0.075},'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,"
                        "'stringKey':'joy_0','isJoy':true}}]}"));
    }

    void theTextIsIndentedOrCompact()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        const QJsonDocument whole(stage->toJson());
        QCOMPARE(stage->toJsonBytes(true), whole.toJson(QJsonDocument::Indented));
        QCOMPARE(stage->toJsonBytes(false), whole.toJson(QJsonDocument::Compact));
    }

    void noActionIsWritten()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"a"_s);
        const QByteArray before = stage->toJsonBytes(false);
        stage.box(0)->applyConfig(object("{'ref':'Dire','args':{'texte':'x'}}"));
        QCOMPARE(stage->toJsonBytes(false), before);
    }

    // Refusal.

    void anotherTypeChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("empty object") << QByteArray("{}");
        QTest::newRow("no type") << QByteArray("{'nodes':[]}");
        QTest::newRow("other type") << QByteArray("{'type':'interactiveOverlay','nodes':[]}");
    }

    void anotherTypeChangesNothing()
    {
        QFETCH(const QByteArray, json);
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        stage.pastille(0)->startListening();
        const QJsonObject before = stage->toJson();
        stage.takeDirty();
        QVERIFY(!stage->fromJson(object(json)));
        stage.deleteRetired();
        QCOMPARE(stage->toJson(), before);
        QCOMPARE(stage->listeningPastille(), stage.pastille(0));
        QCOMPARE(stage.takeDirty(), 0);
    }

    // Replacing.

    void whatWasThereIsReplaced()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"old"_s);
        const QPointer<TouchArea> old = stage.pastille(0);
        const QPointer<ActionToolBox> oldBox = stage.box(0);
        old->setActive(true);
        stage.takeDirty();
        QVERIFY(stage->fromJson(document("[{'title':'new','pastille':{'x':0.5,'y':0.5,'w':0.1,'h':0.1}}]")));
        // The old ones show until the event loop runs, but no lookup meets them.
        QVERIFY(old && old->isVisible());
        QCOMPARE(stage->toJson()["nodes"_L1].toArray().size(), 1);
        QCOMPARE(stage.node(0)["title"_L1], u"new"_s);
        stage.takeDirty();
        old->startListening();
        old->setState(TouchArea::Normal);
        Q_EMIT old->moved();
        Q_EMIT old->requestDelete(old);
        Q_EMIT oldBox->durty();
        QCOMPARE(stage.takeDirty(), 0);
        QVERIFY(!stage->listeningPastille());
        QVERIFY(old);

        stage.deleteRetired();
        QVERIFY(!old && !oldBox);
        QCOMPARE(stage.titles(), QStringList({u"new"_s}));
        QCOMPARE(stage.boxes().size(), 1);
    }

    void oldConnectorsGoAtOnce()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"old"_s);
        const QRect box = stage.box(0)->geometry();
        QVERIFY(stage->fromJson(document("[]")));
        QVERIFY(stage.box(0));
        const QImage image = stage->grab().toImage();
        QVERIFY(image.pixelColor(box.center().x(), box.bottom() + 6) != QColor(Qt::white));
    }

    void theCountersKeepTheirValues()
    {
        OverlayStage stage;
        stage->addPastille({}, QString());
        stage->addPastille({}, QString());
        stage.load("[{'title':'x'},{'title':''}]");
        // Two numbers went before, one goes with each creation.
        QCOMPARE(stage.key(0), u"joy_2"_s);
        QCOMPARE(stage.key(1), u"joy_3"_s);
        QCOMPARE(stage.titles(), QStringList({u"x"_s, u"Bouton 3"_s}));
        stage.load("[]");
        stage->addPastille({}, QString());
        QCOMPARE(stage.key(0), u"joy_4"_s);
        QCOMPARE(stage.titles(), QStringList({u"Bouton 4"_s}));
    }

    // Nodes.

    void aNodeIsReadWhole()
    {
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        stage.load(
            "[{'id':'6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77','title':'Tir','state':'active','freeAspect':true,"
            "'pastille':{'x':0.25,'y':0.5,'w':0.125,'h':0.0625},"
            "'toolbox':{'x':0.5,'y':0.5,'w':0.4,'h':0.075},"
            "'src':{'deviceType':'volant','deviceId':3,'packetId':7,'stringKey':'but_4','isJoy':true}}]");
        const TouchArea *area = stage.pastille(0);
        QCOMPARE(area->id(), QUuid(u"{6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77}"_s));
        QCOMPARE(area->title(), u"Tir"_s);
        QCOMPARE(area->state(), TouchArea::Active);
        QVERIFY(area->freeAspect());
        QCOMPARE(area->geometry(), QRect(160, 240, 80, 30));
        QCOMPARE(stage.box(0)->geometry(), QRect(320, 240, 256, 36));
        QVERIFY(area->isVisible() && stage.box(0)->isVisible());
        // In the mode of the overlay.
        QCOMPARE(area->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(
            stage.node(0)["src"_L1].toObject(),
            object("{'deviceType':'volant','deviceId':3,'packetId':7,'stringKey':'but_4','isJoy':false}"));
    }

    void whatIsNoNodeIsAPixelInTheCorner_data()
    {
        QTest::addColumn<QByteArray>("node");
        QTest::newRow("empty object") << QByteArray("{}");
        QTest::newRow("number") << QByteArray("5");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("array") << QByteArray("[]");
        QTest::newRow("wrong types") << QByteArray(
            "{'id':4,'title':[],'state':{},'freeAspect':1,'pastille':'x',"
            "'toolbox':[1],'src':[]}");
    }

    void whatIsNoNodeIsAPixelInTheCorner()
    {
        QFETCH(const QByteArray, node);
        OverlayStage stage;
        stage->setBackgroundPixmap(picture(100, 100)); // 480 by 480 from (80, 0)
        stage.load("[" + node + "]");
        const TouchArea *area = stage.pastille(0);
        QCOMPARE(area->title(), u"Bouton"_s);
        QCOMPARE(area->geometry(), QRect(80, 0, 1, 1));
        QCOMPARE(stage.box(0)->pos(), QPoint(80, 0));
        QVERIFY(!area->id().isNull());
        QCOMPARE(area->state(), TouchArea::Normal);
        QCOMPARE(stage.key(0), u"joy_0"_s);
        // Its place is none that could follow a resize; what is on screen is written.
        stage->resize(1000, 1000);
        QCOMPARE(area->geometry(), QRect(80, 0, 1, 1));
        QCOMPARE(stage.place(0, "pastille"_L1), QRectF(80 / 1000.0, 0, 1 / 1000.0, 1 / 1000.0));
    }

    void aRoundPastilleTakesTheSizeOfTheDocument()
    {
        OverlayStage stage;
        stage.load("[{'pastille':{'x':0,'y':0,'w':0.25,'h':0.125}}]");
        QCOMPARE(stage.pastille(0)->size(), QSize(160, 60));
        QVERIFY(!stage.pastille(0)->freeAspect());
    }

    void anIdentityIsKeptOrFresh()
    {
        OverlayStage stage;
        stage.load(
            "[{'id':'{6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77}'},{'id':'first'},{},"
            "{'id':'00000000-0000-0000-0000-000000000000'},{'id':'6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77'}]");
        const QUuid told(u"{6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77}"_s);
        QCOMPARE(stage.pastille(0)->id(), told);
        for (const int fresh : {1, 2, 3}) {
            QVERIFY(!stage.pastille(fresh)->id().isNull());
            QVERIFY(stage.pastille(fresh)->id() != told);
        }
        // Twice in the document is twice on the picture.
        QCOMPARE(stage.pastille(4)->id(), told);
    }

    void anEmptyTitleFollowsTheFunction()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage.load("[{'title':''},{'title':'Tir'}]");
        stage.box(0)->applyConfig(object("{'ref':'Centrer'}"));
        stage.box(1)->applyConfig(object("{'ref':'Centrer'}"));
        QCOMPARE(stage.titles(), QStringList({u"Centrer"_s, u"Tir"_s}));
    }

    void toolBoxesComeBackUnbound()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"a"_s);
        stage.box(0)->applyConfig(object("{'ref':'Centrer'}"));
        stage.load(QJsonDocument(stage->toJson()["nodes"_L1].toArray())
                       .toJson(QJsonDocument::Compact)
                       .replace('"', '\''));
        QCOMPARE(stage.functions(), QStringList({QString()}));
        stage.box(0)->applyConfig(object("{'ref':'Tirer'}"));
        QCOMPARE(stage.box(0)->config()["args"_L1].toObject(), object("{'feu':false}"));
    }

    // The input.

    void theInputIsStoredAndToldToTheToolBox_data()
    {
        QTest::addColumn<QByteArray>("node");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("isJoy");
        const auto row = [](const char *name, const char *node, const QString &key, bool isJoy) {
            QTest::newRow(name) << QByteArray(node) << key << isJoy;
        };
        row("source, axis", "{'title':'but_9','src':{'stringKey':'joy_5'}}", u"joy_5"_s, true);
        row("source, button", "{'src':{'stringKey':'but_5','isJoy':true}}", u"but_5"_s, false);
        row("source, as stored", "{'src':{'stringKey':' But_05'}}", u" But_05"_s, false);
        row("source, word", "{'src':{'stringKey':'Tir','isJoy':false}}", u"Tir"_s, false);
        row("source without key", "{'title':'but_9','src':{'packetId':4}}", u"joy_0"_s, true);
        row("source without key, button", "{'src':{'isJoy':false}}", u"joy_0"_s, false);
        row("title, axis", "{'title':' JOY_05'}", u"joy_5"_s, true);
        row("title, button", "{'title':'but_5','src':{}}", u"but_5"_s, false);
        row("title, bad axis", "{'title':'joy_x'}", u"joy_0"_s, true);
        row("title, bad button", "{'title':'but_x'}", u"joy_0"_s, false);
        row("title, word", "{'title':'Tir'}", u"joy_0"_s, true);
    }

    void theInputIsStoredAndToldToTheToolBox()
    {
        QFETCH(const QByteArray, node);
        QFETCH(const bool, isJoy);
        OverlayStage stage;
        stage->setExternalServices(array("[{'name':'F','params':[{'name':'n','preferredType':'int'},"
                                         "{'name':'on','preferredType':'bool'}]}]"));
        stage.load("[" + node + "]");
        QTEST(stage.key(0), "key");
        QCOMPARE(stage.node(0)["src"_L1]["isJoy"_L1].toBool(!isJoy), isJoy);
        stage.box(0)->applyConfig(object("{'ref':'F'}"));
        QCOMPARE(stage.box(0)->config()["args"_L1].toObject(),
                 object(isJoy ? "{'n':'arg_0','on':false}" : "{'n':0,'on':'arg_0'}"));
    }

    void knownInputsRaiseTheCounters()
    {
        OverlayStage stage;
        stage.load("[{'src':{'stringKey':'joy_7'}},{'title':'joy_9'},{'src':{'stringKey':'but_40'}}]");
        stage->addPastille({}, u"next"_s);
        QCOMPARE(stage.key(3), u"joy_11"_s); // 9 and, for the third node's creation, 10 are taken
    }

    void smallNumbersRaiseNothing()
    {
        OverlayStage stage;
        stage.load("[{},{},{'title':'joy_0'},{'title':'joy_-5'}]");
        stage->addPastille({}, u"next"_s);
        QCOMPARE(stage.key(4), u"joy_4"_s);
    }

    void theGreatestIndexHasNoNext()
    {
        OverlayStage stage;
        stage.load("[{'title':'joy_2147483647'},{'title':'but_2147483647'},{'title':'joy_99999999999'}]");
        QCOMPARE(stage.key(0), u"joy_2147483647"_s);
        stage->addPastille({}, u"next"_s);
        QCOMPARE(stage.key(3), u"joy_2147483647"_s);
    }

    void aLearnedButtonStaysAnAxisUntilAMappingSaysOtherwise()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        stage.pastille(0)->startListening();
        stage->applyListenedInput(u"but_7"_s);
        const QJsonObject saved = stage->toJson();
        QCOMPARE(saved["nodes"_L1][0]["title"_L1], u"but_7"_s);
        QCOMPARE(saved["nodes"_L1][0]["src"_L1]["stringKey"_L1], u"joy_0"_s);
        QCOMPARE(saved["nodes"_L1][0]["src"_L1]["isJoy"_L1], QJsonValue(true));

        QVERIFY(stage->fromJson(saved));
        stage.deleteRetired();
        QCOMPARE(stage.titles(), QStringList({u"but_7"_s}));
        QCOMPARE(stage.key(0), u"joy_0"_s);
        QCOMPARE(stage.node(0)["src"_L1]["isJoy"_L1], QJsonValue(true));

        QVERIFY(stage->applyMapping(object("{'bridges':[{'src':{'stringKey':'but_7'},'action':'x'}]}")));
        QCOMPARE(stage.key(0), u"but_7"_s);
        QCOMPARE(stage.node(0)["src"_L1]["isJoy"_L1], QJsonValue(false));
    }

    // States.

    void theFirstOfEachStateWins()
    {
        OverlayStage stage;
        stage.load("[{'state':'Normal'},{'state':'active'},{'state':'LISTENING'},{'state':'Active'},"
                   "{'state':' listening '}]");
        QList<TouchArea::State> states;
        for (const TouchArea *area : stage.pastilles())
            states.append(area->state());
        QCOMPARE(states, QList<TouchArea::State>({TouchArea::Normal, TouchArea::Active, TouchArea::Listening,
                                                  TouchArea::Normal, TouchArea::Normal}));
        QCOMPARE(stage->listeningPastille(), stage.pastille(2));
        // The references are set: the next one takes over.
        Q_EMIT stage.pastille(0)->requestSetActive(stage.pastille(0), true);
        QCOMPARE(stage.pastille(1)->state(), TouchArea::Normal);
    }

    void aDocumentThatListensLearns()
    {
        OverlayStage stage;
        stage.load("[{'title':'a','state':'Listening'}]");
        stage->applyListenedInput(u"but_2"_s);
        QCOMPARE(stage.titles(), QStringList({u"but_2"_s}));
    }

    // What a load says.

    void aLoadIsDirtyForEachThingItDoes_data()
    {
        QTest::addColumn<QByteArray>("nodes");
        QTest::addColumn<int>("dirty");
        QTest::newRow("nothing") << QByteArray("[]") << 0;
        QTest::newRow("one node: its creation and its input") << QByteArray("[{'title':'a'}]") << 2;
        QTest::newRow("two nodes") << QByteArray("[{'title':'a'},{'title':'b'}]") << 4;
        QTest::newRow("an active one: its state, and once more")
            << QByteArray("[{'title':'a','state':'Active'}]") << 4;
        QTest::newRow("a listening one: its state") << QByteArray("[{'title':'a','state':'Listening'}]") << 3;
        QTest::newRow("two of a title: the second reaches the first")
            << QByteArray("[{'title':'a'},{'title':'A'}]") << 5;
    }

    void aLoadIsDirtyForEachThingItDoes()
    {
        QFETCH(const QByteArray, nodes);
        OverlayStage stage;
        stage.load(nodes);
        QTEST(stage.takeDirty(), "dirty");
    }

    void likeTitledNodesComeBackInStep()
    {
        // A function that every tool box chooses by itself, with a field for each kind of input.
        OverlayStage stage;
        stage->setExternalServices(
            array("[{'name':'none','params':[{'name':'n','preferredType':'int'},"
                  "{'name':'m','preferredType':'int'},{'name':'on','preferredType':'bool'}]}]"));
        stage.load("[{'title':'a'},{'title':'b'},{'title':'A','src':{'stringKey':'but_1'}}]");
        // The last one of a title gives all its fields to the ones before it.
        QCOMPARE(stage.box(0)->config(), stage.box(2)->config());
        QCOMPARE(stage.box(2)->config()["args"_L1].toObject(), object("{'n':'arg_0','m':0,'on':'arg_0'}"));
        QCOMPARE(stage.box(1)->config()["args"_L1].toObject(),
                 object("{'n':'arg_0','m':'arg_0','on':false}"));
    }

    // Geometry.

    void theOverlaysOwnModePlacesTheNodes()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(picture(100, 100));
        const QJsonObject saved =
            document("[{'pastille':{'x':0.5,'y':0.5,'w':0.25,'h':0.25}}]", "'version':2,'bgMode':'Stretch'");
        QVERIFY(stage->fromJson(saved));
        stage.deleteRetired();
        QCOMPARE(stage->backgroundScaleMode(), BackgroundScaleMode::Contain);
        QCOMPARE(stage.pastille(0)->geometry(), QRect(320, 240, 120, 120));
        QCOMPARE(stage->toJson()["bgMode"_L1], u"Contain"_s);
    }

    void anOlderDocumentIsConverted()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(picture(200, 100));
        // Saved in 1000 by 1000, stretched: a quarter from the left is a quarter of the picture.
        QVERIFY(
            stage->fromJson(document("[{'pastille':{'x':0.25,'y':0.5,'w':0.1,'h':0.2}}]",
                                     "'version':1,'overlaySize':{'w':1000,'h':1000},'bgMode':'Stretch'")));
        stage.deleteRetired();
        // The picture is 640 by 320 here, 80 from the top.
        QCOMPARE(stage.pastille(0)->geometry(), QRect(160, 240, 64, 64));
        QCOMPARE(stage.place(0, "pastille"_L1), QRectF(0.25, 0.5, 0.1, 0.2));
        QCOMPARE(stage->toJson()["version"_L1], QJsonValue(2));
    }

    void anOverlayWithoutSizePlacesInOnePixel()
    {
        InteractiveOverlay overlay;
        overlay.resize(0, 0);
        QVERIFY(overlay.fromJson(document("[{'pastille':{'x':0.5,'y':0.25,'w':0.25,'h':0.25}}]")));
        const auto *area = overlay.findChild<TouchArea *>();
        QCOMPARE(area->geometry(), QRect(1, 0, 1, 1));
        // What was read is written again.
        QCOMPARE(overlay.toJson()["nodes"_L1][0]["pastille"_L1].toObject(),
                 object("{'x':0.5,'y':0.25,'w':0.25,'h':0.25}"));
    }

    void hugePlacesAreHeldWithinWidgets()
    {
        OverlayStage stage;
        stage.load("[{'pastille':{'x':1e308,'y':-1e308,'w':1e308,'h':1e308},"
                   "'toolbox':{'x':-1e308,'y':1e308,'w':1e308,'h':1e308}},"
                   "{'pastille':{'x':-1e308,'y':-1e308,'w':-1e308,'h':-1e308}}]");
        QVERIFY(stage.pastille(0)->x() > 1'000'000);
        QVERIFY(stage.pastille(0)->width() > 1'000'000);
        QCOMPARE(stage.pastille(1)->size(), QSize(1, 1));
        stage->grab();
        stage->resize(5000, 5000);
        stage->grab();
        const QJsonObject again = stage->toJson();
        QVERIFY(stage->fromJson(again));
        stage.deleteRetired();
        QCOMPARE(stage->toJson(), again);
    }

    // There and back.

    void whatIsWrittenReadsBack()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(picture(300, 200));
        stage.load(
            "[{'id':'6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77','title':'Gâchette','state':'Active',"
            "'freeAspect':true,'pastille':{'x':0.1,'y':0.2,'w':0.3,'h':0.4},"
            "'toolbox':{'x':1.1,'y':-2.2,'w':3.3,'h':4.4},"
            "'src':{'deviceType':'volant','deviceId':3,'packetId':7,'stringKey':'but_4','isJoy':false}},"
            "{'id':'11111111-8a53-4f2b-9d2f-0c5a6f8e1b77','title':'joy_2','state':'Listening',"
            "'pastille':{'x':0.7,'y':0.1,'w':0.01,'h':0.02},'toolbox':{'x':0,'y':0,'w':1,'h':1},"
            "'src':{'deviceType':'gamepade','deviceId':-1,'packetId':0,'stringKey':'Tir','isJoy':false}}]");
        const QJsonObject written = stage->toJson();

        OverlayStage other;
        other->resize(320, 999);
        QVERIFY(other->fromJson(written));
        other.deleteRetired();
        QCOMPARE(other->toJson()["nodes"_L1], written["nodes"_L1]);
    }

    void loadingTwiceIsLoadingOnce()
    {
        OverlayStage stage;
        stage.load("[{'title':'a','pastille':{'x':0.1,'y':0.2,'w':0.3,'h':0.4}},{},{'title':'but_x'},7]");
        QVERIFY(stage->fromJson(stage->toJson()));
        stage.deleteRetired();
        const QJsonObject once = stage->toJson();
        QVERIFY(stage->fromJson(once));
        stage.deleteRetired();
        QCOMPARE(stage->toJson(), once);
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayDocument)
#include "tst_interactiveoverlaydocument.moc"
