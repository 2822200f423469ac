// SPDX-License-Identifier: MIT
#include "watchedcanvas.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

/// How lines go: one by one, all at once, or with their widgets.
class TestOverlayLinesRemoval : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aRemovedLineIsGone()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        const int id = stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        QCOMPARE(stage.paintsAfter([&] { stage.canvas()->removeLine(id); }), 1);
        QVERIFY(!stage.isUnderlined(to, Qt::red));
    }

    void anUnknownIdRemovesNothing()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        const int id = stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        for (const int unknown : {id + 1, 0, -1})
            QCOMPARE(stage.paintsAfter([&] { stage.canvas()->removeLine(unknown); }), 0);
        QVERIFY(stage.isUnderlined(to, Qt::red));
    }

    void otherLinesOnTheSameWidgetsGoToo()
    {
        WatchedCanvas stage;
        QWidget *shared = stage.endpoint({10, 10, 40, 40});
        QWidget *sharedBox = stage.endpoint({100, 20, 60, 20});
        QWidget *boxOfStart = stage.endpoint({200, 20, 60, 20});
        QWidget *otherStart = stage.endpoint({10, 150, 40, 40});
        QWidget *farBox = stage.endpoint({200, 150, 60, 20});
        const int id = stage.canvas()->addLine(shared, sharedBox, 6, Qt::red, 4.0);
        stage.canvas()->addLine(shared, boxOfStart, 6, Qt::green, 4.0);
        stage.canvas()->addLine(otherStart, sharedBox, 6, Qt::blue, 4.0);
        stage.canvas()->addLine(otherStart, farBox, 6, Qt::cyan, 4.0);

        stage.canvas()->removeLine(id);
        QVERIFY(!stage.isUnderlined(boxOfStart, Qt::green));
        QCOMPARE(stage.image().pixelColor(130, 45).alpha(), 0);
        // It shares a widget with a line that went, but not with the line that was removed.
        QVERIFY(stage.isUnderlined(farBox, Qt::cyan));
    }

    void aSingleLineLeavesItsFiltersInPlace()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        stage.canvas()->removeLine(stage.canvas()->addLine(from, to, 6, Qt::red, 4.0));
        QCOMPARE(stage.timesFiltered(from), 1);
        QCOMPARE(stage.timesFiltered(to), 1);
        stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        QCOMPARE(stage.timesFiltered(from), 1);
    }

    void aFurtherLineTakesTheFilterAlong()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        QWidget *other = stage.endpoint({200, 160, 80, 40});
        const int id = stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        stage.canvas()->addLine(from, other, 6, Qt::red, 4.0);
        stage.canvas()->removeLine(id);
        QCOMPARE(stage.timesFiltered(from), 0);
        QCOMPARE(stage.timesFiltered(to), 1);
        QCOMPARE(stage.timesFiltered(other), 1);
    }

    void clearingRemovesAllLinesAndFilters()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        QWidget *gone = stage.endpoint({200, 160, 80, 40});
        stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        stage.canvas()->addLine(nullptr, to, 6, Qt::red, 4.0);
        stage.canvas()->addLine(from, nullptr, 6, Qt::red, 4.0);
        stage.canvas()->addLine(from, gone, 6, Qt::red, 4.0);
        delete gone;
        QCOMPARE(stage.paintsAfter([&] { stage.canvas()->clearLines(); }), 1);
        QVERIFY(!stage.isUnderlined(to, Qt::red));
        QCOMPARE(stage.timesFiltered(from), 0);
        QCOMPARE(stage.timesFiltered(to), 0);
        QCOMPARE(stage.paintsAfter([&] { stage.canvas()->clearLines(); }), 1);
    }

    void theDestroyEventOfALivingWidgetRemovesItsLines()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        QWidget *other = stage.endpoint({200, 160, 80, 40});
        stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        stage.canvas()->addLine(from, other, 6, Qt::green, 4.0);
        const auto destroyEvent = [&](QWidget *widget) {
            QEvent event(QEvent::Destroy);
            QVERIFY(!stage.canvas()->eventFilter(widget, &event));
        };
        QCOMPARE(stage.paintsAfter([&] { destroyEvent(to); }), 1);
        QVERIFY(!stage.isUnderlined(to, Qt::red));
        QVERIFY(stage.isUnderlined(other, Qt::green));
        QCOMPARE(stage.timesFiltered(to), 0);
        QCOMPARE(stage.timesFiltered(from), 1);

        // No line of it is left: no repaint, and the filter of a widget without lines stays.
        const int id = stage.canvas()->addLine(nullptr, to, 6, Qt::red, 4.0);
        stage.canvas()->removeLine(id);
        QCOMPARE(stage.paintsAfter([&] { destroyEvent(to); }), 0);
        QCOMPARE(stage.timesFiltered(to), 1);
    }

    void theDestroyEventOfNoWidgetIsHarmless()
    {
        WatchedCanvas stage;
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        stage.canvas()->addLine(nullptr, to, 6, Qt::red, 4.0);
        QObject plain;
        QEvent event(QEvent::Destroy);
        QCOMPARE(stage.paintsAfter([&] { QVERIFY(!stage.canvas()->eventFilter(&plain, &event)); }), 0);
        QVERIFY(stage.isUnderlined(to, Qt::red));
    }

    void aDestroyedWidgetTakesBothItsLines_data()
    {
        QTest::addColumn<bool>("later");
        QTest::newRow("at once") << false;
        QTest::newRow("by deferred deletion") << true;
    }

    void aDestroyedWidgetTakesBothItsLines()
    {
        QFETCH(const bool, later);
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *first = stage.endpoint({200, 20, 80, 20});
        QWidget *second = stage.endpoint({200, 100, 80, 20});
        QWidget *otherFrom = stage.endpoint({10, 200, 40, 40});
        QWidget *third = stage.endpoint({200, 200, 80, 20});
        stage.canvas()->addLine(from, first, 6, Qt::red, 4.0);
        stage.canvas()->addLine(otherFrom, third, 6, Qt::blue, 4.0);
        stage.canvas()->addLine(from, second, 6, Qt::green, 4.0);
        const int paints = stage.paintsAfter([&] {
            if (later) {
                const QPointer<QWidget> dying = from;
                from->deleteLater();
                QTRY_VERIFY(!dying);
            } else {
                delete from;
            }
        });
        QVERIFY(paints >= 1);
        QVERIFY(!stage.isUnderlined(first, Qt::red));
        QVERIFY(!stage.isUnderlined(second, Qt::green));
        QVERIFY(stage.isUnderlined(third, Qt::blue));
    }

    void aDestroyedTargetTakesItsLine()
    {
        WatchedCanvas stage;
        QWidget *from = stage.endpoint({10, 10, 40, 40});
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        QWidget *other = stage.endpoint({200, 160, 80, 40});
        const int id = stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        stage.canvas()->addLine(from, other, 6, Qt::green, 4.0);
        delete to;
        // Had the line stayed, its removal would take the other line on the same pastille along.
        QCOMPARE(stage.paintsAfter([&] { stage.canvas()->removeLine(id); }), 0);
        QVERIFY(stage.isUnderlined(other, Qt::green));
    }

    void linesWithoutAWidgetStayWhenOthersDie()
    {
        WatchedCanvas stage;
        QWidget *to = stage.endpoint({200, 60, 80, 40});
        QWidget *dying = stage.endpoint({10, 10, 40, 40});
        stage.canvas()->addLine(nullptr, to, 6, Qt::red, 4.0);
        stage.canvas()->addLine(dying, nullptr, 6, Qt::green, 4.0);
        delete dying;
        QVERIFY(stage.isUnderlined(to, Qt::red));
    }

    void aWidgetAtBothEndsOfItsLine()
    {
        WatchedCanvas stage;
        QWidget *widget = stage.endpoint({200, 60, 80, 40});
        const int id = stage.canvas()->addLine(widget, widget, 6, Qt::red, 4.0);
        QVERIFY(stage.isUnderlined(widget, Qt::red));
        stage.canvas()->removeLine(id);
        QVERIFY(!stage.isUnderlined(widget, Qt::red));
        stage.canvas()->addLine(widget, widget, 6, Qt::red, 4.0);
        delete widget;
        QCOMPARE(stage.image().pixelColor(240, 105).alpha(), 0);
    }

    void aLineGoesWhileAnotherWidgetDiesInTheSamePass()
    {
        WatchedCanvas stage;
        QWidget *panel = stage.endpoint({0, 0, 300, 200});
        auto *from = new QWidget(panel);
        auto *to = new QWidget(panel);
        QWidget *other = stage.endpoint({310, 20, 60, 20});
        stage.canvas()->addLine(from, to, 6, Qt::red, 4.0);
        stage.canvas()->addLine(from, other, 6, Qt::green, 4.0);
        stage.canvas()->addLine(nullptr, other, 6, Qt::blue, 4.0);
        delete panel;
        QVERIFY(stage.isUnderlined(other, Qt::blue));
    }

    void aCanvasThatDiesLeavesWidgetsAlone()
    {
        QWidget survivor;
        {
            OverlayLines canvas;
            auto *from = new QWidget(&canvas);
            auto *to = new QWidget(&canvas);
            canvas.addLine(from, to, 6, Qt::red, 4.0);
            canvas.addLine(&survivor, to, 6, Qt::red, 4.0);
        }
        survivor.resize(10, 10);
        survivor.move(5, 5);
        QCOMPARE(survivor.size(), QSize(10, 10));
    }
};

GAMEPAD_TEST_MAIN(TestOverlayLinesRemoval)
#include "tst_overlaylinesremoval.moc"
