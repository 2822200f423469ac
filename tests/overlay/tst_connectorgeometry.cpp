// SPDX-License-Identifier: MIT
#include "connectorgeometry.h"

#include "testmain.h"

namespace
{
const QPoint left(100, 80);
const QPoint right(199, 80);
} // namespace

class TestConnectorGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theLeadGoesToTheNearCorner_data()
    {
        QTest::addColumn<int>("startX");
        QTest::addColumn<double>("sideBias");
        QTest::addColumn<bool>("nearIsRight");
        QTest::newRow("start right of the target") << 200 << 0.1 << true;
        QTest::newRow("start far to the right") << 5000 << 0.1 << true;
        QTest::newRow("start right, negative bias") << 200 << -0.1 << true;
        QTest::newRow("start left of the target") << 99 << 0.1 << false;
        QTest::newRow("start far to the left") << -5000 << 0.1 << false;
        QTest::newRow("start left, negative bias") << 99 << -0.1 << false;
        QTest::newRow("above the target") << 150 << 0.1 << true;
        QTest::newRow("above the target, near its left") << 101 << 0.1 << true;
        QTest::newRow("above the target, no bias") << 150 << 0.0 << true;
        QTest::newRow("above the target, negative bias") << 150 << -0.1 << false;
        QTest::newRow("above the right corner") << 199 << 0.1 << true;
        QTest::newRow("above the right corner, negative bias") << 199 << -0.1 << false;
        QTest::newRow("above the left corner") << 100 << 0.1 << true;
        QTest::newRow("above the left corner, negative bias") << 100 << -0.1 << false;
    }

    void theLeadGoesToTheNearCorner()
    {
        QFETCH(const int, startX);
        QFETCH(const double, sideBias);
        QFETCH(const bool, nearIsRight);
        const QPoint start(startX, 30);
        const Connector expected =
            nearIsRight ? Connector{start, right, left} : Connector{start, left, right};
        QCOMPARE(connectorTo(start, left, right, sideBias), expected);
    }

    void theHeightOfTheStartDoesNotMatter()
    {
        for (const int y : {-400, 80, 81, 900})
            QCOMPARE(connectorTo(QPoint(150, y), left, right, 0.1).nearCorner, right);
    }

    void aTargetOfOnePixelHasOneCorner()
    {
        const QPoint only(50, 50);
        QCOMPARE(connectorTo(QPoint(50, 0), only, only, 0.1), (Connector{QPoint(50, 0), only, only}));
    }

    void aLineStartsBelowTheMiddleOfAWidget()
    {
        QCOMPARE(startBelow(QRect(0, 0, 56, 56), 6), QPoint(27, 61));
        QCOMPARE(startBelow(QRect(0, 0, 57, 40), 0), QPoint(28, 39));
        QCOMPARE(startBelow(QRect(0, 0, 56, 56), -6), QPoint(27, 49));
    }

    void theCornersAreTheLowestPixelsAndTheGap()
    {
        const QRect box(0, 0, 120, 60);
        QCOMPARE(leftBelow(box, 6), QPoint(0, 65));
        QCOMPARE(rightBelow(box, 6), QPoint(119, 65));
        QCOMPARE(leftBelow(box, 0), QPoint(0, 59));
    }

    void aFractionIsAPixelOfTheCanvas_data()
    {
        QTest::addColumn<QPointF>("fraction");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("as lines start without a widget") << QPointF(-1.0, -1.0) << QPoint(-401, -301);
        QTest::newRow("origin") << QPointF(0, 0) << QPoint(0, 0);
        QTest::newRow("end") << QPointF(1, 1) << QPoint(401, 301);
        QTest::newRow("halves go away from zero") << QPointF(0.5, -0.5) << QPoint(201, -151);
        QTest::newRow("below a half") << QPointF(0.499, -0.499) << QPoint(200, -150);
    }

    void aFractionIsAPixelOfTheCanvas()
    {
        QFETCH(const QPointF, fraction);
        QTEST(pointAt(fraction, QSize(401, 301)), "expected");
    }
};

GAMEPAD_TEST_MAIN(TestConnectorGeometry)
#include "tst_connectorgeometry.moc"
