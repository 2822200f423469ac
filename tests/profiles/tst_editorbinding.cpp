// SPDX-License-Identifier: MIT
// Which gamepad the editor starts, listens to and stops as profiles come on show and leave.
#include "editorstage.h"
#include "testmain.h"

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;
using namespace stage;

class TestEditorBinding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }

    void theProfileOfConstructionIsBoundOnlyWhenItIsChosenAgain()
    {
        store(1, {.deviceName = u"Pad"_s});
        store(2);
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        QCOMPARE(comboOf(editor).currentText(), u"Pad"_s);
        QVERIFY(!pads.isRunning(0));
        listOf(editor).setCurrentRow(1);
        QVERIFY(!pads.isRunning(0));
        listOf(editor).setCurrentRow(0);
        QVERIFY(pads.isRunning(0));
        listOf(editor).setCurrentRow(1);
        QVERIFY(!pads.isRunning(0));
    }

    void aGamepadThatArrivesIsNotBound()
    {
        store(1, {.deviceName = u"Pad"_s});
        store(2);
        Pads pads;
        GamepadDefinder editor;
        pads.plug(0);
        QVERIFY(!pads.isRunning(0));
        listOf(editor).setCurrentRow(1);
        listOf(editor).setCurrentRow(0);
        QVERIFY(pads.isRunning(0));
    }

    void aLinkInOtherCaseIsNotAmongTheLiveNames()
    {
        store(1);
        store(2, {.deviceName = u"PAD"_s});
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        QVERIFY(!pads.isRunning(0));
    }

    void ofTwoGamepadsOfOneNameTheFirstIsBound()
    {
        store(1);
        store(2, {.deviceName = u"Pad"_s});
        Pads pads;
        pads.plug(5);
        pads.plug(2);
        GamepadDefinder editor;
        QCOMPARE(namesIn(comboOf(editor)), QStringList{u"Pad"_s});
        QCOMPARE(editor.realGamepads().at(0)->deviceId(), 5);
        listOf(editor).setCurrentRow(1);
        QVERIFY(pads.isRunning(5));
        QVERIFY(!pads.isRunning(2));
    }

    void theNewGamepadStartsBeforeTheFormerOneStops()
    {
        store(1);
        store(2, {.deviceName = u"A"_s});
        store(3, {.deviceName = u"B"_s});
        Pads pads;
        ControlManette *a = pads.plug(0, u"A"_s);
        ControlManette *b = pads.plug(1, u"B"_s);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        QStringList order;
        connect(a, &ControlManette::connectedChanged, &editor, [&] { order.append(u"A"_s); });
        connect(b, &ControlManette::connectedChanged, &editor, [&] { order.append(u"B"_s); });
        a->setConnected(true);
        b->setConnected(false);
        order.clear();
        listOf(editor).setCurrentRow(2);
        QCOMPARE(order, (QStringList{u"B"_s, u"A"_s}));
    }

    // Starting and stopping tell the host, and the host may choose another row at once.

    void aRowChosenInsideABindingIsTheOneThatCounts_data()
    {
        QTest::addColumn<bool>("byCombo");
        QTest::addColumn<bool>("atStart");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("device");
        for (const bool byCombo : {false, true}) {
            for (const bool atStart : {false, true}) {
                const auto add = [&](const char *what, int row, const QString &device) {
                    QTest::addRow("%s, at the %s, %s", byCombo ? "link" : "row", atStart ? "start" : "stop",
                                  what)
                        << byCombo << atStart << row << device;
                };
                add("another gamepad", 3, u"C"_s);
                add("none", 0, {});
                add("the former gamepad", 4, u"A"_s);
            }
        }
    }
    void aRowChosenInsideABindingIsTheOneThatCounts()
    {
        QFETCH(bool, byCombo);
        QFETCH(bool, atStart);
        QFETCH(int, row);
        QFETCH(QString, device);
        store(1);
        store(2, {.deviceName = u"A"_s});
        if (!byCombo)
            store(3, {.deviceName = u"B"_s});
        else
            store(3);
        store(4, {.deviceName = u"C"_s});
        store(5, {.deviceName = u"A"_s});
        Pads pads;
        ControlManette *a = pads.plug(0, u"A"_s);
        ControlManette *b = pads.plug(1, u"B"_s);
        pads.plug(2, u"C"_s);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        QVERIFY(a->isConnected() && !b->isConnected());
        connect(
            atStart ? b : a, &ControlManette::connectedChanged, &editor,
            [&] { listOf(editor).setCurrentRow(row); }, Qt::SingleShotConnection);
        Journal journal(&editor);
        if (byCombo)
            editor.onDeviceComboChanged(u"B"_s); // moves the link of the row on show
        else
            listOf(editor).setCurrentRow(2);

        QCOMPARE(editor.currentRow(), row);
        QCOMPARE(listOf(editor).currentRow(), row);
        QCOMPARE(pads.isRunning(0), device == "A"_L1);
        QVERIFY(!pads.isRunning(1));
        QCOMPARE(pads.isRunning(2), device == "C"_L1);
        const QStringList told = journal.take();
        QCOMPARE(told.last(), "device "_L1 + device);
        QVERIFY(!told.contains(u"device B"_s));
    }

    void aRowChosenWhileNothingComesOnShowIsToldLast()
    {
        store(1);
        store(2, {.deviceName = u"A"_s});
        Pads pads;
        ControlManette *a = pads.plug(0, u"A"_s);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        connect(
            a, &ControlManette::connectedChanged, &editor, [&] { listOf(editor).setCurrentRow(1); },
            Qt::SingleShotConnection);
        Journal journal(&editor);
        listOf(editor).setCurrentRow(-1);
        QCOMPARE(editor.currentRow(), 1);
        QVERIFY(pads.isRunning(0));
        QCOMPARE(journal.take(), (QStringList{u"current 2 Manette A"_s, u"device A"_s}));
    }

    void theBoundGamepadGoesOnAsItIsWhereTheNextProfileHasItToo()
    {
        store(1);
        store(2, {.deviceName = u"Pad"_s});
        store(3, {.deviceName = u"Pad"_s});
        Pads pads;
        ControlManette *pad = pads.plug(0);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        listen(editor);
        pads.calibrate(0);
        pads.press(0, 3);
        QVERIFY(triggerTimerOf(editor).isActive());
        const QSignalSpy status(pad, &ControlManette::connectedChanged);
        listOf(editor).setCurrentRow(2);
        QVERIFY(pads.isRunning(0));
        QCOMPARE(status.count(), 0);
        QVERIFY(triggerTimerOf(editor).isActive());
        // It is let go with the last of them.
        listOf(editor).setCurrentRow(0);
        QVERIFY(!pads.isRunning(0));
    }

    void aGamepadThatVanishesIsUnbound()
    {
        store(1);
        store(2, {.deviceName = u"Pad"_s});
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        listen(editor);
        pads.calibrate(0);
        pads.press(0, 3);
        QVERIFY(triggerTimerOf(editor).isActive());
        pads.unplug(0);
        QVERIFY(!triggerTimerOf(editor).isActive());
        QCOMPARE(comboOf(editor).currentIndex(), -1);
        // Bound anew once it is back and the row was chosen again.
        pads.plug(0);
        listOf(editor).setCurrentRow(0);
        listOf(editor).setCurrentRow(1);
        QVERIFY(pads.isRunning(0));
    }
};

GAMEPAD_TEST_MAIN(TestEditorBinding)
#include "tst_editorbinding.moc"
