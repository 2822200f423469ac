// SPDX-License-Identifier: MIT
#include "picturegeometry.h"
#include "watchedcanvas.h"

#include "testmain.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QSet>
#include <QtGui/QPainter>

using namespace Qt::StringLiterals;
using enum BackgroundScaleMode;

namespace
{
const QColor topLeft(200, 0, 0);
const QColor topRight(0, 200, 0);
const QColor bottomLeft(0, 0, 200);
const QColor bottomRight(200, 200, 0);

QPixmap quarters(const QSize &size)
{
    QPixmap pixmap(size);
    QPainter painter(&pixmap);
    const int w = size.width() / 2;
    const int h = size.height() / 2;
    painter.fillRect(0, 0, w, h, topLeft);
    painter.fillRect(w, 0, w, h, topRight);
    painter.fillRect(0, h, w, h, bottomLeft);
    painter.fillRect(w, h, w, h, bottomRight);
    return pixmap;
}

QPixmap plain(const QSize &size)
{
    QPixmap pixmap(size);
    pixmap.fill(topLeft);
    return pixmap;
}

QImage picture(const QPixmap &pixmap, BackgroundScaleMode mode, const QSize &size)
{
    OverlayLines canvas;
    canvas.resize(size);
    canvas.setBackgroundScaleMode(mode);
    canvas.setBackgroundPixmap(pixmap);
    return canvas.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

QImage page(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QSet<QRgb> coloursOf(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return colours;
}

/// The rectangle of all pixels that are not transparent.
QRect paintedArea(const QImage &image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0)
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

/// The strokes of a connector, drawn by themselves on an empty page.
QImage strokes(const QSize &size, const QPen &pen, const QList<QPoint> &points)
{
    QImage image = page(size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    for (qsizetype i = 0; i + 1 < points.size(); ++i)
        painter.drawLine(QLine(points.at(i), points.at(i + 1)));
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

QPen roundPen(const QColor &colour, double width)
{
    return {QBrush(colour), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}
} // namespace

class TestOverlayLinesPainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void nothingIsPaintedWithoutAPicture()
    {
        for (const BackgroundScaleMode mode : {Stretch, Contain, Cover, Center})
            QVERIFY(paintedArea(picture(QPixmap(), mode, QSize(40, 30))).isNull());
    }

    void stretchFillsTheWidget()
    {
        const QImage image = picture(quarters({4, 2}), Stretch, QSize(100, 80));
        QCOMPARE(image.pixelColor(0, 0), topLeft);
        QCOMPARE(image.pixelColor(49, 39), topLeft);
        QCOMPARE(image.pixelColor(50, 39), topRight);
        QCOMPARE(image.pixelColor(49, 40), bottomLeft);
        QCOMPARE(image.pixelColor(99, 79), bottomRight);
    }

    void containLeavesBands()
    {
        const QImage image = picture(quarters({20, 10}), Contain, QSize(300, 301));
        QCOMPARE(paintedArea(image), QRect(0, 75, 300, 150));
        QCOMPARE(image.pixelColor(0, 75), topLeft);
        QCOMPARE(image.pixelColor(299, 224), bottomRight);
        QCOMPARE(image.pixelColor(149, 149), topLeft);
        QCOMPARE(image.pixelColor(150, 150), bottomRight);
        QCOMPARE(paintedArea(picture(quarters({20, 10}), Contain, QSize(301, 100))), QRect(50, 0, 200, 100));
    }

    void coverOverflows()
    {
        const QPixmap pixmap = quarters({20, 10});
        const QImage image = picture(pixmap, Cover, QSize(301, 300));
        QCOMPARE(paintedArea(image), QRect(0, 0, 301, 300));
        QImage expected = page(QSize(301, 300));
        QPainter painter(&expected);
        painter.drawPixmap(-149, 0, pixmap.scaled(600, 300, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        painter.end();
        QCOMPARE(image, expected.convertToFormat(QImage::Format_ARGB32));
    }

    void centerKeepsThePicturesSize()
    {
        const QImage small = picture(quarters({20, 10}), Center, QSize(41, 33));
        QCOMPARE(paintedArea(small), QRect(10, 11, 20, 10));
        QCOMPARE(small.pixelColor(10, 11), topLeft);
        QCOMPARE(small.pixelColor(20, 16), bottomRight);
        // (11 - 20) / 2 is -4 and (5 - 10) / 2 is -2.
        const QImage cut = picture(quarters({20, 10}), Center, QSize(11, 5));
        QCOMPARE(cut.pixelColor(5, 2), topLeft);
        QCOMPARE(cut.pixelColor(6, 2), topRight);
        QCOMPARE(cut.pixelColor(5, 3), bottomLeft);
    }

    void onlyCoverScalesSmoothly_data()
    {
        QTest::addColumn<BackgroundScaleMode>("mode");
        QTest::addColumn<bool>("smooth");
        QTest::newRow("stretch") << Stretch << false;
        QTest::newRow("contain") << Contain << false;
        QTest::newRow("cover") << Cover << true;
        QTest::newRow("center") << Center << false;
    }

    void onlyCoverScalesSmoothly()
    {
        QFETCH(const BackgroundScaleMode, mode);
        QFETCH(const bool, smooth);
        const QSize size = mode == Center ? QSize(4, 4) : QSize(60, 60);
        const qsizetype colours = coloursOf(picture(quarters({4, 4}), mode, size)).size();
        if (smooth) {
            QVERIFY(colours > 20);
        } else {
            QCOMPARE(colours, 4);
        }
    }

    void thePaintedAreaIsThePictureRectangle()
    {
        QRandomGenerator random(3);
        for (int i = 0; i < 60; ++i) {
            const QSize pixmap(random.bounded(1, 90), random.bounded(1, 90));
            const QSize size(random.bounded(1, 90), random.bounded(1, 90));
            for (const BackgroundScaleMode mode : {Stretch, Contain, Cover, Center}) {
                const QRect seen = pictureRect(pixmap, mode, size).intersected(QRect(QPoint(0, 0), size));
                const QRect painted = paintedArea(picture(plain(pixmap), mode, size));
                QCOMPARE(painted.isEmpty(), seen.isEmpty());
                QVERIFY(seen.isEmpty() || painted == seen);
            }
        }
    }

    void aDensePictureIsPaintedLikeAnyOther()
    {
        // What Qt makes of a file whose name ends in "@2x".
        QPixmap dense = quarters({20, 10});
        dense.setDevicePixelRatio(2.0);
        for (const BackgroundScaleMode mode : {Stretch, Contain, Cover, Center})
            QCOMPARE(picture(dense, mode, QSize(41, 33)), picture(quarters({20, 10}), mode, QSize(41, 33)));
    }

    void aNarrowPictureCoversAWideWidget()
    {
        // Scaled whole, it would take 600 by 12,000,000 pixels.
        const QImage image = picture(plain({1, 20000}), Cover, QSize(600, 10));
        QCOMPARE(coloursOf(image), QSet<QRgb>{topLeft.rgba()});
    }

    void aConnectorLeadsToTheNearCorner_data()
    {
        QTest::addColumn<QRect>("area");
        QTest::addColumn<QRect>("box");
        QTest::addColumn<QList<QPoint>>("points");
        // A start of 56 by 56 pixels has its middle at 27 and its lowest row at 55; the gap is 6.
        QTest::newRow("the box is right of the start") << QRect(20, 20, 56, 56) << QRect(140, 40, 120, 60)
                                                       << QList<QPoint>{{47, 81}, {140, 105}, {259, 105}};
        QTest::newRow("the box is left of the start") << QRect(300, 20, 56, 56) << QRect(40, 40, 120, 60)
                                                      << QList<QPoint>{{327, 81}, {159, 105}, {40, 105}};
        QTest::newRow("the box is below the start") << QRect(120, 20, 56, 56) << QRect(100, 160, 120, 60)
                                                    << QList<QPoint>{{147, 81}, {219, 225}, {100, 225}};
        QTest::newRow("the box is above the start") << QRect(120, 200, 56, 56) << QRect(100, 20, 120, 60)
                                                    << QList<QPoint>{{147, 261}, {219, 85}, {100, 85}};
        QTest::newRow("the start is exactly above the right corner")
            << QRect(192, 20, 56, 56) << QRect(100, 160, 120, 60)
            << QList<QPoint>{{219, 81}, {219, 225}, {100, 225}};
        QTest::newRow("the start is exactly above the left corner")
            << QRect(73, 20, 56, 56) << QRect(100, 160, 120, 60)
            << QList<QPoint>{{100, 81}, {219, 225}, {100, 225}};
        QTest::newRow("the start is one pixel to the right")
            << QRect(193, 20, 56, 56) << QRect(100, 160, 120, 60)
            << QList<QPoint>{{220, 81}, {219, 225}, {100, 225}};
        QTest::newRow("the start is one pixel to the left")
            << QRect(72, 20, 56, 56) << QRect(100, 160, 120, 60)
            << QList<QPoint>{{99, 81}, {100, 225}, {219, 225}};
    }

    void aConnectorLeadsToTheNearCorner()
    {
        QFETCH(const QRect, area);
        QFETCH(const QRect, box);
        QFETCH(const QList<QPoint>, points);
        WatchedCanvas stage;
        QVERIFY(stage.exposed());
        stage.canvas()->addLine(stage.endpoint(area), stage.endpoint(box), 6, Qt::white, 2.0);
        QCOMPARE(stage.image(), strokes(QSize(400, 300), roundPen(Qt::white, 2.0), points));
    }

    void gapColourAndWidthAreTheLines()
    {
        WatchedCanvas stage;
        QWidget *area = stage.endpoint({20, 20, 56, 56});
        QWidget *box = stage.endpoint({140, 40, 120, 60});
        const QColor half(10, 200, 30, 128);
        stage.canvas()->addLine(area, box, 0, half, 9.5);
        QCOMPARE(stage.image(),
                 strokes(QSize(400, 300), roundPen(half, 9.5), {{47, 75}, {140, 99}, {259, 99}}));
    }

    void endpointsDeepInsideAreMappedIntoTheCanvas()
    {
        WatchedCanvas stage;
        QWidget *panel = stage.endpoint({120, 20, 200, 200});
        auto *box = new QWidget(panel);
        box->setGeometry(20, 20, 120, 60);
        box->show();
        QWidget *area = stage.endpoint({20, 20, 56, 56});
        stage.canvas()->addLine(area, box, 6, Qt::white, 2.0);
        QCOMPARE(stage.image(),
                 strokes(QSize(400, 300), roundPen(Qt::white, 2.0), {{47, 81}, {140, 105}, {259, 105}}));
    }

    void aLineWithoutAShownStartComesFromOutside_data()
    {
        QTest::addColumn<bool>("hasStart");
        QTest::newRow("hidden") << true;
        QTest::newRow("null") << false;
    }

    void aLineWithoutAShownStartComesFromOutside()
    {
        QFETCH(const bool, hasStart);
        WatchedCanvas stage;
        QWidget *area = hasStart ? stage.endpoint({300, 20, 56, 56}) : nullptr;
        QWidget *box = stage.endpoint({140, 40, 120, 60});
        stage.canvas()->addLine(area, box, 6, Qt::white, 2.0);
        if (area)
            area->hide();
        // The lead enters over the top left corner and meets the left corner of the box; nobody covers it.
        const QImage image = stage.image();
        QCOMPARE(image,
                 strokes(QSize(400, 300), roundPen(Qt::white, 2.0), {{-400, -300}, {140, 105}, {259, 105}}));
        QVERIFY(paintedArea(image).right() >= 259);
    }

    void aLineWithoutAShownTargetIsNotDrawn()
    {
        WatchedCanvas stage;
        QWidget *area = stage.endpoint({20, 20, 56, 56});
        QWidget *box = stage.endpoint({140, 40, 120, 60});
        stage.canvas()->addLine(area, nullptr, 6, Qt::white, 2.0);
        QVERIFY(paintedArea(stage.image()).isNull());
        stage.canvas()->addLine(area, box, 6, Qt::white, 2.0);
        QVERIFY(!paintedArea(stage.image()).isNull());
        box->hide();
        QVERIFY(paintedArea(stage.image()).isNull());
        stage.canvas()->addLine(nullptr, nullptr, 6, Qt::white, 2.0);
        QVERIFY(paintedArea(stage.image()).isNull());
    }

    void laterLinesLieAboveEarlierOnes()
    {
        WatchedCanvas stage;
        QWidget *area = stage.endpoint({20, 20, 56, 56});
        QWidget *box = stage.endpoint({140, 40, 120, 60});
        stage.canvas()->addLine(area, box, 6, Qt::red, 4.0);
        stage.canvas()->addLine(area, box, 6, Qt::blue, 4.0);
        QVERIFY(stage.isUnderlined(box, Qt::blue));
    }

    void linesLieAboveThePictureAndBelowTheChildren()
    {
        WatchedCanvas stage;
        stage.canvas()->setBackgroundScaleMode(Stretch);
        stage.canvas()->setBackgroundPixmap(plain({10, 10}));
        QWidget *area = stage.endpoint({20, 20, 56, 56});
        QWidget *box = stage.endpoint({140, 40, 120, 60});
        QWidget *cover = stage.endpoint({200, 90, 20, 40});
        cover->setAutoFillBackground(true);
        cover->setPalette(QPalette(Qt::magenta));
        stage.canvas()->addLine(area, box, 6, Qt::white, 4.0);
        const QImage image = stage.image();
        QCOMPARE(image.pixelColor(180, 105), QColor(Qt::white));
        QCOMPARE(image.pixelColor(180, 120), topLeft);
        QCOMPARE(image.pixelColor(205, 105), cover->palette().color(QPalette::Window));
    }
};

GAMEPAD_TEST_MAIN(TestOverlayLinesPainting)
#include "tst_overlaylinespainting.moc"
