// SPDX-License-Identifier: MIT
#include "pastillestage.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

namespace
{
/// Inside the pastille at (100, 80), away from its handle.
const QPoint body(120, 100);
} // namespace

class TestTouchAreaMouse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aDragMovesThePastille()
    {
        PastilleStage stage;
        QVERIFY(stage.exposed());
        stage.press(body);
        QCOMPARE(stage.cursor(), Qt::ClosedHandCursor);
        QCOMPARE(stage.takeJournal(), QStringList());
        stage.moveTo(body + QPoint(10, 5));
        QCOMPARE(stage.pastille()->geometry(), QRect(110, 85, 56, 56));
        stage.moveTo(body + QPoint(-30, 40));
        QCOMPARE(stage.pastille()->geometry(), QRect(70, 120, 56, 56));
        QCOMPARE(stage.takeJournal(), QStringList({u"moved"_s, u"moved"_s}));
        stage.release(body + QPoint(-30, 40));
        QCOMPARE(stage.cursor(), Qt::OpenHandCursor);
        QCOMPARE(stage.takeJournal(), QStringList());
        QCOMPARE(stage.ground()->presses, 0);
    }

    void aClickMovesNothing()
    {
        PastilleStage stage;
        stage.press(body);
        stage.release(body);
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, 56, 56));
        QCOMPARE(stage.takeJournal(), QStringList());
    }

    void theNewPlaceIsThereWhenItIsAnnounced()
    {
        PastilleStage stage;
        QRect heard;
        connect(stage.pastille(), &TouchArea::moved, this, [&] { heard = stage.pastille()->geometry(); });
        connect(stage.pastille(), &TouchArea::resized, this, [&] { heard = stage.pastille()->geometry(); });
        stage.drag(body, QPoint(-300, 20));
        QCOMPARE(heard, QRect(0, 100, 56, 56));
        stage.drag(stage.handle(), QPoint(8, 0));
        QCOMPARE(heard, QRect(0, 100, 64, 64));
    }

    void aDragStopsAtTheEdgeAndCatchesUp()
    {
        PastilleStage stage;
        stage.press(body);
        stage.moveTo(QPoint(390, 100));
        QCOMPARE(stage.pastille()->geometry(), QRect(344, 80, 56, 56));
        // Farther out, where only the grabbed mouse reaches: it is announced although nothing moves.
        stage.takeJournal();
        stage.moveTo(QPoint(640, 100));
        QCOMPARE(stage.pastille()->geometry(), QRect(344, 80, 56, 56));
        QCOMPARE(stage.takeJournal(), QStringList({u"moved"_s}));
        // Back to where the pastille alone would be at the edge: no distance was lost.
        stage.moveTo(QPoint(363, 100));
        QCOMPARE(stage.pastille()->geometry(), QRect(343, 80, 56, 56));
        stage.moveTo(QPoint(-240, -190));
        QCOMPARE(stage.pastille()->geometry(), QRect(0, 0, 56, 56));
        stage.moveTo(QPoint(640, 490));
        QCOMPARE(stage.pastille()->geometry(), QRect(344, 244, 56, 56));
        stage.moveTo(body);
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, 56, 56));
        stage.release(body);
    }

    void aPastilleLargerThanItsOverlaySticksToTheTopLeft()
    {
        PastilleStage stage;
        stage.pastille()->setFixedSize(500, 400);
        stage.pastille()->move(-40, -40);
        stage.drag(body, QPoint(15, 25));
        QCOMPARE(stage.pastille()->geometry(), QRect(0, 0, 500, 400));
    }

    void theHandleResizesARoundPastille_data()
    {
        QTest::addColumn<QPoint>("delta");
        QTest::addColumn<int>("side");
        QTest::newRow("both ways") << QPoint(10, 20) << 76;
        QTest::newRow("along one axis alone") << QPoint(25, 0) << 81;
        QTest::newRow("right and far up") << QPoint(30, -100) << 86;
        QTest::newRow("up and left, by the smaller") << QPoint(-20, -5) << 51;
        QTest::newRow("down to the least") << QPoint(-90, -80) << 28;
    }

    void theHandleResizesARoundPastille()
    {
        QFETCH(const QPoint, delta);
        QFETCH(const int, side);
        PastilleStage stage;
        stage.press(stage.handle());
        QCOMPARE(stage.cursor(), Qt::SizeFDiagCursor);
        QCOMPARE(stage.takeJournal(), QStringList());
        const QPoint start = QPoint(100, 80) + QPoint(49, 49);
        stage.moveTo(start + delta);
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, side, side));
        QCOMPARE(stage.pastille()->minimumSize(), QSize(side, side));
        QCOMPARE(stage.pastille()->maximumSize(), QSize(side, side));
        QCOMPARE(stage.takeJournal(), QStringList({u"resized"_s}));
        stage.release(start + delta);
        QCOMPARE(stage.cursor(), Qt::OpenHandCursor);
        QCOMPARE(stage.takeJournal(), QStringList());
    }

    void theHandleResizesAnOvalPastille()
    {
        PastilleStage stage;
        stage.pastille()->setFreeAspect(true);
        stage.pastille()->setFixedSize(80, 40);
        stage.takeJournal();
        stage.drag(stage.handle(), QPoint(30, -100));
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, 110, 28));
        stage.drag(stage.handle(), QPoint(-300, 12));
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, 28, 40));
        QCOMPARE(stage.takeJournal(), QStringList({u"resized"_s, u"resized"_s}));
    }

    void theSizeIsReckonedFromThePress()
    {
        PastilleStage stage;
        const QPoint start = stage.handle();
        stage.press(start);
        stage.moveTo(start - QPoint(200, 200));
        QCOMPARE(stage.pastille()->size(), QSize(28, 28));
        stage.moveTo(start + QPoint(4, 4));
        QCOMPARE(stage.pastille()->size(), QSize(60, 60));
        stage.release(start + QPoint(4, 4));
    }

    void aGrowingPastilleIsPushedBackFromTheEdge()
    {
        PastilleStage stage;
        stage.pastille()->move(340, 240);
        const QPoint start = stage.handle();
        stage.press(start);
        stage.moveTo(start + QPoint(44, 44));
        QCOMPARE(stage.pastille()->geometry(), QRect(300, 200, 100, 100));
        stage.moveTo(start + QPoint(244, 200));
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 0, 300, 300));
        stage.moveTo(start + QPoint(244, 204));
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 0, 300, 300));
        stage.release(start + QPoint(244, 204));
    }

    void theHandleIncludesItsEdge_data()
    {
        QTest::addColumn<QPoint>("offset");
        QTest::addColumn<bool>("inHandle");
        QTest::newRow("first pixel") << QPoint(44, 44) << true;
        QTest::newRow("last pixel") << QPoint(53, 53) << true;
        QTest::newRow("top right pixel") << QPoint(53, 44) << true;
        QTest::newRow("bottom left pixel") << QPoint(44, 53) << true;
        QTest::newRow("left of it") << QPoint(43, 48) << false;
        QTest::newRow("above it") << QPoint(48, 43) << false;
        QTest::newRow("right of it") << QPoint(54, 48) << false;
        QTest::newRow("below it") << QPoint(48, 54) << false;
        QTest::newRow("corner of the widget") << QPoint(55, 55) << false;
    }

    void theHandleIncludesItsEdge()
    {
        QFETCH(const QPoint, offset);
        QFETCH(const bool, inHandle);
        PastilleStage stage;
        stage.press(QPoint(100, 80) + offset);
        QCOMPARE(stage.cursor(), inHandle ? Qt::SizeFDiagCursor : Qt::ClosedHandCursor);
        stage.release(QPoint(100, 80) + offset);
    }

    void aPressOutOfEditModeActivates()
    {
        PastilleStage stage;
        stage.pastille()->setEditMode(false);
        stage.pastille()->setTitle(u"joy_2"_s);
        stage.press(body);
        QCOMPARE(stage.takeJournal(), QStringList({u"activated own joy_2"_s}));
        QCOMPARE(stage.cursor(), Qt::PointingHandCursor);
        stage.moveTo(body + QPoint(20, 20));
        stage.moveTo(stage.handle());
        QCOMPARE(stage.cursor(), Qt::PointingHandCursor);
        stage.release(body + QPoint(20, 20));
        QCOMPARE(stage.cursor(), Qt::PointingHandCursor);
        QCOMPARE(stage.takeJournal(), QStringList());
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, 56, 56));
        QCOMPARE(stage.ground()->presses, 0);
    }

    void thePressSetsNoDragOutOfEditMode()
    {
        PastilleStage stage;
        stage.pastille()->setEditMode(false);
        stage.press(body);
        stage.pastille()->setEditMode(true);
        stage.takeJournal();
        stage.moveTo(body + QPoint(20, 20));
        QCOMPARE(stage.takeJournal(), QStringList());
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, 56, 56));
        // A move that is no drag shows what a press would do.
        stage.moveTo(stage.handle());
        QCOMPARE(stage.cursor(), Qt::SizeFDiagCursor);
        stage.moveTo(body);
        QCOMPARE(stage.cursor(), Qt::OpenHandCursor);
        stage.release(body);
    }

    void noHandleOutOfEditMode()
    {
        PastilleStage stage;
        stage.pastille()->setEditMode(false);
        stage.drag(stage.handle(), QPoint(30, 30));
        QCOMPARE(stage.takeJournal(), QStringList({u"activated own Bouton"_s}));
        QCOMPARE(stage.pastille()->size(), QSize(56, 56));
    }

    void otherButtonsGoToTheOverlay_data()
    {
        QTest::addColumn<bool>("editMode");
        QTest::newRow("in edit mode") << true;
        QTest::newRow("out of edit mode") << false;
    }

    void otherButtonsGoToTheOverlay()
    {
        QFETCH(const bool, editMode);
        PastilleStage stage;
        stage.pastille()->setEditMode(editMode);
        stage.press(body, Qt::MiddleButton);
        stage.moveTo(body + QPoint(10, 10));
        stage.release(body + QPoint(10, 10), Qt::MiddleButton);
        QCOMPARE(stage.ground()->presses, 1);
        QCOMPARE(stage.takeJournal(), QStringList());
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, 56, 56));
    }

    void anotherButtonsReleaseEndsNoDrag()
    {
        PastilleStage stage;
        stage.press(body);
        stage.press(body, Qt::MiddleButton);
        stage.release(body, Qt::MiddleButton);
        QCOMPARE(stage.cursor(), Qt::ClosedHandCursor);
        stage.moveTo(body + QPoint(7, 0));
        QCOMPARE(stage.pastille()->x(), 107);
        stage.release(body + QPoint(7, 0));
        QCOMPARE(stage.cursor(), Qt::OpenHandCursor);
    }

    void aFinishedDragIsOver()
    {
        PastilleStage stage;
        stage.drag(body, QPoint(10, 0));
        stage.drag(stage.handle(), QPoint(4, 4));
        stage.takeJournal();
        // Another button brings the pastille moves of the mouse, and none of them drags it.
        stage.press(QPoint(130, 100), Qt::MiddleButton);
        stage.moveTo(QPoint(160, 130));
        stage.release(QPoint(160, 130), Qt::MiddleButton);
        QCOMPARE(stage.takeJournal(), QStringList());
        QCOMPARE(stage.pastille()->geometry(), QRect(110, 80, 60, 60));
    }

    void leavingEditModeEndsNoDrag()
    {
        PastilleStage stage;
        stage.press(body);
        stage.pastille()->setEditMode(false);
        stage.moveTo(body + QPoint(9, 9));
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, 56, 56));
        stage.pastille()->setEditMode(true);
        stage.moveTo(body + QPoint(11, 11));
        QCOMPARE(stage.pastille()->geometry(), QRect(111, 91, 56, 56));
        stage.release(body + QPoint(11, 11));
    }

    void aReleaseOutOfEditModeEndsNoDrag()
    {
        PastilleStage stage;
        stage.press(body);
        stage.pastille()->setEditMode(false);
        stage.release(body);
        QCOMPARE(stage.cursor(), Qt::PointingHandCursor);
        stage.pastille()->setEditMode(true);
        // Another button brings the pastille moves of the mouse.
        stage.press(body, Qt::MiddleButton);
        stage.moveTo(body + QPoint(11, 11));
        stage.release(body + QPoint(11, 11), Qt::MiddleButton);
        QCOMPARE(stage.pastille()->geometry(), QRect(111, 91, 56, 56));
        QCOMPARE(stage.takeJournal(), QStringList({u"moved"_s}));

        // A press at the handle meanwhile: the resizing wins, and a release ends both.
        stage.press(stage.handle());
        stage.moveTo(stage.handle() + QPoint(4, 4));
        QCOMPARE(stage.pastille()->geometry(), QRect(111, 91, 60, 60));
        QCOMPARE(stage.takeJournal(), QStringList({u"resized"_s}));
        stage.release(stage.handle());
        QCOMPARE(stage.cursor(), Qt::OpenHandCursor);
        stage.press(body + QPoint(11, 11), Qt::MiddleButton);
        stage.moveTo(body + QPoint(22, 22));
        stage.release(body + QPoint(22, 22), Qt::MiddleButton);
        QCOMPARE(stage.takeJournal(), QStringList());
        QCOMPARE(stage.pastille()->geometry(), QRect(111, 91, 60, 60));
    }

    void aStateChangesNothingAboutMoving_data()
    {
        QTest::addColumn<TouchArea::State>("state");
        QTest::newRow("listening") << TouchArea::Listening;
        QTest::newRow("active") << TouchArea::Active;
    }

    void aStateChangesNothingAboutMoving()
    {
        QFETCH(const TouchArea::State, state);
        PastilleStage stage;
        stage.pastille()->setState(state);
        stage.takeJournal();
        stage.drag(body, QPoint(10, 10));
        stage.drag(stage.handle(), QPoint(10, 10));
        QCOMPARE(stage.pastille()->geometry(), QRect(110, 90, 66, 66));
        QCOMPARE(stage.takeJournal(), QStringList({u"moved"_s, u"resized"_s}));
        QCOMPARE(stage.pastille()->state(), state);
        stage.pastille()->setEditMode(false);
        stage.press(body);
        QCOMPARE(stage.takeJournal(), QStringList({u"activated own Bouton"_s}));
        stage.release(body);
    }

    void aPastilleWithoutParentIsNotHeldBack()
    {
        TouchArea pastille;
        pastille.show();
        QVERIFY(QTest::qWaitForWindowExposed(&pastille));
        const auto send = [&](QEvent::Type type, const QPointF &local, const QPointF &global) {
            QMouseEvent event(type, local, global, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                              type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                              Qt::NoModifier);
            QApplication::sendEvent(&pastille, &event);
        };
        send(QEvent::MouseButtonPress, {20, 20}, {20, 20});
        send(QEvent::MouseMove, {20, 20}, {-980, -980});
        send(QEvent::MouseButtonRelease, {20, 20}, {-980, -980});
        QVERIFY(pastille.x() < -500);
        QVERIFY(pastille.y() < -500);
    }
};

GAMEPAD_TEST_MAIN(TestTouchAreaMouse)
#include "tst_touchareamouse.moc"
