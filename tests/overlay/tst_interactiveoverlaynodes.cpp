// SPDX-License-Identifier: MIT
#include "overlaystage.h"

#include "testmain.h"

#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

namespace
{
QPixmap picture(int width, int height)
{
    QPixmap pixmap(width, height);
    pixmap.fill(Qt::darkBlue);
    return pixmap;
}
} // namespace

class TestInteractiveOverlayNodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aNewOverlayIsEmptyAndInEditMode()
    {
        const InteractiveOverlay overlay;
        QCOMPARE(overlay.mode(), InteractiveOverlay::Edit);
        QCOMPARE(overlay.backgroundScaleMode(), BackgroundScaleMode::Contain);
        QVERIFY(overlay.externalServices().isEmpty());
        QVERIFY(!overlay.listeningPastille());
        QVERIFY(!overlay.testAttribute(Qt::WA_StyledBackground));
        QVERIFY(overlay.testAttribute(Qt::WA_MouseTracking));
        QCOMPARE(overlay.toJson()["nodes"_L1].toArray(), QJsonArray());
    }

    void theHostsSeeItsMetaObject()
    {
        const QMetaObject &meta = InteractiveOverlay::staticMetaObject;
        QCOMPARE(meta.superClass()->className(), "OverlayLines");
        const QMetaEnum mode = meta.enumerator(meta.indexOfEnumerator("Mode"));
        QCOMPARE(mode.keyToValue("Edit"), 0);
        QCOMPARE(mode.keyToValue("Normal"), 1);
        const QMetaProperty services = meta.property(meta.indexOfProperty("externalServices"));
        QVERIFY(services.isReadable() && services.isWritable() && services.hasNotifySignal());
        QCOMPARE(services.notifySignal().methodSignature(), "externalServicesChanged()");
        QCOMPARE(services.metaType(), QMetaType::fromType<QJsonArray>());

        QByteArrayList names;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            names.append(meta.method(i).methodSignature());
        QCOMPARE(names, QByteArrayList({"pastilleActivated(QUuid,QString)", "dirty()",
                                        "externalServicesChanged()", "openFirstToolboxSettings()"}));
    }

    // Creation.

    void aPastilleIsCentredWithItsToolBoxBesideIt()
    {
        OverlayStage stage;
        QVERIFY(stage.exposed());
        TouchArea *area = stage->addPastille(QPoint(301, 200), u"joy_1"_s);
        QCOMPARE(area, stage.pastille(0));
        QCOMPARE(area->parentWidget(), stage.overlay());
        QCOMPARE(area->geometry(), QRect(273, 172, 56, 56));
        QCOMPARE(stage.box(0)->pos(), QPoint(393, 192));
        QVERIFY(area->isVisible());
        QVERIFY(stage.box(0)->isVisible());
        QCOMPARE(stage.box(0)->findChild<QLabel *>()->text(), u"Action"_s);
        QCOMPARE(stage.takeDirty(), 1);
    }

    void aConnectorRunsUnderTheToolBox()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"joy_1"_s);
        const QRect box = stage.box(0)->geometry();
        const QImage image = stage->grab().toImage();
        QCOMPARE(image.pixelColor(box.center().x(), box.bottom() + 6), QColor(Qt::white));
        QVERIFY(image.pixelColor(box.center().x(), box.bottom() + 10) != QColor(Qt::white));
    }

    void aPastilleWithoutATitleIsNumbered()
    {
        OverlayStage stage;
        stage->addPastille({}, QString());
        stage->addPastille({}, u"joy_3"_s);
        stage->addPastille({}, QString());
        // The number is used up by the pastilles that show it alone.
        QCOMPARE(stage.titles(), QStringList({u"Bouton 1"_s, u"joy_3"_s, u"Bouton 2"_s}));
    }

    void aPastilleWithoutATitleTakesThatOfItsFunction()
    {
        OverlayStage stage;
        // The one function that a tool box chooses by itself.
        stage->setExternalServices(array("[{'name':'None'}]"));
        stage->addPastille({}, QString());
        stage->addPastille({}, u"joy_3"_s);
        QCOMPARE(stage.titles(), QStringList({u"None"_s, u"joy_3"_s}));
        stage->setExternalServices({});
        stage.box(0)->applyConfig({});
        stage->addPastille({}, QString());
        QCOMPARE(stage.titles().last(), u"Bouton 1"_s);
    }

    void everyCreationUsesUpOneAxis()
    {
        OverlayStage stage;
        stage->addPastille({}, u"but_7"_s);
        stage->addPastille({}, u"joy_9"_s);
        stage->addPastille({}, QString());
        QCOMPARE(stage.key(0), u"joy_0"_s);
        QCOMPARE(stage.key(1), u"joy_1"_s);
        QCOMPARE(stage.key(2), u"joy_2"_s);
        QCOMPARE(
            stage.node(1)["src"_L1].toObject(),
            object("{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'joy_1','isJoy':true}"));
        // Removing gives none back.
        stage->removePastille(stage.pastille(2));
        stage->addPastille({}, QString());
        QCOMPARE(stage.key(2), u"joy_3"_s);
    }

    void aNewPastilleTakesTheModesLook_data()
    {
        QTest::addColumn<InteractiveOverlay::Mode>("mode");
        QTest::addColumn<Qt::CursorShape>("area");
        QTest::addColumn<Qt::CursorShape>("box");
        QTest::newRow("edit") << InteractiveOverlay::Edit << Qt::OpenHandCursor << Qt::OpenHandCursor;
        QTest::newRow("normal") << InteractiveOverlay::Normal << Qt::PointingHandCursor << Qt::ArrowCursor;
    }

    void aNewPastilleTakesTheModesLook()
    {
        QFETCH(const InteractiveOverlay::Mode, mode);
        OverlayStage stage;
        stage->setMode(mode);
        stage->addPastille(QPoint(100, 100), u"joy_1"_s);
        QTEST(stage.pastille(0)->cursor().shape(), "area");
        QTEST(stage.box(0)->cursor().shape(), "box");
    }

    void aNewToolBoxHasTheCatalogue()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"joy_1"_s);
        stage.box(0)->applyConfig(object("{'ref':'Tirer'}"));
        QCOMPARE(stage.box(0)->config(), object("{'ref':'Tirer','action':'Tirer','args':{'feu':false}}"));
    }

    // The mode.

    void aChangeOfModeReachesAllAndSaysNothing()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage->addPastille(QPoint(100, 200), u"b"_s);
        stage.takeDirty();
        stage->setMode(InteractiveOverlay::Normal);
        QCOMPARE(stage->mode(), InteractiveOverlay::Normal);
        for (const TouchArea *area : stage.pastilles())
            QCOMPARE(area->cursor().shape(), Qt::PointingHandCursor);
        for (const ActionToolBox *box : stage.boxes())
            QCOMPARE(box->cursor().shape(), Qt::ArrowCursor);
        stage->setMode(InteractiveOverlay::Edit);
        for (const TouchArea *area : stage.pastilles())
            QCOMPARE(area->cursor().shape(), Qt::OpenHandCursor);
        for (const ActionToolBox *box : stage.boxes())
            QCOMPARE(box->cursor().shape(), Qt::OpenHandCursor);
        QCOMPARE(stage.takeDirty(), 0);
    }

    void theSameModeTouchesNothing()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage.pastille(0)->setCursor(Qt::WaitCursor);
        stage->setMode(InteractiveOverlay::Edit);
        QCOMPARE(stage.pastille(0)->cursor().shape(), Qt::WaitCursor);
    }

    void aPressIsReportedInNormalModeAlone()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"joy_1"_s);
        const QUuid id = stage.pastille(0)->id();
        QSignalSpy activated(stage.overlay(), &InteractiveOverlay::pastilleActivated);
        stage.press(QPoint(100, 100));
        stage.release(QPoint(100, 100));
        QCOMPARE(activated.size(), 0);
        // A pastille that is not in step with the overlay's mode is not reported either.
        Q_EMIT stage.pastille(0)->activated(id, u"joy_1"_s);
        QCOMPARE(activated.size(), 0);

        stage->setMode(InteractiveOverlay::Normal);
        stage.takeDirty();
        stage.press(QPoint(100, 100));
        QCOMPARE(activated.size(), 1);
        QCOMPARE(activated.first(), QVariantList({id, u"joy_1"_s}));
        stage.release(QPoint(100, 100));
        QCOMPARE(activated.size(), 1);
        QCOMPARE(stage.takeDirty(), 0);
    }

    // Deletion.

    void aRemovedPastilleTakesItsToolBoxAndItsConnectorAlong()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage->addPastille(QPoint(100, 200), u"b"_s);
        stage->addPastille(QPoint(100, 300), u"c"_s);
        const QRect box = stage.box(1)->geometry();
        const QPoint underline(box.center().x(), box.bottom() + 6);
        stage.takeDirty();
        stage->removePastille(stage.pastille(1));
        QCOMPARE(stage.takeDirty(), 1);
        QCOMPARE(stage.node(0)["title"_L1], u"a"_s);
        QCOMPARE(stage.node(1)["title"_L1], u"c"_s);
        // Both still stand there until the event loop runs, without a line between them.
        QCOMPARE(stage.pastilles().size(), 3);
        QVERIFY(stage.pastille(1)->isVisible());
        QVERIFY(stage->grab().toImage().pixelColor(underline) != QColor(Qt::white));
        stage.deleteRetired();
        QCOMPARE(stage.titles(), QStringList({u"a"_s, u"c"_s}));
        QCOMPARE(stage.boxes().size(), 2);
    }

    void aRemovedPastilleListensNoMoreAndIsNotActive()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        stage->addPastille({}, u"b"_s);
        stage.pastille(0)->startListening();
        stage.pastille(1)->setActive(true);
        stage->removePastille(stage.pastille(0));
        QVERIFY(!stage->listeningPastille());
        stage.takeDirty();
        stage->applyListenedInput(u"joy_1"_s);
        QCOMPARE(stage.takeDirty(), 0);
        stage->removePastille(stage.pastille(1));
        stage.deleteRetired();
        stage->addPastille({}, u"c"_s);
        Q_EMIT stage.pastille(0)->requestSetActive(stage.pastille(0), true);
        QCOMPARE(stage.pastille(0)->state(), TouchArea::Active);
    }

    void theMenusDeletionIsTwiceDirty()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        stage.takeDirty();
        Q_EMIT stage.pastille(0)->requestDelete(stage.pastille(0));
        QCOMPARE(stage.takeDirty(), 2);
        QVERIFY(stage.node(0).isEmpty());
    }

    void anUnknownPointerIsNotRemoved()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        TouchArea stranger;
        stage.takeDirty();
        stage->removePastille(nullptr);
        stage->removePastille(&stranger);
        QCOMPARE(stage.takeDirty(), 0);
        QCOMPARE(stage.pastilles().size(), 1);
        // The slot of the signal emits its own.
        Q_EMIT stage.pastille(0)->requestDelete(&stranger);
        QCOMPARE(stage.takeDirty(), 1);
        QVERIFY(!stage.node(0).isEmpty());
    }

    void whatWaitsForItsDeletionChangesNothing()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage->addPastille(QPoint(300, 300), u"a"_s);
        TouchArea *area = stage.pastille(0);
        ActionToolBox *box = stage.box(0);
        stage->removePastille(area);
        stage.takeDirty();

        stage.drag(QPoint(100, 100), QPoint(20, 0));
        QCOMPARE(area->pos(), QPoint(92, 72)); // the person can still drag it
        area->startListening();
        area->setActive(true);
        Q_EMIT area->requestStartListening(area);
        Q_EMIT area->requestSetActive(area, true);
        Q_EMIT area->requestDelete(area);
        Q_EMIT box->moved();
        box->applyConfig(object("{'ref':'Tirer'}"));
        QCOMPARE(stage.takeDirty(), 0);
        QVERIFY(!stage->listeningPastille());
        QCOMPARE(stage.box(1)->config(), QJsonObject());
    }

    // Moving.

    void aDraggedPastilleIsStoredInPictureCoordinates()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(picture(320, 240));
        stage->addPastille(QPoint(100, 100), u"a"_s);
        const QRectF box = stage.place(0, "toolbox"_L1);
        stage.takeDirty();
        stage.press(QPoint(100, 100));
        QCOMPARE(stage.takeDirty(), 0);
        stage.moveTo(QPoint(110, 105));
        stage.moveTo(QPoint(164, 148));
        QCOMPARE(stage.takeDirty(), 2);
        stage.release(QPoint(164, 148));
        QCOMPARE(stage.takeDirty(), 0);
        QCOMPARE(stage.pastille(0)->geometry(), QRect(136, 120, 56, 56));
        QCOMPARE(stage.place(0, "pastille"_L1), QRectF(136 / 640.0, 120 / 480.0, 56 / 640.0, 56 / 480.0));
        QCOMPARE(stage.place(0, "toolbox"_L1), box);
    }

    void aResizedPastilleIsStoredInPictureCoordinates()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage.takeDirty();
        stage.drag(QPoint(72 + 48, 72 + 48), QPoint(8, 8));
        QCOMPARE(stage.takeDirty(), 1);
        QCOMPARE(stage.place(0, "pastille"_L1), QRectF(72 / 640.0, 72 / 480.0, 64 / 640.0, 64 / 480.0));
    }

    void aDraggedToolBoxIsStoredInPictureCoordinates()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        const QRectF area = stage.place(0, "pastille"_L1);
        const QSize size = stage.box(0)->size();
        stage.takeDirty();
        stage.drag(stage.box(0)->pos() + QPoint(3, 18), QPoint(-250, 30));
        QCOMPARE(stage.takeDirty(), 1);
        QCOMPARE(stage.box(0)->pos(), QPoint(-58, 122));
        QCOMPARE(stage.place(0, "toolbox"_L1),
                 QRectF(-58 / 640.0, 122 / 480.0, size.width() / 640.0, size.height() / 480.0));
        QCOMPARE(stage.place(0, "pastille"_L1), area);
    }

    void aChangeOfShapeAloneIsNotStored()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        TouchArea *area = stage.pastille(0);
        area->setFreeAspect(true);
        area->setFixedSize(90, 40);
        const QRectF before = stage.place(0, "pastille"_L1);
        stage.takeDirty();
        area->setFreeAspect(false);
        QCOMPARE(area->size(), QSize(90, 90));
        QCOMPARE(stage.takeDirty(), 0);
        QCOMPARE(stage.place(0, "pastille"_L1), before);
    }

    // Layout.

    void aResizeMovesTheWidgetsAndKeepsTheFractions_data()
    {
        QTest::addColumn<BackgroundScaleMode>("mode");
        QTest::addColumn<QRect>("pastille");
        // The picture of 200 by 100, in 640 by 480 and then in 1000 by 400. The pastille starts as 64, 32
        // wide and high at (320, 240).
        QTest::newRow("stretch") << BackgroundScaleMode::Stretch << QRect(500, 200, 88, 47);
        // 640 by 320 from (0, 80), then 800 by 400 from (100, 0).
        QTest::newRow("contain") << BackgroundScaleMode::Contain << QRect(500, 200, 70, 70);
        // 960 by 480 from (-160, 0), then 1000 by 500 from (0, -50).
        QTest::newRow("cover") << BackgroundScaleMode::Cover << QRect(500, 200, 58, 58);
        // 200 by 100 from (220, 190), then from (400, 150).
        QTest::newRow("center") << BackgroundScaleMode::Center << QRect(500, 200, 56, 56);
    }

    void aResizeMovesTheWidgetsAndKeepsTheFractions()
    {
        QFETCH(const BackgroundScaleMode, mode);
        OverlayStage stage;
        stage->setBackgroundPixmap(picture(200, 100));
        stage->setBackgroundScaleMode(mode);
        stage->addPastille(QPoint(320 + 28, 240 + 28), u"a"_s);
        const QRect box = stage.box(0)->geometry();
        const QJsonArray nodes = stage->toJson()["nodes"_L1].toArray();
        stage.takeDirty();

        stage->resize(1000, 400);
        QTEST(stage.pastille(0)->geometry(), "pastille");
        QVERIFY(!stage.pastille(0)->freeAspect());
        QCOMPARE(stage->toJson()["nodes"_L1].toArray(), nodes);
        for (const QSize &size : {QSize(33, 17), QSize(1, 1), QSize(640, 480)})
            stage->resize(size);
        QCOMPARE(stage.pastille(0)->geometry(), QRect(320, 240, 56, 56));
        QCOMPARE(stage.box(0)->geometry(), box);
        QCOMPARE(stage->toJson()["nodes"_L1].toArray(), nodes);
        QCOMPARE(stage.takeDirty(), 0);
    }

    void aStretchedPastilleIsOvalOnScreenAlone()
    {
        OverlayStage stage;
        stage->setBackgroundScaleMode(BackgroundScaleMode::Stretch);
        stage->addPastille(QPoint(100, 100), u"a"_s);
        const QJsonObject node = stage.node(0);
        stage->resize(1280, 480);
        QCOMPARE(stage.pastille(0)->size(), QSize(112, 56));
        QCOMPARE(stage.node(0), node);
        QCOMPARE(node["freeAspect"_L1], QJsonValue(false));
    }

    void anotherPictureMovesTheWidgets()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(picture(640, 480));
        stage->addPastille(QPoint(320 + 28, 240 + 28), u"a"_s);
        // 480 by 480 from (80, 0) now.
        stage->setBackgroundPixmap(picture(100, 100));
        QCOMPARE(stage.pastille(0)->geometry(), QRect(320, 240, 42, 56));
        stage->setBackgroundPixmap(QPixmap());
        QCOMPARE(stage.pastille(0)->geometry(), QRect(320, 240, 56, 56));
    }

    void anotherScaleModeMovesTheWidgets()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(picture(100, 100));
        stage->addPastille(QPoint(320 + 28, 240 + 28), u"a"_s);
        stage->setBackgroundScaleMode(BackgroundScaleMode::Stretch);
        QCOMPARE(stage.pastille(0)->geometry(), QRect(320, 240, 75, 56));
    }

    void withoutAPictureTheWholeWidgetIsThePicture()
    {
        for (const auto mode : {BackgroundScaleMode::Contain, BackgroundScaleMode::Stretch}) {
            OverlayStage stage;
            stage->setBackgroundScaleMode(mode);
            stage->addPastille(QPoint(28, 28), u"a"_s);
            QCOMPARE(stage.place(0, "pastille"_L1), QRectF(0, 0, 56 / 640.0, 56 / 480.0));
            const QJsonObject saved = stage->toJson();
            stage->resize(320, 480);
            QVERIFY(stage->fromJson(saved));
            stage.deleteRetired();
            QCOMPARE(stage.pastille(0)->geometry(), QRect(0, 0, 28, 56));
        }
    }

    void aWidgetWithoutSizeHasNoPictureCoordinates()
    {
        InteractiveOverlay overlay;
        overlay.resize(0, 0);
        TouchArea *area = overlay.addPastille(QPoint(100, 100), u"a"_s);
        const auto stored = [&] { return overlay.toJson()["nodes"_L1][0]["pastille"_L1].toObject(); };
        QCOMPARE(stored(), object("{'x':0,'y':0,'w':0,'h':0}"));
        QSignalSpy dirty(&overlay, &InteractiveOverlay::dirty);
        Q_EMIT area->moved();
        auto *box = overlay.findChild<ActionToolBox *>();
        Q_EMIT box->moved();
        QCOMPARE(dirty.size(), 2);
        QCOMPARE(stored(), object("{'x':0,'y':0,'w':0,'h':0}"));
        // A layout leaves them where they are, and the next move stores them.
        overlay.resize(200, 100);
        QCoreApplication::sendPostedEvents(&overlay);
        QResizeEvent resized(QSize(200, 100), QSize(0, 0));
        QCoreApplication::sendEvent(&overlay, &resized);
        QCOMPARE(area->geometry(), QRect(72, 72, 56, 56));
        QCOMPARE(stored(), object("{'x':0.36,'y':0.72,'w':0.28,'h':0.56}"));
        Q_EMIT area->moved();
        area->move(0, 0);
        QCOMPARE(stored(), object("{'x':0.36,'y':0.72,'w':0.28,'h':0.56}"));
    }

    // Settings.

    void theFirstToolBoxOpensItsSettings()
    {
        OverlayStage stage;
        QVERIFY(!stage->openFirstToolboxSettings());
        QVERIFY(!QApplication::activePopupWidget());
        stage->setExternalServices(someFunctions());
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage->addPastille(QPoint(100, 200), u"b"_s);
        bool opened = false;
        QVERIFY(QMetaObject::invokeMethod(stage.overlay(), "openFirstToolboxSettings", qReturnArg(opened)));
        QVERIFY(opened);
        QTRY_VERIFY(QApplication::activePopupWidget());
        QWidget *panel = QApplication::activePopupWidget();
        // Below the combo of the first one.
        QVERIFY(panel->y() >= stage.box(0)->mapToGlobal(QPoint(0, 18)).y());
        QVERIFY(panel->y() <= stage.box(0)->mapToGlobal(QPoint(0, 40)).y());
        panel->close();
    }

    // Widgets that somebody else deletes.

    void aNodeThatLostAWidgetIsPassedOver_data()
    {
        QTest::addColumn<bool>("losesArea");
        QTest::newRow("pastille") << true;
        QTest::newRow("tool box") << false;
    }

    void aNodeThatLostAWidgetIsPassedOver()
    {
        QFETCH(const bool, losesArea);
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage->addPastille(QPoint(100, 200), u"a"_s);
        stage.pastille(0)->startListening();
        if (losesArea)
            delete stage.pastille(0);
        else
            delete stage.box(0);

        stage->resize(500, 300);
        stage->setMode(InteractiveOverlay::Normal);
        stage->setExternalServices({});
        stage->setExternalServices(someFunctions());
        stage->applyActionToTitle(u"Tirer"_s, u"A"_s);
        stage->applyListenedInput(u"a"_s);
        QCOMPARE(stage->toJson()["nodes"_L1].toArray().size(), 1);
        QCOMPARE(stage->exportBridges()["bridges"_L1].toArray().size(), 1);
        QVERIFY(stage->applyMapping(object("{'bridges':[{'src':{'stringKey':'a'},'action':'Dire'}]}")));
        QVERIFY(stage.functions().contains(u"Dire"_s));
        QVERIFY(stage->openFirstToolboxSettings());
        QApplication::activePopupWidget()->close();
        QVERIFY(!stage->listeningPastille());
        stage.load("[{'title':'b'}]");
        QCOMPARE(stage.titles(), QStringList({u"b"_s}));
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayNodes)
#include "tst_interactiveoverlaynodes.moc"
