// SPDX-License-Identifier: MIT
// When what was changed goes to disk, and when it does not.
#include "editorstage.h"
#include "interactiveoverlay.h"
#include "testmain.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtGui/QWheelEvent>

using namespace Qt::StringLiterals;
using namespace stage;

class TestEditorSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }

    void aLoadCountsAsAChangeAndDropsTheDayOfMaking()
    {
        store(1);
        const QString folder = store(2);
        QVERIFY(metaIn(folder).contains("createdAt"_L1));
        const Pads pads;
        GamepadDefinder editor;
        QElapsedTimer sinceLoad;
        sinceLoad.start();
        listOf(editor).setCurrentRow(1);
        QVERIFY(!editor.isDirty());
        QVERIFY(saveTimerOf(editor).isActive());
        QVERIFY(metaIn(folder).contains("createdAt"_L1));
        // A file that the save has to make anew tells that the overlay is written, too.
        QVERIFY(QFile::remove(folder + "/overlay.json"_L1));

        QTRY_VERIFY(!saveTimerOf(editor).isActive());
        QVERIFY2(sinceLoad.elapsed() >= 235, qPrintable(QString::number(sinceLoad.elapsed())));
        QJsonObject meta = metaIn(folder);
        QVERIFY(!meta.contains("createdAt"_L1));
        QCOMPARE(meta.size(), 9);
        QVERIFY(meta["modifiedAt"_L1].toString() > u"2020-01-01T00:00:00Z"_s);
        QCOMPARE(titlesIn(folder), QStringList{u"Start"_s});
    }

    void aBurstOfChangesIsSavedOnceAfterTheLast()
    {
        const QString folder = store(1);
        const Pads pads;
        GamepadDefinder editor;
        addPastille(editor, u"A"_s);
        QVERIFY(editor.isDirty());
        QVERIFY(saveTimerOf(editor).isActive());
        QTRY_VERIFY(saveTimerOf(editor).remainingTime() < 200);
        addPastille(editor, u"B"_s);
        QVERIFY(saveTimerOf(editor).remainingTime() > 200);
        QCOMPARE(titlesIn(folder), QStringList{u"Start"_s});

        expire(saveTimerOf(editor));
        QVERIFY(!saveTimerOf(editor).isActive());
        QVERIFY(!editor.isDirty());
        QCOMPARE(titlesIn(folder), (QStringList{u"Start"_s, u"A"_s, u"B"_s}));
    }

    void aMovedPastilleReachesTheDisk()
    {
        const QString folder = store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        const auto placeOnDisk = [&] { return overlayIn(folder)["nodes"_L1][0]["pastille"_L1].toObject(); };
        editor.actionSave();
        const QJsonObject before = placeOnDisk();
        const TouchArea *pastille = overlayOf(editor).findChild<TouchArea *>(Qt::FindDirectChildrenOnly);
        const QPoint from = pastille->mapTo(&editor, QPoint(15, 15));
        QWindow *window = editor.windowHandle();
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(window, from + QPoint(30, 20));
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, from + QPoint(30, 20));
        QVERIFY(editor.isDirty());
        QTRY_VERIFY(placeOnDisk() != before);
        QVERIFY(!editor.isDirty());
        QVERIFY(placeOnDisk()["x"_L1].toDouble() > before["x"_L1].toDouble());
    }

    void inputOverTheOverlayIsAMarkForTheNextFlush_data()
    {
        QTest::addColumn<QEvent::Type>("type");
        QTest::addColumn<bool>("marks");
        QTest::newRow("move") << QEvent::MouseMove << true;
        QTest::newRow("release") << QEvent::MouseButtonRelease << true;
        QTest::newRow("key down") << QEvent::KeyPress << true;
        QTest::newRow("key up") << QEvent::KeyRelease << true;
        QTest::newRow("wheel") << QEvent::Wheel << true;
        QTest::newRow("press") << QEvent::MouseButtonPress << false;
        QTest::newRow("double click") << QEvent::MouseButtonDblClick << false;
        QTest::newRow("enter") << QEvent::Enter << false;
        QTest::newRow("resize") << QEvent::Resize << false;
    }
    void inputOverTheOverlayIsAMarkForTheNextFlush()
    {
        QFETCH(QEvent::Type, type);
        QFETCH(bool, marks);
        const QString folder = store(1);
        store(2);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        saveTimerOf(editor).stop();
        editor.actionSave();
        QVERIFY(!editor.isDirty());

        InteractiveOverlay &overlay = overlayOf(editor);
        const QPointF place(300, 380);
        switch (type) {
        case QEvent::MouseMove:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick: {
            const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
            QMouseEvent event(type, place, overlay.mapToGlobal(place), button, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&overlay, &event);
            break;
        }
        case QEvent::KeyPress:
        case QEvent::KeyRelease: {
            QKeyEvent event(type, Qt::Key_A, Qt::NoModifier);
            QCoreApplication::sendEvent(&overlay, &event);
            break;
        }
        case QEvent::Wheel: {
            QWheelEvent event(place, overlay.mapToGlobal(place), {}, QPoint(0, 120), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&overlay, &event);
            break;
        }
        case QEvent::Enter: {
            QEnterEvent event(place, place, place);
            QCoreApplication::sendEvent(&overlay, &event);
            break;
        }
        default:
            editor.resize(editor.size() + QSize(0, 1));
        }
        QCOMPARE(editor.isDirty(), marks);
        QVERIFY(!saveTimerOf(editor).isActive());
        QVERIFY(QFile::remove(folder + "/overlay.json"_L1));
        listOf(editor).setCurrentRow(1);
        // The flush alone made it anew.
        QCOMPARE(QFile::exists(folder + "/overlay.json"_L1), marks);
    }

    void aPersonsMouseOverTheOverlayIsAMarkAndGoesOn()
    {
        store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        editor.actionSave();
        const QPoint place = overlayOf(editor).mapTo(&editor, QPoint(300, 300));
        QTest::mouseMove(editor.windowHandle(), place);
        QTest::mouseMove(editor.windowHandle(), place + QPoint(5, 0));
        QVERIFY(editor.isDirty());
        QVERIFY(!saveTimerOf(editor).isActive());
        QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        QVERIFY(!editor.eventFilter(&overlayOf(editor), &key));
    }

    void eventsOfOtherWidgetsAreNoMark()
    {
        store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        editor.actionSave();
        QTest::keyClick(&listOf(editor), Qt::Key_Home);
        QTest::mouseMove(editor.windowHandle(), QPoint(20, 20));
        QVERIFY(!editor.isDirty());
    }

    void aRowChangeSavesTheProfileThatIsLeft()
    {
        const QString left = store(1);
        const QString shown = store(2);
        const Pads pads;
        GamepadDefinder editor;
        addPastille(editor, u"Neuve"_s);
        listOf(editor).setCurrentRow(1);
        QVERIFY(!editor.isDirty());
        QCOMPARE(titlesIn(left), (QStringList{u"Start"_s, u"Neuve"_s}));
        QCOMPARE(titlesIn(shown), QStringList{u"Start"_s});
        QCOMPARE(metaIn(left)["id"_L1].toString(), idOf(1).toString(QUuid::WithoutBraces));
    }

    void aSecondScanSavesTheProfileThatIsLeft()
    {
        const QString left = store(2);
        const Pads pads;
        GamepadDefinder editor;
        addPastille(editor, u"Neuve"_s);
        store(1, {.name = u"Une autre"_s});
        QCOMPARE(editor.entries().size(), 1); // what others add is not noticed before
        editor.reloadProfiles();
        QCOMPARE(titlesIn(left), (QStringList{u"Start"_s, u"Neuve"_s}));
        QCOMPARE(editor.entries().size(), 2);
        QCOMPARE(listOf(editor).count(), 2);
        QCOMPARE(editor.currentRow(), 0);
        QCOMPARE(listOf(editor).currentRow(), 0);
        QCOMPARE(listOf(editor).item(0)->text(), u"Une autre"_s);
        QCOMPARE(titlesOn(editor), QStringList{u"Start"_s});
    }

    void aRowChangeWithoutAMarkSavesNothing()
    {
        const QString left = store(1);
        store(2);
        const QJsonObject meta = metaIn(left);
        const Pads pads;
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        QCOMPARE(metaIn(left), meta);
    }

    void theSaveCommandDoesNotAskForAMark()
    {
        const QString folder = store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(!editor.isDirty());
        editor.actionSave();
        QVERIFY(!metaIn(folder).contains("createdAt"_L1));
    }

    void theTimerDoesNotAskForAMark()
    {
        store(1);
        const QString folder = store(2);
        const Pads pads;
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        QVERIFY(!editor.isDirty());
        expire(saveTimerOf(editor));
        QVERIFY(!metaIn(folder).contains("createdAt"_L1));
    }

    void aFailedAutoSaveSaysSoEachTime()
    {
        const QString folder = store(1);
        const Pads pads;
        GamepadDefinder editor;
        Boxes boxes;
        {
            const BlockedFile blocked(folder + "/meta.json"_L1);
            for (int time = 0; time < 2; ++time) {
                addPastille(editor, u"P%1"_s.arg(time));
                expire(saveTimerOf(editor));
                QCOMPARE(boxes.take(),
                         QStringList{
                             u"Critical: Sauvegarde: \u00c3\u2030chec sauvegarde meta : "
                             "Impossible d\u00e2\u20ac\u2122\u00c3\u00a9crire %1/meta.json"_s.arg(folder)});
                QVERIFY(editor.isDirty());
            }
        }
        editor.actionSave();
        QVERIFY(!editor.isDirty());
    }

    void closingSavesAMarkedProfile()
    {
        const QString folder = store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        addPastille(editor, u"Neuve"_s);
        QVERIFY(editor.close());
        QVERIFY(!editor.isVisible());
        QVERIFY(!editor.isDirty());
        QCOMPARE(titlesIn(folder), (QStringList{u"Start"_s, u"Neuve"_s}));
    }

    void closingWithoutAMarkWritesNothing()
    {
        const QString folder = store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QVERIFY(editor.close());
        QVERIFY(metaIn(folder).contains("createdAt"_L1));
    }

    void closingIsRefusedAsOftenAsTheSaveFails()
    {
        const QString folder = store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        addPastille(editor, u"Neuve"_s);
        saveTimerOf(editor).stop();
        Boxes boxes;
        {
            const BlockedFile blocked(folder + "/overlay.json"_L1);
            for (int time = 0; time < 3; ++time) {
                QVERIFY(!editor.close());
                QVERIFY(editor.isVisible());
                QVERIFY(editor.isDirty());
                QCOMPARE(boxes.take().size(), 1);
            }
        }
        QVERIFY(editor.close());
        QCOMPARE(boxes.take(), QStringList());
        QCOMPARE(titlesIn(folder), (QStringList{u"Start"_s, u"Neuve"_s}));
    }

    void theDestructorSavesAMarkedProfile()
    {
        const QString folder = store(1);
        const Pads pads;
        {
            const GamepadDefinder editor;
            addPastille(editor, u"Neuve"_s);
        }
        QCOMPARE(titlesIn(folder), (QStringList{u"Start"_s, u"Neuve"_s}));
    }

    void theDestructorSaysThatItsSaveFailedAndGoesOn()
    {
        const QString folder = store(1);
        const Pads pads;
        Boxes boxes;
        auto editor = std::make_unique<GamepadDefinder>();
        QVERIFY(present(*editor));
        addPastille(*editor, u"Neuve"_s);
        const BlockedFile blocked(folder + "/overlay.json"_L1);
        editor.reset();
        const QStringList told = boxes.take();
        QVERIFY2(told.size() == 1, qPrintable(told.join(u'\n')));
    }
};

GAMEPAD_TEST_MAIN(TestEditorSaving)
#include "tst_editorsaving.moc"
