// SPDX-License-Identifier: MIT
#include "overlaystage.h"

#include "testmain.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

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

    void aConnectorOfTwoPixelsRunsUnderTheToolBox()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"joy_1"_s);
        const QRect box = stage.box(0)->geometry();
        const QImage image = stage->grab().toImage();
        QList<int> distances;
        for (int distance = 1; distance < 15; ++distance) {
            if (image.pixelColor(box.center().x(), box.bottom() + distance) == QColor(Qt::white))
                distances.append(distance);
        }
        QCOMPARE(distances, QList<int>({5, 6}));
    }

    void whoHearsOfACreationOrADeletionFindsItDone()
    {
        OverlayStage stage;
        QList<QJsonObject> heard;
        connect(stage.overlay(), &InteractiveOverlay::dirty, this, [&] { heard.append(stage.node(0)); });
        TouchArea *area = stage->addPastille(QPoint(100, 100), u"a"_s);
        QCOMPARE(heard, QList<QJsonObject>({stage.node(0)}));
        QVERIFY(!heard.first().isEmpty());

        area->startListening();
        heard.clear();
        bool listens = true;
        connect(stage.overlay(), &InteractiveOverlay::dirty, this,
                [&] { listens = stage->listeningPastille() != nullptr; });
        stage->removePastille(area);
        QCOMPARE(heard, QList<QJsonObject>({QJsonObject()}));
        QVERIFY(!listens);
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

    void withoutACatalogueANewToolBoxIsGivenNone()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->setExternalServices({});
        stage->addPastille({}, u"a"_s);
        // Given an empty one, it would offer to choose nothing.
        QCOMPARE(stage.box(0)->findChild<QComboBox *>()->count(), 0);
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

    void theToolBoxGoesBeforeItsPastille()
    {
        OverlayStage stage;
        TouchArea *area = stage->addPastille(QPoint(100, 100), u"a"_s);
        QStringList gone;
        connect(area, &QObject::destroyed, this, [&] { gone.append(u"pastille"_s); });
        connect(stage.box(0), &QObject::destroyed, this, [&] { gone.append(u"tool box"_s); });
        stage->removePastille(area);
        QVERIFY(gone.isEmpty());
        stage.deleteRetired();
        QCOMPARE(gone, QStringList({u"tool box"_s, u"pastille"_s}));
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
