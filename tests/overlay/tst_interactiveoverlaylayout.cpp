// SPDX-License-Identifier: MIT
// Pastilles and tool boxes keep their places on the picture.
#include "overlaystage.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

class TestInteractiveOverlayLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    // Moving.

    void aDraggedPastilleIsStoredInPictureCoordinates()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(bluePicture(320, 240));
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
        // The picture of 200 by 100, in 640 by 480 and then in 1000 by 400. The pastille starts 56 wide and
        // high at (320, 240).
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
        stage->setBackgroundPixmap(bluePicture(200, 100));
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
        stage->setBackgroundPixmap(bluePicture(640, 480));
        stage->addPastille(QPoint(320 + 28, 240 + 28), u"a"_s);
        // 480 by 480 from (80, 0) now.
        stage->setBackgroundPixmap(bluePicture(100, 100));
        QCOMPARE(stage.pastille(0)->geometry(), QRect(320, 240, 42, 56));
        stage->setBackgroundPixmap(QPixmap());
        QCOMPARE(stage.pastille(0)->geometry(), QRect(320, 240, 56, 56));
    }

    void aPictureWithoutAreaMovesNothing()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        const QRect area = stage.pastille(0)->geometry();
        const QRect box = stage.box(0)->geometry();
        const QJsonValue nodes = stage->toJson()["nodes"_L1];
        // Contained, no row of the first one is left; without one it is as before.
        for (const QPixmap &picture : {bluePicture(5000, 1), QPixmap()}) {
            stage->setBackgroundPixmap(picture);
            QCOMPARE(stage.pastille(0)->geometry(), area);
            QCOMPARE(stage.box(0)->geometry(), box);
            QCOMPARE(stage->toJson()["nodes"_L1], nodes);
        }
    }

    void anotherScaleModeMovesTheWidgets()
    {
        OverlayStage stage;
        stage->setBackgroundPixmap(bluePicture(100, 100));
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
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayLayout)
#include "tst_interactiveoverlaylayout.moc"
