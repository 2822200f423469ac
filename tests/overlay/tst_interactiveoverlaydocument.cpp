// SPDX-License-Identifier: MIT
#include "overlaystage.h"

#include "nodedocument.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

class TestInteractiveOverlayDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    // Writing.

    void anOverlayIsWrittenWhole()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(bluePicture(200, 100));
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

    void withoutAPictureRectangleTheWidgetStandsIn()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(bluePicture(5000, 1)); // contained, no row of it is left
        stage->addPastille(QPoint(188, 148), u"a"_s);
        QCOMPARE(stage.place(0, "pastille"_L1), QRectF(0.25, 0.25, 56 / 640.0, 56 / 480.0));
        QCOMPARE(stage.place(0, "toolbox"_L1).topLeft(), QPointF(280 / 640.0, 140 / 480.0));
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
        const QPointer<TouchArea> old = stage->addPastille(QPoint(100, 100), u"old"_s);
        const QPointer<TouchArea> oldListener = stage->addPastille(QPoint(100, 200), u"old too"_s);
        const QPointer<ActionToolBox> oldBox = stage.box(0);
        old->setActive(true);
        oldListener->startListening();
        stage.takeDirty();
        QVERIFY(
            stage->fromJson(documentWith("[{'title':'new','pastille':{'x':0.5,'y':0.5,'w':0.1,'h':0.1}}]")));
        // The old ones show until the event loop runs, but no lookup meets them.
        QVERIFY(old && old->isVisible());
        QCOMPARE(stage->toJson()["nodes"_L1].toArray().size(), 1);
        QCOMPARE(stage.node(0)["title"_L1], u"new"_s);
        QVERIFY(!stage->listeningPastille());
        stage.takeDirty();
        stage->applyListenedInput(u"joy_1"_s);
        QCOMPARE(stage.takeDirty(), 0);
        QCOMPARE(oldListener->title(), u"old too"_s);
        // The next active one takes over from nobody.
        TouchArea *fresh = stage.pastilles().last();
        Q_EMIT fresh->requestSetActive(fresh, true);
        QCOMPARE(old->state(), TouchArea::Active);
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
        QVERIFY(!old && !oldListener && !oldBox);
        QCOMPARE(stage.titles(), QStringList({u"new"_s}));
        QCOMPARE(stage.boxes().size(), 1);
    }

    void oldConnectorsGoAtOnce()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"old"_s);
        const QRect box = stage.box(0)->geometry();
        QVERIFY(stage->fromJson(documentWith("[]")));
        QVERIFY(stage.box(0));
        const QImage image = stage->grab().toImage();
        QVERIFY(image.pixelColor(box.center().x(), box.bottom() + 6) != QColor(Qt::white));
    }

    void oldOnesGoFromTheLastToTheFirst()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        stage->addPastille({}, u"b"_s);
        QStringList gone;
        for (qsizetype i = 0; i < 2; ++i) {
            connect(stage.pastille(i), &QObject::destroyed, this,
                    [&, i] { gone << u"pastille %1"_s.arg(i); });
            connect(stage.box(i), &QObject::destroyed, this, [&, i] { gone << u"box %1"_s.arg(i); });
        }
        stage.load("[]");
        QCOMPARE(gone, QStringList({u"box 1"_s, u"pastille 1"_s, u"box 0"_s, u"pastille 0"_s}));
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
        QTest::newRow("one of each state")
            << QByteArray("[{'title':'a','state':'Listening'},{'title':'b','state':'Active'}]") << 7;
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

    // There and back.

    void whatIsWrittenReadsBack()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(bluePicture(300, 200));
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
