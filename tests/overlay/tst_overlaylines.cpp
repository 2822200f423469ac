// SPDX-License-Identifier: MIT
#include "watchedcanvas.h"

#include "testmain.h"

#include <QtCore/QMetaMethod>
#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;
using enum BackgroundScaleMode;

namespace
{
QPixmap plainPicture()
{
    QPixmap pixmap(20, 10);
    pixmap.fill(Qt::red);
    return pixmap;
}
} // namespace

class TestOverlayLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aNewCanvasContainsNoPicture()
    {
        const OverlayLines canvas;
        QVERIFY(canvas.backgroundPixmap().isNull());
        QCOMPARE(canvas.backgroundScaleMode(), Contain);
        QVERIFY(canvas.testAttribute(Qt::WA_NoSystemBackground));
        QVERIFY(!canvas.testAttribute(Qt::WA_OpaquePaintEvent));
        QVERIFY(canvas.testAttribute(Qt::WA_AlwaysStackOnTop));
        QVERIFY(canvas.testAttribute(Qt::WA_MouseTracking));
    }

    void signalsStandInTheirOrder()
    {
        const QMetaObject &meta = OverlayLines::staticMetaObject;
        QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), "backgroundPixmapChanged()"_ba);
        QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), "backgroundScaleModeChanged()"_ba);
    }

    void propertiesAreNotified()
    {
        OverlayLines canvas;
        QSignalSpy picture(&canvas, &OverlayLines::backgroundPixmapChanged);
        QSignalSpy mode(&canvas, &OverlayLines::backgroundScaleModeChanged);
        QVERIFY(canvas.setProperty("backgroundPixmap", plainPicture()));
        QVERIFY(canvas.setProperty("backgroundScaleMode", QVariant::fromValue(Cover)));
        QCOMPARE(picture.count(), 1);
        QCOMPARE(mode.count(), 1);
        QCOMPARE(canvas.property("backgroundPixmap").value<QPixmap>().size(), QSize(20, 10));
        QCOMPARE(canvas.property("backgroundScaleMode").value<BackgroundScaleMode>(), Cover);
        const QMetaObject *meta = canvas.metaObject();
        QCOMPARE(meta->property(meta->indexOfProperty("backgroundPixmap")).notifySignal().name(),
                 "backgroundPixmapChanged"_ba);
        QCOMPARE(meta->property(meta->indexOfProperty("backgroundScaleMode")).notifySignal().name(),
                 "backgroundScaleModeChanged"_ba);
    }

    void theModeIsItsNumberToo()
    {
        OverlayLines canvas;
        QCOMPARE(canvas.property("backgroundScaleMode").toInt(), 1);
        QVERIFY(canvas.setProperty("backgroundScaleMode", 3));
        QCOMPARE(canvas.backgroundScaleMode(), Center);
        QCOMPARE(canvas.property("backgroundScaleMode").toInt(), 3);
    }

    void thePictureIsAnnouncedEachTime()
    {
        WatchedCanvas stage;
        QVERIFY(stage.exposed());
        QSignalSpy spy(stage.canvas(), &OverlayLines::backgroundPixmapChanged);
        const QPixmap picture = plainPicture();
        QCOMPARE(stage.paintsAfter([&] { stage.canvas()->setBackgroundPixmap(picture); }), 1);
        QCOMPARE(stage.paintsAfter([&] { stage.canvas()->setBackgroundPixmap(picture); }), 1);
        QCOMPARE(stage.canvas()->backgroundPixmap().cacheKey(), picture.cacheKey());
        QCOMPARE(stage.paintsAfter([&] { stage.canvas()->setBackgroundPixmap(QPixmap()); }), 1);
        QCOMPARE(spy.count(), 3);
        QVERIFY(stage.canvas()->backgroundPixmap().isNull());
    }

    void theModeIsAnnouncedWhenItChanges()
    {
        WatchedCanvas stage;
        QSignalSpy spy(stage.canvas(), &OverlayLines::backgroundScaleModeChanged);
        const auto set = [&](BackgroundScaleMode mode) {
            return stage.paintsAfter([&] { stage.canvas()->setBackgroundScaleMode(mode); });
        };
        QCOMPARE(set(Contain), 0);
        QCOMPARE(spy.count(), 0);
        QCOMPARE(set(Center), 1);
        QCOMPARE(set(Center), 0);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(stage.canvas()->backgroundScaleMode(), Center);
    }

    void theNewValueIsThereWhenItIsAnnounced()
    {
        OverlayLines canvas;
        BackgroundScaleMode heard = Contain;
        QSize heardSize;
        connect(&canvas, &OverlayLines::backgroundScaleModeChanged, this,
                [&] { heard = canvas.backgroundScaleMode(); });
        connect(&canvas, &OverlayLines::backgroundPixmapChanged, this,
                [&] { heardSize = canvas.backgroundPixmap().size(); });
        canvas.setBackgroundScaleMode(Stretch);
        canvas.setBackgroundPixmap(plainPicture());
        QCOMPARE(heard, Stretch);
        QCOMPARE(heardSize, QSize(20, 10));
    }

    void lineIdsOnlyGrow()
    {
        OverlayLines canvas;
        QWidget from(&canvas);
        QWidget to(&canvas);
        QCOMPARE(canvas.addLine(&from, &to, 6, Qt::white, 2.0), 1);
        QCOMPARE(canvas.addLine(&from, &to, 6, Qt::white, 2.0), 2);
        QCOMPARE(canvas.addLine(nullptr, nullptr, 6, Qt::white, 2.0), 3);
        canvas.removeLine(3);
        QCOMPARE(canvas.addLine(&from, &to, 6, Qt::white, 2.0), 4);
        canvas.clearLines();
        QCOMPARE(canvas.addLine(&from, &to, 6, Qt::white, 2.0), 5);
    }

    void addingALineRepaints()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        QCOMPARE(stage.paintsAfter([&] { stage.canvas()->addLine(from, to, 6, Qt::red, 4.0); }), 1);
        QVERIFY(stage.isUnderlined(to, Qt::red));
    }

    void aWidgetIsNeverFilteredTwice()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        QCOMPARE(stage.timesFiltered(from), 0);
        stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        stage.canvas()->addLine(from, to, 6, Qt::blue, 4.0);
        stage.canvas()->addLine(to, from, 6, Qt::blue, 4.0);
        QCOMPARE(stage.timesFiltered(from), 1);
        QCOMPARE(stage.timesFiltered(to), 1);
    }

    void endpointsRepaintTheCanvas_data()
    {
        QTest::addColumn<QEvent::Type>("type");
        QTest::addColumn<int>("paints");
        QTest::newRow("move") << QEvent::Move << 1;
        QTest::newRow("resize") << QEvent::Resize << 1;
        QTest::newRow("show") << QEvent::Show << 1;
        QTest::newRow("hide") << QEvent::Hide << 1;
        QTest::newRow("layout request") << QEvent::LayoutRequest << 1;
        QTest::newRow("an event of no interest") << QEvent::User << 0;
        QTest::newRow("title") << QEvent::WindowTitleChange << 0;
        QTest::newRow("tool tip change") << QEvent::ToolTipChange << 0;
    }

    // Through the filter alone: a real move repaints parts of the canvas by itself.
    void endpointsRepaintTheCanvas()
    {
        QFETCH(const QEvent::Type, type);
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        bool swallowed = true;
        const int paints = stage.paintsAfter([&] {
            QEvent event(type);
            swallowed = stage.canvas()->eventFilter(to, &event);
        });
        QTEST(paints, "paints");
        QVERIFY(!swallowed);
        QVERIFY(stage.isUnderlined(to, Qt::red));
    }

    void movedEndpointsTakeTheirLineAlong()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        QVERIFY(stage.paintsAfter([&] { from->move(60, 20); }) >= 1);
        QVERIFY(stage.paintsAfter([&] { to->move(210, 200); }) >= 1);
        QVERIFY(stage.isUnderlined(to, Qt::red));
        QVERIFY(stage.paintsAfter([&] { to->resize(100, 30); }) >= 1);
        QVERIFY(stage.isUnderlined(to, Qt::red));
    }

    void aLineReturnsWithItsTarget()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        QVERIFY(stage.paintsAfter([&] { to->hide(); }) >= 1);
        QVERIFY(!stage.isUnderlined(to, Qt::red));
        QVERIFY(stage.paintsAfter([&] { to->show(); }) >= 1);
        QVERIFY(stage.isUnderlined(to, Qt::red));
    }
};

GAMEPAD_TEST_MAIN(TestOverlayLines)
#include "tst_overlaylines.moc"
