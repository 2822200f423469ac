// SPDX-License-Identifier: MIT
// What becomes of each node of a document: its pastille, its tool box, its input, its state.
#include "overlaystage.h"

#include "nodedocument.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

class TestInteractiveOverlayDocumentNodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

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
        stage->setBackgroundPixmap(bluePicture(100, 100)); // 480 by 480 from (80, 0)
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
        QCOMPARE(stage.box(0)->pos(), QPoint(80, 0));
        QCOMPARE(stage.place(0, "pastille"_L1), QRectF(80 / 1000.0, 0, 1 / 1000.0, 1 / 1000.0));
        QCOMPARE(stage.place(0, "toolbox"_L1).topLeft(), QPointF(80 / 1000.0, 0));
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

    void theActiveOneComesBackFirst()
    {
        OverlayStage stage;
        QStringList states;
        connect(stage.overlay(), &InteractiveOverlay::dirty, this, [&] {
            QString all;
            for (const TouchArea *area : stage.pastilles())
                all += QString::number(area->state());
            states.append(all);
        });
        stage.load("[{'title':'a','state':'Listening'},{'title':'b','state':'Active'}]");
        QCOMPARE(states.mid(4), QStringList({u"02"_s, u"02"_s, u"12"_s}));
    }

    void aDocumentThatListensLearns()
    {
        OverlayStage stage;
        stage.load("[{'title':'a','state':'Listening'}]");
        stage->applyListenedInput(u"but_2"_s);
        QCOMPARE(stage.titles(), QStringList({u"but_2"_s}));
    }

    // Geometry.

    void theOverlaysOwnModePlacesTheNodes()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(bluePicture(100, 100));
        const QJsonObject saved = documentWith("[{'pastille':{'x':0.5,'y':0.5,'w':0.25,'h':0.25}}]",
                                               "'version':2,'bgMode':'Stretch'");
        QVERIFY(stage->fromJson(saved));
        stage.deleteRetired();
        QCOMPARE(stage->backgroundScaleMode(), BackgroundScaleMode::Contain);
        QCOMPARE(stage.pastille(0)->geometry(), QRect(320, 240, 120, 120));
        QCOMPARE(stage->toJson()["bgMode"_L1], u"Contain"_s);
    }

    void anOlderDocumentIsConverted()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(bluePicture(200, 100));
        // Saved in 1000 by 1000, stretched: a quarter from the left is a quarter of the picture.
        QVERIFY(stage->fromJson(
            documentWith("[{'pastille':{'x':0.25,'y':0.5,'w':0.1,'h':0.2}}]",
                         "'version':1,'overlaySize':{'w':1000,'h':1000},'bgMode':'Stretch'")));
        stage.deleteRetired();
        // The picture is 640 by 320 here, 80 from the top.
        QCOMPARE(stage.pastille(0)->geometry(), QRect(160, 240, 64, 64));
        QCOMPARE(stage.place(0, "pastille"_L1), QRectF(0.25, 0.5, 0.1, 0.2));
        QCOMPARE(stage->toJson()["version"_L1], QJsonValue(2));
    }

    void aPictureWithoutAreaPlacesNothing()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(bluePicture(5000, 1)); // contained, no row of it is left
        stage.load("[{'pastille':{'x':0.5,'y':0.25,'w':0.25,'h':0.25},"
                   "'toolbox':{'x':0.5,'y':0.5,'w':0.5,'h':0.075}}]");
        // As they were made, around the corner.
        QCOMPARE(stage.pastille(0)->geometry(), QRect(-28, -28, 56, 56));
        QCOMPARE(stage.box(0)->pos(), QPoint(92, -8));
        // A move that has no picture to be measured on leaves what was read.
        Q_EMIT stage.pastille(0)->moved();
        Q_EMIT stage.box(0)->moved();
        QCOMPARE(stage.place(0, "pastille"_L1), QRectF(0.5, 0.25, 0.25, 0.25));
        QCOMPARE(stage.place(0, "toolbox"_L1), QRectF(0.5, 0.5, 0.5, 0.075));
        stage->setBackgroundPixmap(QPixmap());
        QCOMPARE(stage.pastille(0)->geometry(), QRect(320, 120, 160, 120));
        QCOMPARE(stage.box(0)->geometry(), QRect(320, 240, 320, 36));
    }

    void anOverlayWithoutSizePlacesInOnePixel()
    {
        const QJsonObject pastille = object("{'x':0.5,'y':0.25,'w':0.25,'h':0.25}");
        const QJsonObject toolbox = object("{'x':0.5,'y':0.5,'w':0.5,'h':0.075}");
        InteractiveOverlay overlay;
        overlay.resize(0, 0);
        QVERIFY(
            overlay.fromJson(documentOf({QJsonObject{{u"pastille"_s, pastille}, {u"toolbox"_s, toolbox}}})));
        auto *area = overlay.findChild<TouchArea *>();
        auto *box = overlay.findChild<ActionToolBox *>();
        QCOMPARE(area->geometry(), QRect(1, 0, 1, 1));
        QCOMPARE(box->pos(), QPoint(1, 1));
        // What was read is written again, also after moves that nothing can be measured on.
        const auto stored = [&](QLatin1StringView what) {
            return overlay.toJson()["nodes"_L1][0][what].toObject();
        };
        QCOMPARE(stored("pastille"_L1), pastille);
        QCOMPARE(stored("toolbox"_L1), toolbox);
        Q_EMIT area->moved();
        Q_EMIT box->moved();
        QCOMPARE(stored("pastille"_L1), pastille);
        QCOMPARE(stored("toolbox"_L1), toolbox);
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
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayDocumentNodes)
#include "tst_interactiveoverlaydocumentnodes.moc"
