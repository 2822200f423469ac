// SPDX-License-Identifier: MIT
// Which profile is on show, what of it is said, and what a failure leaves.
#include "editorstage.h"
#include "interactiveoverlay.h"
#include "profilesroot.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
QString unreadable(const QString &path)
{
    return u"Impossible d\u00e2\u20ac\u2122ouvrir %1"_s.arg(path);
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QList<int> selectedRows(const GamepadDefinder &editor)
{
    QList<int> rows;
    for (const QListWidgetItem *item : listOf(editor).selectedItems())
        rows.append(listOf(editor).row(item));
    return rows;
}

QColor backgroundOf(const GamepadDefinder &editor)
{
    const QPixmap picture = overlayOf(editor).backgroundPixmap();
    return picture.isNull() ? QColor() : picture.toImage().pixelColor(5, 5);
}
} // namespace

class TestEditorSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }

    void withoutProfilesNothingIsOnShowAndNothingIsSaid()
    {
        const Pads pads;
        Boxes boxes;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QCOMPARE(editor.currentRow(), -1);
        QCOMPARE(listOf(editor).currentRow(), -1);
        QVERIFY(QDir(profilesRootPath()).exists());
        QVERIFY(!editor.isDirty());
        QVERIFY(!saveTimerOf(editor).isActive());
        editor.emitCurrentSelection();
        editor.actionSave();
        editor.actionDuplicate();
        QCOMPARE(boxes.take(), QStringList());
    }

    void constructionShowsTheFirstProfileAndWritesNothing()
    {
        const QString folder = store(1, {.picture = Qt::red, .pastilles = {u"A"_s, u"B"_s}});
        store(2);
        const QJsonObject meta = metaIn(folder);
        {
            const Pads pads;
            const GamepadDefinder editor;
            QCOMPARE(editor.currentRow(), 0);
            QCOMPARE(listOf(editor).currentRow(), 0);
            QCOMPARE(titlesOn(editor), (QStringList{u"A"_s, u"B"_s}));
            QCOMPARE(backgroundOf(editor), QColor(Qt::red));
            QVERIFY(!editor.isDirty());
            QVERIFY(!saveTimerOf(editor).isActive());
        }
        QCOMPARE(metaIn(folder), meta);
    }

    void anotherRowIsLoadedAndTold()
    {
        store(1);
        const QString folder = store(2, {.name = u"Deux"_s,
                                         .deviceName = u"Absent"_s,
                                         .picture = Qt::green,
                                         .pastilles = {u"X"_s, u"Y"_s}});
        const Pads pads;
        GamepadDefinder editor;
        Journal journal(&editor);
        QSignalSpy current(&editor, &GamepadDefinder::currentGamepadChanged);
        const QJsonObject onDisk = overlayIn(folder);
        listOf(editor).setCurrentRow(1);

        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(journal.take(), (QStringList{u"current 2 Deux Absent"_s, u"device Absent"_s}));
        QCOMPARE(current.size(), 1);
        QCOMPARE(current.at(0).at(0).toUuid(), idOf(2));
        QCOMPARE(current.at(0).at(3).toJsonObject(), onDisk);
        QCOMPARE(current.at(0).at(4).toString(), folder + "/image.png"_L1);
        QCOMPARE(titlesOn(editor), (QStringList{u"X"_s, u"Y"_s}));
        QCOMPARE(backgroundOf(editor), QColor(Qt::green));
    }

    void whoeverIsToldFindsTheProfileOnShow()
    {
        store(1);
        store(2, {.deviceName = u"Pad"_s, .picture = Qt::green, .pastilles = {u"X"_s}});
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        QStringList found;
        const auto note = [&](const QString &signal) {
            found.append(u"%1: row %2, %3, %4, %5, combo %6, gamepad %7"_s.arg(
                signal, QString::number(editor.currentRow()), titlesOn(editor).join(u','),
                backgroundOf(editor).name(), editor.isDirty() ? u"dirty"_s : u"clean"_s,
                comboOf(editor).currentText(), pads.isRunning(0) ? u"started"_s : u"stopped"_s));
        };
        connect(&editor, &GamepadDefinder::currentGamepadChanged, this, [&] { note(u"profile"_s); });
        connect(&editor, &GamepadDefinder::deviceSelectionChanged, this, [&] { note(u"device"_s); });
        listOf(editor).setCurrentRow(1);
        listOf(editor).setCurrentRow(-1);
        // The gamepad comes after the profile, and is told of when it is there.
        QCOMPARE(found, (QStringList{u"profile: row 1, X, #00ff00, clean, combo , gamepad stopped"_s,
                                     u"device: row 1, X, #00ff00, clean, combo Pad, gamepad started"_s,
                                     u"device: row -1, X, #000000, clean, combo , gamepad stopped"_s}));
    }

    void theSameRowAgainDoesNothing()
    {
        store(1);
        const Pads pads;
        GamepadDefinder editor;
        Journal journal(&editor);
        addPastille(editor, u"Neuve"_s);
        editor.onListSelectionChanged(0);
        QCOMPARE(journal.take(), QStringList());
        QVERIFY(editor.isDirty());
        QCOMPARE(titlesOn(editor), (QStringList{u"Start"_s, u"Neuve"_s}));
    }

    void noRowLeavesThePastillesOverAnEmptyBackground()
    {
        const QString folder = store(1, {.deviceName = u"Pad"_s});
        store(2);
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        listOf(editor).setCurrentRow(0);
        QVERIFY(pads.isRunning(0));
        QCOMPARE(comboOf(editor).currentText(), u"Pad"_s);
        Journal journal(&editor);

        listOf(editor).setCurrentRow(-1);
        QCOMPARE(editor.currentRow(), -1);
        QCOMPARE(titlesOn(editor), QStringList{u"Start"_s});
        QVERIFY(overlayOf(editor).backgroundPixmap().isNull());
        QVERIFY(!editor.isDirty());
        QCOMPARE(comboOf(editor).currentIndex(), -1);
        QVERIFY(!pads.isRunning(0));
        QCOMPARE(journal.take(), QStringList{u"device "_s});
        // What is still armed finds no profile to save.
        const QJsonObject meta = metaIn(folder);
        expire(saveTimerOf(editor));
        addPastille(editor, u"Perdue"_s);
        QVERIFY(editor.isDirty());
        QVERIFY(!saveTimerOf(editor).isActive());
        QCOMPARE(metaIn(folder), meta);
    }

    void aRowOutOfRangeIsNotLoaded()
    {
        store(1);
        const Pads pads;
        GamepadDefinder editor;
        Journal journal(&editor);
        for (const int row : {-1, 1, 1000}) {
            QVERIFY(!editor.loadProfile(row));
            QVERIFY(!editor.saveProfile(row));
        }
        QCOMPARE(journal.take(), QStringList());
        QVERIFY(editor.loadProfile(0));
        QCOMPARE(journal.take(), QStringList{u"current 1 Manette"_s});
    }

    void anUnreadableOverlayKeepsTheFormerPastilles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("reason");
        const QString bad = u"JSON invalide dans %1 (%2)"_s;
        QTest::newRow("gone") << QByteArray() << QString();
        QTest::newRow("broken") << "{"_ba << bad.arg(u"%1"_s, u"unterminated object"_s);
        QTest::newRow("array") << "[]"_ba << bad.arg(u"%1"_s, u"no error occurred"_s);
    }
    void anUnreadableOverlayKeepsTheFormerPastilles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        store(1, {.pastilles = {u"A"_s}});
        const QString folder = store(2, {.name = u"Deux"_s, .deviceName = u"Pad"_s, .picture = Qt::red});
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        const QString path = folder + "/overlay.json"_L1;
        QVERIFY(QFile::remove(path));
        if (!content.isNull())
            write(path, content);
        Journal journal(&editor);
        Boxes boxes;
        listOf(editor).setCurrentRow(1);

        QCOMPARE(boxes.take(),
                 QStringList{"Warning: Chargement: Impossible de charger la configuration : "_L1 +
                             (reason.isEmpty() ? unreadable(path) : reason.arg(path))});
        // The rest of the selection goes on.
        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(comboOf(editor).currentText(), u"Pad"_s);
        QVERIFY(pads.isRunning(0));
        QCOMPARE(journal.take(), QStringList{u"device Pad"_s});
        QCOMPARE(backgroundOf(editor), QColor(Qt::red));
        QCOMPARE(titlesOn(editor), QStringList{u"A"_s});
    }

    void anObjectThatIsNoOverlayIsRefused()
    {
        store(1, {.pastilles = {u"A"_s}});
        const QString folder = store(2, {.picture = Qt::red});
        const Pads pads;
        GamepadDefinder editor;
        write(folder + "/overlay.json"_L1, "{\"type\":\"Other\"}");
        Journal journal(&editor);
        Boxes boxes;
        listOf(editor).setCurrentRow(1);
        QCOMPARE(boxes.take(), QStringList{u"Warning: Chargement: Format de configuration non reconnu."_s});
        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(journal.take(), QStringList{u"device "_s});
        QCOMPARE(backgroundOf(editor), QColor(Qt::red));
        QCOMPARE(titlesOn(editor), QStringList{u"A"_s});
        // A save would write that mix, as it stands on show.
        editor.actionSave();
        QCOMPARE(titlesIn(folder), QStringList{u"A"_s});
    }

    void aProfileIsShownToBeEditedAndWhole_data()
    {
        QTest::addColumn<bool>("readable");
        QTest::newRow("readable") << true;
        QTest::newRow("broken") << false;
    }
    void aProfileIsShownToBeEditedAndWhole()
    {
        QFETCH(bool, readable);
        store(1);
        const QString folder = store(2);
        if (!readable)
            write(folder + "/overlay.json"_L1, "{");
        const Pads pads;
        GamepadDefinder editor;
        InteractiveOverlay &overlay = overlayOf(editor);
        overlay.setMode(InteractiveOverlay::Normal);
        overlay.setBackgroundScaleMode(OverlayLines::BackgroundScaleMode::Stretch);
        Boxes boxes;
        listOf(editor).setCurrentRow(1);
        QCOMPARE(boxes.take().size(), readable ? 0 : 1);
        QCOMPARE(overlay.mode(), InteractiveOverlay::Edit);
        QCOMPARE(overlay.backgroundScaleMode(), OverlayLines::BackgroundScaleMode::Contain);
    }

    void aLateListenerIsToldFromDisk()
    {
        const QString folder = store(1, {.name = u"Un"_s, .deviceName = u"Pad"_s});
        const Pads pads;
        GamepadDefinder editor;
        addPastille(editor, u"Pas encore sur disque"_s);
        Journal journal(&editor);
        QSignalSpy current(&editor, &GamepadDefinder::currentGamepadChanged);
        editor.emitCurrentSelection();
        QCOMPARE(journal.take(), (QStringList{u"current 1 Un Pad"_s, u"device Pad"_s}));
        QCOMPARE(current.at(0).at(3).toJsonObject(), overlayIn(folder));
        QVERIFY(QMetaObject::invokeMethod(&editor, "emitCurrentSelection"));
        QCOMPARE(journal.take().size(), 2);
        QVERIFY(editor.isDirty());
    }

    void aLateListenerIsToldNothingOfAnUnreadableOverlay()
    {
        const QString folder = store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(QFile::remove(folder + "/overlay.json"_L1));
        Journal journal(&editor);
        Boxes boxes;
        editor.emitCurrentSelection();
        settle();
        QCOMPARE(journal.take(), QStringList());
        QCOMPARE(boxes.take(), QStringList());
    }

    void aRowChangeThatCannotSaveGoesBack_data()
    {
        QTest::addColumn<bool>("byMouse");
        QTest::newRow("program") << false;
        QTest::newRow("click") << true;
    }
    void aRowChangeThatCannotSaveGoesBack()
    {
        QFETCH(bool, byMouse);
        const QString folder = store(1);
        store(2);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        addPastille(editor, u"Neuve"_s);
        saveTimerOf(editor).stop();
        Journal journal(&editor);
        const QSignalSpy rows(&listOf(editor), &QListWidget::currentRowChanged);
        Boxes boxes;
        {
            const BlockedFile blocked(folder + "/overlay.json"_L1);
            if (byMouse)
                click(editor, 1);
            else
                listOf(editor).setCurrentRow(1);
            const QStringList told = boxes.take();
            QCOMPARE(told.size(), 1);
            QVERIFY2(told.at(0).startsWith("Critical: Sauvegarde: "_L1), qPrintable(told.at(0)));
            QCOMPARE(editor.currentRow(), 0);
            QCOMPARE(listOf(editor).currentRow(), 0);
            QTRY_COMPARE(selectedRows(editor), QList<int>{0});
            // Nobody is told of the way back.
            QCOMPARE(rows.size(), 1);
            QCOMPARE(rows.at(0).at(0).toInt(), 1);
            QCOMPARE(journal.take(), QStringList());
            QVERIFY(editor.isDirty());
            QCOMPARE(titlesOn(editor), (QStringList{u"Start"_s, u"Neuve"_s}));
        }
        if (byMouse)
            click(editor, 1);
        else
            listOf(editor).setCurrentRow(1);
        QCOMPARE(boxes.take(), QStringList());
        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(selectedRows(editor), QList<int>{1});
        QCOMPARE(titlesIn(folder), (QStringList{u"Start"_s, u"Neuve"_s}));
    }

    void afterTheBottomRowWasDeletedNothingIsSavedUntilARowIsChosen()
    {
        const QString first = store(1);
        const QString second = store(2);
        const QString third = store(3);
        const Pads pads;
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(2);
        {
            const Answer<QMessageBox> question(openDialog, [](QMessageBox *box) {
                QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
            });
            editor.actionDelete();
        }
        QVERIFY(!QFile::exists(third));
        QCOMPARE(editor.currentRow(), -1);
        QCOMPARE(listOf(editor).currentRow(), 1);
        saveTimerOf(editor).stop();

        const QStringList before = titlesIn(second);
        addPastille(editor, u"Oubliee"_s);
        QVERIFY(!saveTimerOf(editor).isActive());
        QVERIFY(editor.isDirty());
        QVERIFY(editor.close());
        QCOMPARE(titlesIn(second), before);
        listOf(editor).setCurrentRow(0);
        QCOMPARE(editor.currentRow(), 0);
        QCOMPARE(titlesIn(second), before);
        QCOMPARE(titlesIn(first), QStringList{u"Start"_s});
    }

    void duplicatingShowsTheCopy()
    {
        const QString folder = store(1, {.name = u"Un"_s, .deviceName = u"Pad"_s});
        const Pads pads;
        GamepadDefinder editor;
        Journal journal(&editor);
        editor.actionDuplicate();
        QCOMPARE(editor.entries().size(), 2);
        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(listOf(editor).currentRow(), 1);
        QCOMPARE(listOf(editor).item(1)->text(), u"Un (copie)"_s);
        QCOMPARE(journal.take().last(), u"device "_s);
        QCOMPARE(metaIn(folder)["deviceName"_L1].toString(), u"Pad"_s);
    }

    void aDuplicateThatFailsLeavesTheSelection()
    {
        store(1, {.picture = QColor()});
        const Pads pads;
        GamepadDefinder editor;
        Boxes boxes;
        editor.actionDuplicate();
        QCOMPARE(boxes.take().size(), 1);
        QCOMPARE(editor.entries().size(), 1);
        QCOMPARE(editor.currentRow(), 0);
    }
};

GAMEPAD_TEST_MAIN(TestEditorSelection)
#include "tst_editorselection.moc"
