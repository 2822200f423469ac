// SPDX-License-Identifier: MIT
#include "picturegeometry.h"

#include "testmain.h"

#include <QtCore/QRandomGenerator>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <limits>

namespace
{
using enum BackgroundScaleMode;

constexpr int intMax = std::numeric_limits<int>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The corners of `rect` by sums that cannot overflow.
bool cornersFitInt(const QRect &rect)
{
    const qint64 right = qint64{rect.x()} + rect.width() - 1;
    const qint64 bottom = qint64{rect.y()} + rect.height() - 1;
    return right == rect.right() && bottom == rect.bottom();
}
} // namespace

class TestPictureGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aPictureCoversItsRectangle_data()
    {
        QTest::addColumn<QSize>("pixmap");
        QTest::addColumn<BackgroundScaleMode>("mode");
        QTest::addColumn<QSize>("widget");
        QTest::addColumn<QRect>("expected");

        const QSize wide(200, 100);
        QTest::newRow("stretch") << wide << Stretch << QSize(300, 301) << QRect(0, 0, 300, 301);
        QTest::newRow("contain, bands above and below")
            << wide << Contain << QSize(300, 301) << QRect(0, 75, 300, 150);
        QTest::newRow("contain, bands at the sides")
            << wide << Contain << QSize(301, 100) << QRect(50, 0, 200, 100);
        QTest::newRow("contain, same aspect") << wide << Contain << QSize(400, 200) << QRect(0, 0, 400, 200);
        QTest::newRow("contain, tall picture")
            << QSize(100, 200) << Contain << QSize(300, 300) << QRect(75, 0, 150, 300);
        QTest::newRow("cover, overflow at the sides")
            << wide << Cover << QSize(301, 300) << QRect(-149, 0, 600, 300);
        QTest::newRow("cover, overflow above and below")
            << wide << Cover << QSize(400, 101) << QRect(0, -49, 400, 200);
        QTest::newRow("cover, same aspect") << wide << Cover << QSize(50, 25) << QRect(0, 0, 50, 25);
        QTest::newRow("center, smaller") << wide << Center << QSize(301, 203) << QRect(50, 51, 200, 100);
        // The halves of -99 and of -49 are cut toward zero and not downward.
        QTest::newRow("center, larger") << wide << Center << QSize(101, 51) << QRect(-49, -24, 200, 100);
    }

    void aPictureCoversItsRectangle()
    {
        QFETCH(const QSize, pixmap);
        QFETCH(const BackgroundScaleMode, mode);
        QFETCH(const QSize, widget);
        QTEST(pictureRect(pixmap, mode, widget), "expected");
    }

    void withoutAPictureOrAnAreaTheWholeWidgetCounts_data()
    {
        QTest::addColumn<QSize>("pixmap");
        QTest::addColumn<QSize>("widget");
        QTest::newRow("null pixmap") << QPixmap().size() << QSize(300, 200);
        QTest::newRow("empty widget") << QSize(20, 10) << QSize(0, 0);
        QTest::newRow("no width") << QSize(20, 10) << QSize(0, 200);
        QTest::newRow("no height") << QSize(20, 10) << QSize(300, 0);
        QTest::newRow("neither") << QSize(0, 0) << QSize(0, 0);
    }

    void withoutAPictureOrAnAreaTheWholeWidgetCounts()
    {
        QFETCH(const QSize, pixmap);
        QFETCH(const QSize, widget);
        for (const BackgroundScaleMode mode : {Stretch, Contain, Cover, Center})
            QCOMPARE(pictureRect(pixmap, mode, widget), QRect(QPoint(0, 0), widget));
    }

    void ordinarySizesScaleAsQtScalesThem()
    {
        QRandomGenerator random(7);
        for (int i = 0; i < 2000; ++i) {
            const QSize pixmap(random.bounded(1, 2000), random.bounded(1, 2000));
            const QSize widget(random.bounded(1, 2000), random.bounded(1, 2000));
            QCOMPARE(pictureRect(pixmap, Contain, widget).size(), pixmap.scaled(widget, Qt::KeepAspectRatio));
            QCOMPARE(pictureRect(pixmap, Cover, widget).size(),
                     pixmap.scaled(widget, Qt::KeepAspectRatioByExpanding));
        }
    }

    void hugeSizesSaturate()
    {
        const QSize huge(intMax, intMax);
        QCOMPARE(pictureRect(QSize(2, 1), Stretch, huge), QRect(QPoint(0, 0), huge));
        QCOMPARE(pictureRect(QSize(2, 1), Contain, huge).width(), intMax);
        QCOMPARE(pictureRect(QSize(2, 1), Cover, huge).size(), huge);
        QCOMPARE(pictureRect(QSize(1, 32767), Cover, QSize(intMax, 1)).size(), huge);
        for (const BackgroundScaleMode mode : {Stretch, Contain, Cover, Center}) {
            for (const QSize pixmap : {QSize(1, 32767), QSize(32767, 1), QSize(1, 1)}) {
                for (const QSize widget : {huge, QSize(intMax, 1), QSize(1, intMax)})
                    QVERIFY(cornersFitInt(pictureRect(pixmap, mode, widget)));
            }
        }
    }

    void centringCutsHalvesTowardZero()
    {
        QCOMPARE(centredIn(QSize(4, 4), QSize(7, 8)), QRect(1, 2, 4, 4));
        QCOMPARE(centredIn(QSize(7, 8), QSize(4, 4)), QRect(-1, -2, 7, 8));
        QCOMPARE(centredIn(QSize(5, 5), QSize(5, 5)), QRect(0, 0, 5, 5));
    }

    void pixelsBecomeFractionsOfThePicture()
    {
        const QRect pic(100, 50, 400, 200);
        QCOMPARE(toPicture(QRect(200, 100, 56, 56), pic), QRectF(0.25, 0.25, 0.14, 0.28));
        QCOMPARE(toPicture(QRect(20, 10, 8, 4), pic), QRectF(-0.2, -0.2, 0.02, 0.02));
        QCOMPARE(toPicture(QRect(500, 250, 400, 200), pic), QRectF(1, 1, 1, 1));
        QCOMPARE(toPicture(QRect(0, 0, 50, 50), QRect(-50, -25, 100, 100)), QRectF(0.5, 0.25, 0.5, 0.5));
    }

    void farCornersAreNoOverflow()
    {
        const QRectF n = toPicture(QRect(intMax - 10, intMax - 10, 5, 5), QRect(-intMax, -intMax, 10, 10));
        QCOMPARE(n.x(), (2.0 * intMax - 10) / 10);
        QCOMPARE(n.y(), n.x());
    }

    void withoutAPictureAreaNothingConverts_data()
    {
        QTest::addColumn<QRect>("pic");
        QTest::newRow("null") << QRect();
        QTest::newRow("no width") << QRect(1, 1, 0, 20);
        QTest::newRow("no height") << QRect(1, 1, 20, 0);
        QTest::newRow("negative") << QRect(1, 1, -5, -5);
    }

    void withoutAPictureAreaNothingConverts()
    {
        QFETCH(const QRect, pic);
        QVERIFY(!toPicture(QRect(1, 2, 3, 4), pic).isValid());
        QVERIFY(fromPicture(QRectF(0.1, 0.2, 0.3, 0.4), pic).isNull());
    }

    void fractionsBecomePixels_data()
    {
        QTest::addColumn<QRectF>("n");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("inside") << QRectF(0.25, 0.25, 0.14, 0.28) << QRect(200, 100, 56, 56);
        QTest::newRow("beside the picture") << QRectF(-0.5, 1.5, 0.1, 0.1) << QRect(-100, 350, 40, 20);
        QTest::newRow("a half goes up") << QRectF(0.00125, 0.0025, 0.00375, 0.0075) << QRect(101, 51, 2, 2);
        QTest::newRow("below a half goes down")
            << QRectF(0.0012, 0.0024, 0.0036, 0.007) << QRect(100, 50, 1, 1);
        QTest::newRow("no size") << QRectF(0, 0, 0, 0) << QRect(100, 50, 1, 1);
        QTest::newRow("negative size") << QRectF(0, 0, -0.5, -3) << QRect(100, 50, 1, 1);
    }

    void fractionsBecomePixels()
    {
        QFETCH(const QRectF, n);
        QTEST(fromPicture(n, QRect(100, 50, 400, 200)), "expected");
    }

    void halvesGoAwayFromZero()
    {
        const QRect pic(0, 0, 2, 2);
        QCOMPARE(fromPicture(QRectF(0.25, 0.75, 0.75, 1.25), pic), QRect(1, 2, 2, 3));
        QCOMPARE(fromPicture(QRectF(-0.25, -0.75, 1, 1), pic), QRect(-1, -2, 2, 2));
        QCOMPARE(fromPicture(QRectF(-0.2, -0.7, 1, 1), pic), QRect(0, -1, 2, 2));
    }

    void theLastNumberBelowAHalfRoundsUp()
    {
        // 0.49999999999999994 + 0.5 is 1 as a double.
        QCOMPARE(fromPicture(QRectF(0.49999999999999994, 0, 1, 1), QRect(0, 0, 1, 1)).x(), 1);
    }

    void pixelsComeBackFromFractions()
    {
        QRandomGenerator random(11);
        for (int i = 0; i < 2000; ++i) {
            const QRect pic(random.bounded(-500, 500), random.bounded(-500, 500), random.bounded(1, 2000),
                            random.bounded(1, 2000));
            const QRect r(random.bounded(-500, 2500), random.bounded(-500, 2500), random.bounded(1, 500),
                          random.bounded(1, 500));
            QCOMPARE(fromPicture(toPicture(r, pic), pic), r);
        }
    }

    void numbersOutOfRangeSaturate_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<int>("place");
        QTest::addColumn<int>("length");
        const int far = farthestPixel;
        QTest::newRow("beyond int") << 1e8 << far << far;
        QTest::newRow("far below int") << -1e8 << -far << 1;
        QTest::newRow("the largest double") << std::numeric_limits<double>::max() << far << far;
        QTest::newRow("the lowest double") << std::numeric_limits<double>::lowest() << -far << 1;
        QTest::newRow("infinite") << infinity << far << far;
        QTest::newRow("negative infinite") << -infinity << -far << 1;
        QTest::newRow("not a number") << notANumber << 0 << 1;
        QTest::newRow("denormal") << std::numeric_limits<double>::denorm_min() << 100 << 1;
    }

    void numbersOutOfRangeSaturate()
    {
        QFETCH(const double, number);
        QFETCH(const int, place);
        QFETCH(const int, length);
        const QRect pixels = fromPicture(QRectF(number, number, number, number), QRect(100, 100, 400, 400));
        QCOMPARE(pixels, QRect(place, place, length, length));
        QVERIFY(cornersFitInt(pixels));
        QVERIFY(cornersFitInt(fromPicture(QRectF(number, number, number, number),
                                          QRect(-intMax / 2, -intMax / 2, intMax, intMax))));
    }

    void aWidgetTakesTheFarthestRectangleInSilence()
    {
        QWidget parent;
        QWidget widget(&parent);
        const QRect far = fromPicture(QRectF(1e300, -1e300, 1e300, 1e300), QRect(0, 0, 10, 10));
        QCOMPARE(farthestPixel, QWIDGETSIZE_MAX - 1);
        widget.setFixedSize(far.size());
        widget.move(far.topLeft());
        QCOMPARE(widget.geometry(), far);
    }
};

GAMEPAD_TEST_MAIN(TestPictureGeometry)
#include "tst_picturegeometry.moc"
