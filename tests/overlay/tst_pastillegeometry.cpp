// SPDX-License-Identifier: MIT
#include "pastillegeometry.h"

#include "testmain.h"

namespace
{
const QSize least(28, 28);
const QRect limits(0, 0, 400, 300);
} // namespace

class TestPastilleGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theHandleIsTenPixelsTwelveFromTheCorner()
    {
        QCOMPARE(resizeHandle(QSize(56, 56)), QRect(44, 44, 10, 10));
        QCOMPARE(resizeHandle(QSize(80, 40)), QRect(68, 28, 10, 10));
    }

    void aRoundPastilleTakesTheGreaterPull_data()
    {
        QTest::addColumn<QSize>("start");
        QTest::addColumn<QPoint>("delta");
        QTest::addColumn<int>("side");
        const QSize round(56, 56);
        QTest::newRow("both ways") << round << QPoint(10, 20) << 76;
        QTest::newRow("along x alone") << round << QPoint(14, 0) << 70;
        QTest::newRow("along y alone") << round << QPoint(0, 14) << 70;
        QTest::newRow("right and far up") << round << QPoint(30, -100) << 86;
        QTest::newRow("far left and down") << round << QPoint(-100, 5) << 61;
        QTest::newRow("left and up shrinks by the smaller") << round << QPoint(-20, -6) << 50;
        QTest::newRow("down to the least") << round << QPoint(-28, -28) << 28;
        QTest::newRow("not below the least") << round << QPoint(-29, -29) << 28;
        QTest::newRow("far below the least") << round << QPoint(-500, -400) << 28;
        QTest::newRow("nothing") << round << QPoint(0, 0) << 56;
        QTest::newRow("stretched on screen, by its width") << QSize(80, 40) << QPoint(5, 5) << 85;
        QTest::newRow("stretched on screen, by its height") << QSize(40, 80) << QPoint(5, 5) << 85;
    }

    void aRoundPastilleTakesTheGreaterPull()
    {
        QFETCH(const QSize, start);
        QFETCH(const QPoint, delta);
        QFETCH(const int, side);
        QCOMPARE(pulled(start, delta, false, least), QSize(side, side));
    }

    void theLeastHeightPlaysNoPartForARoundOne()
    {
        QCOMPARE(pulled(QSize(56, 56), QPoint(-50, -50), false, QSize(28, 40)), QSize(28, 28));
    }

    void anOvalTakesEachPullByItself_data()
    {
        QTest::addColumn<QPoint>("delta");
        QTest::addColumn<QSize>("expected");
        QTest::newRow("both grow") << QPoint(10, 20) << QSize(90, 60);
        QTest::newRow("one grows, one shrinks") << QPoint(30, -5) << QSize(110, 35);
        QTest::newRow("one side at its least") << QPoint(30, -100) << QSize(110, 28);
        QTest::newRow("the other side at its least") << QPoint(-53, 1) << QSize(28, 41);
        QTest::newRow("both at their least") << QPoint(-500, -500) << QSize(28, 28);
        QTest::newRow("exactly the least") << QPoint(-52, -12) << QSize(28, 28);
        QTest::newRow("nothing") << QPoint(0, 0) << QSize(80, 40);
    }

    void anOvalTakesEachPullByItself()
    {
        QFETCH(const QPoint, delta);
        QTEST(pulled(QSize(80, 40), delta, true, least), "expected");
    }

    void anOvalHasALeastOfItsOwnPerSide()
    {
        QCOMPARE(pulled(QSize(80, 80), QPoint(-70, -70), true, QSize(20, 30)), QSize(20, 30));
    }

    void aPastilleStaysInsideItsOverlay_data()
    {
        QTest::addColumn<QRect>("geometry");
        QTest::addColumn<QPoint>("topLeft");
        QTest::newRow("inside") << QRect(50, 60, 56, 56) << QPoint(50, 60);
        QTest::newRow("at the far edges") << QRect(344, 244, 56, 56) << QPoint(344, 244);
        QTest::newRow("beyond the right") << QRect(345, 60, 56, 56) << QPoint(344, 60);
        QTest::newRow("beyond the bottom") << QRect(50, 245, 56, 56) << QPoint(50, 244);
        QTest::newRow("before the left") << QRect(-1, 60, 56, 56) << QPoint(0, 60);
        QTest::newRow("before the top") << QRect(50, -1, 56, 56) << QPoint(50, 0);
        QTest::newRow("beyond two") << QRect(900, 900, 56, 56) << QPoint(344, 244);
        QTest::newRow("before two") << QRect(-900, -900, 56, 56) << QPoint(0, 0);
        // Right and bottom first would leave these at a negative place.
        QTest::newRow("wider than the overlay") << QRect(10, 10, 500, 56) << QPoint(0, 10);
        QTest::newRow("higher than the overlay") << QRect(10, 10, 56, 500) << QPoint(10, 0);
        QTest::newRow("larger, before the corner") << QRect(-10, -10, 500, 500) << QPoint(0, 0);
    }

    void aPastilleStaysInsideItsOverlay()
    {
        QFETCH(const QRect, geometry);
        QFETCH(const QPoint, topLeft);
        QCOMPARE(clampedInto(geometry, limits), QRect(topLeft, geometry.size()));
    }
};

GAMEPAD_TEST_MAIN(TestPastilleGeometry)
#include "tst_pastillegeometry.moc"
