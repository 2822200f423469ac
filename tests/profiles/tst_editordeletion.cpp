// SPDX-License-Identifier: MIT
// Deleting profiles, and what is on show afterwards.
#include "dialogs.h"
#include "editorfilestest.h"
#include "editorstage.h"
#include "exchangefiles.h"
#include "interactiveoverlay.h"
#include "profilesroot.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

namespace
{
QString question(const QString &name)
{
    return "Question: Supprimer: "_L1 + u"Supprimer Â« %1 Â» ?"_s.arg(name);
}

QString saveFailure(const QString &folder)
{
    return "Critical: Sauvegarde: "_L1 + u"Ã‰chec sauvegarde config : %1"_s.arg(
                                             u"Impossible dâ€™Ã©crire %1"_s.arg(folder + "/overlay.json"_L1));
}

Dialogs::Answer yes()
{
    return Dialogs::click(QMessageBox::Yes);
}

/// Profiles A, B, C in rows 0 to 2, with pastilles named after them.
QStringList storeThree()
{
    return {stage::store(1, {.name = u"A"_s, .pastilles = {u"a"_s}}),
            stage::store(2, {.name = u"B"_s, .pastilles = {u"b"_s}}),
            stage::store(3, {.name = u"C"_s, .pastilles = {u"c"_s}})};
}

QString namesOf(const GamepadDefinder &editor)
{
    QString names;
    for (const GamepadEntry &entry : editor.entries())
        names += entry.name;
    return names;
}

QString textsOf(const GamepadDefinder &editor)
{
    QString texts;
    for (int row = 0; row < stage::listOf(editor).count(); ++row)
        texts += stage::listOf(editor).item(row)->text();
    return texts;
}
} // namespace

class TestEditorDeletion : public EditorFilesTest
{
    Q_OBJECT

private Q_SLOTS:
    void onlyYesDeletes_data()
    {
        QTest::addColumn<bool>("no");
        QTest::newRow("no") << true;
        QTest::newRow("escape") << false;
    }

    void onlyYesDeletes()
    {
        QFETCH(const bool, no);
        storeThree();
        const QStringList before = treeOf(profilesRootPath());
        GamepadDefinder editor;
        Dialogs dialogs({no ? Dialogs::click(QMessageBox::No) : Dialogs::escape()});
        editor.actionDelete();
        QCOMPARE(dialogs.take(), QStringList({question(u"A"_s)}));
        QCOMPARE(treeOf(profilesRootPath()), before);
        QCOMPARE(namesOf(editor), u"ABC"_s);
        QCOMPARE(editor.currentRow(), 0);
    }

    void theQuestionHasTwoButtonsAndShowsTheNameAsItIs()
    {
        stage::store(1, {.name = u"<b>%1</b>"_s});
        GamepadDefinder editor;
        Dialogs dialogs({[&](QWidget *dialog) {
            auto *box = qobject_cast<QMessageBox *>(dialog);
            QVERIFY(box);
            QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QCOMPARE(box->parentWidget(), &editor);
            QTest::keyClick(box, Qt::Key_Escape);
        }});
        editor.actionDelete();
        QCOMPARE(dialogs.take(), QStringList({question(u"<b>%1</b>"_s)}));
    }

    void theNextRowIsOnShow_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("left");
        QTest::addColumn<int>("currentRow");
        QTest::addColumn<int>("shownRow");
        QTest::addColumn<QString>("pastille");
        QTest::newRow("top") << 0 << u"BC"_s << 0 << 0 << u"b"_s;
        QTest::newRow("middle") << 1 << u"AC"_s << 1 << 1 << u"c"_s;
        // The list stands there already, so that nothing tells the editor.
        QTest::newRow("bottom") << 2 << u"AB"_s << -1 << 1 << u"b"_s;
    }

    void theNextRowIsOnShow()
    {
        QFETCH(const int, row);
        QFETCH(const QString, pastille);
        QFETCH(const int, shownRow);
        QFETCH(const int, currentRow);
        const QStringList folders = storeThree();
        GamepadDefinder editor;
        stage::listOf(editor).setCurrentRow(row);
        stage::Journal journal(&editor);
        Dialogs dialogs({yes()});
        editor.actionDelete();
        QCOMPARE(dialogs.take().size(), 1);
        QTEST(namesOf(editor), "left");
        QTEST(textsOf(editor), "left");
        QCOMPARE(editor.currentRow(), currentRow);
        QCOMPARE(stage::listOf(editor).currentRow(), shownRow);
        QCOMPARE(stage::titlesOn(editor), QStringList({pastille}));
        for (int i = 0; i < folders.size(); ++i)
            QCOMPARE(QFileInfo::exists(folders.at(i)), i != row);
        const QString next = editor.entries().at(shownRow).name;
        QCOMPARE(journal.take(),
                 QStringList({u"current %1 %2"_s.arg(
                                  QFileInfo(editor.entries().at(shownRow).dirPath).fileName().first(1), next),
                              u"device "_s}));

        // What follows is saved like any other; after the bottom row not before a row is chosen.
        stage::addPastille(editor, u"new"_s);
        QCOMPARE(stage::saveTimerOf(editor).isActive() && editor.currentRow() >= 0, currentRow >= 0);
        expire(stage::saveTimerOf(editor));
        QStringList saved{pastille};
        if (currentRow >= 0)
            saved.append(u"new"_s);
        QCOMPARE(stage::titlesIn(editor.entries().at(shownRow).dirPath), saved);
        QCOMPARE(stage::titlesIn(editor.entries().at(1 - shownRow).dirPath).size(), 1);
    }

    void whatIsOnShowByTheAnswerStaysOnShow_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("left");
        QTest::newRow("middle") << 1 << u"AC"_s;
        QTest::newRow("bottom") << 2 << u"AB"_s;
    }

    void whatIsOnShowByTheAnswerStaysOnShow()
    {
        QFETCH(const int, row);
        QFETCH(const QString, left);
        const QStringList folders = storeThree();
        GamepadDefinder editor;
        stage::listOf(editor).setCurrentRow(row);
        Dialogs dialogs({Dialogs::after([&] { editor.reloadProfiles(); }, yes())});
        editor.actionDelete();
        QCOMPARE(dialogs.take(), QStringList({question(QString(QChar(u'A' + row)))}));
        QCOMPARE(namesOf(editor), left);
        QCOMPARE(textsOf(editor), left);
        QVERIFY(!QFileInfo::exists(folders.at(row)));
        QCOMPARE(editor.currentRow(), 0);
        QCOMPARE(stage::listOf(editor).currentRow(), 0);
        QCOMPARE(stage::titlesOn(editor), QStringList({u"a"_s}));
        // It is saved as itself, and over no other.
        stage::addPastille(editor, u"new"_s);
        QVERIFY(stage::saveTimerOf(editor).isActive());
        expire(stage::saveTimerOf(editor));
        QCOMPARE(stage::titlesIn(folders.at(0)), QStringList({u"a"_s, u"new"_s}));
        QCOMPARE(stage::titlesIn(folders.at(3 - row)), QStringList({row == 1 ? u"c"_s : u"b"_s}));
    }

    void aRowBelowTheDeletedOneStaysOnShow()
    {
        const QStringList folders = storeThree();
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::after([&] { stage::listOf(editor).setCurrentRow(2); }, yes())});
        editor.actionDelete();
        QCOMPARE(dialogs.take(), QStringList({question(u"A"_s)}));
        QCOMPARE(namesOf(editor), u"BC"_s);
        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(stage::listOf(editor).currentRow(), 1);
        stage::addPastille(editor, u"new"_s);
        expire(stage::saveTimerOf(editor));
        QCOMPARE(stage::titlesIn(folders.at(1)), QStringList({u"b"_s}));
        QCOMPARE(stage::titlesIn(folders.at(2)), QStringList({u"c"_s, u"new"_s}));
    }

    void withNoRowOnShowByTheAnswerNoneIsCurrent()
    {
        const QStringList folders = storeThree();
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::after([&] { stage::listOf(editor).setCurrentRow(-1); }, yes())});
        editor.actionDelete();
        QCOMPARE(dialogs.take().size(), 1);
        QCOMPARE(namesOf(editor), u"BC"_s);
        QCOMPARE(editor.currentRow(), -1);
        QCOMPARE(stage::listOf(editor).currentRow(), -1);
        expire(stage::saveTimerOf(editor));
        QCOMPARE(stage::titlesIn(folders.at(1)), QStringList({u"b"_s}));
        QCOMPARE(stage::titlesIn(folders.at(2)), QStringList({u"c"_s}));
    }

    void afterTheBottomRowNothingIsAskedUntilARowIsChosen()
    {
        storeThree();
        GamepadDefinder editor;
        stage::listOf(editor).setCurrentRow(2);
        Dialogs dialogs({yes()});
        editor.actionDelete();
        QCOMPARE(dialogs.take().size(), 1);
        editor.actionDelete();
        QCOMPARE(dialogs.take(), QStringList());
        stage::listOf(editor).setCurrentRow(0);
        QCOMPARE(editor.currentRow(), 0);
    }

    void withTheOnlyProfileNothingIsOnShow()
    {
        const QString folder = stage::store(1);
        GamepadDefinder editor;
        stage::Journal journal(&editor);
        Dialogs dialogs({yes()});
        editor.actionDelete();
        QCOMPARE(editor.currentRow(), -1);
        QVERIFY(editor.entries().isEmpty());
        QCOMPARE(stage::listOf(editor).count(), 0);
        QVERIFY(stage::overlayOf(editor).backgroundPixmap().isNull());
        QCOMPARE(journal.take(), QStringList({u"device "_s}));
        QVERIFY(!QFileInfo::exists(folder));
        expire(stage::saveTimerOf(editor));
        QVERIFY(!QFileInfo::exists(folder)); // no save brings it back
    }

    void unsavedChangesReachNoOtherProfile()
    {
        const QStringList folders = storeThree();
        GamepadDefinder editor;
        stage::addPastille(editor, u"unsaved"_s);
        Dialogs dialogs({yes()});
        editor.actionDelete();
        expire(stage::saveTimerOf(editor));
        QCOMPARE(stage::titlesIn(folders.at(1)), QStringList({u"b"_s}));
        QCOMPARE(stage::titlesIn(folders.at(2)), QStringList({u"c"_s}));
        QVERIFY(!QFileInfo::exists(folders.at(0)));
    }

    // It is told once, and the profile goes all the same.
    void aProfileThatCannotBeSavedCanBeDeleted_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("next");
        QTest::newRow("top") << 0 << 0;
        QTest::newRow("middle") << 1 << 1;
        QTest::newRow("bottom") << 2 << 1;
    }

    void aProfileThatCannotBeSavedCanBeDeleted()
    {
        QFETCH(const int, row);
        QFETCH(const int, next);
        const QStringList folders = storeThree();
        GamepadDefinder editor;
        stage::listOf(editor).setCurrentRow(row);
        stage::addPastille(editor, u"unsaved"_s);
        QVERIFY(QFile::remove(folders.at(row) + "/overlay.json"_L1));
        QVERIFY(QDir().mkpath(folders.at(row) + "/overlay.json"_L1));
        Dialogs dialogs({yes(), Dialogs::ok()});
        editor.actionDelete();
        QCOMPARE(dialogs.take(),
                 QStringList({question(QString(QChar(u'A' + row))), saveFailure(folders.at(row))}));
        QVERIFY(!QFileInfo::exists(folders.at(row)));
        QCOMPARE(editor.entries().size(), 2);
        QCOMPARE(editor.currentRow(), next);
        QCOMPARE(stage::listOf(editor).currentRow(), next);
        QCOMPARE(stage::titlesOn(editor), stage::titlesIn(editor.entries().at(next).dirPath));
        QVERIFY(!editor.isDirty());
    }

    void theOnlyProfileThatCannotBeSavedCanBeDeleted()
    {
        const QString folder = stage::store(1);
        GamepadDefinder editor;
        stage::addPastille(editor, u"unsaved"_s);
        QVERIFY(QFile::remove(folder + "/overlay.json"_L1));
        QVERIFY(QDir().mkpath(folder + "/overlay.json"_L1));
        Dialogs dialogs({yes(), Dialogs::ok()});
        editor.actionDelete();
        QCOMPARE(dialogs.take().size(), 2);
        QCOMPARE(editor.currentRow(), -1);
        QVERIFY(!editor.isDirty());
        QVERIFY(stage::overlayOf(editor).backgroundPixmap().isNull());
        QVERIFY(!QFileInfo::exists(folder));
    }

    void aNextProfileThatCannotBeLoadedIsTold()
    {
        const QStringList folders = storeThree();
        write(folders.at(1) + "/overlay.json"_L1, "broken");
        GamepadDefinder editor;
        Dialogs dialogs({yes(), Dialogs::ok()});
        editor.actionDelete();
        const QStringList seen = dialogs.take();
        QCOMPARE(seen.size(), 2);
        QVERIFY(seen.last().startsWith("Warning: Chargement: "_L1));
        QCOMPARE(editor.currentRow(), 0);
        QCOMPARE(namesOf(editor), u"BC"_s);
    }

    void ofTwoWithOneIdOnlyTheOneOnShowGoes()
    {
        const QString first = stage::store(1, {.name = u"one"_s});
        const QString second = profilesRootPath() + "/zzz"_L1;
        QVERIFY(QDir().mkpath(second));
        for (const QString &file : {u"/meta.json"_s, u"/overlay.json"_s, u"/image.png"_s})
            QVERIFY(QFile::copy(first + file, second + file));
        GamepadDefinder editor;
        QCOMPARE(editor.entries().size(), 2);
        stage::listOf(editor).setCurrentRow(1);
        Dialogs dialogs({yes()});
        editor.actionDelete();
        QVERIFY(QFileInfo::exists(first));
        QVERIFY(!QFileInfo::exists(second));
        QCOMPARE(editor.entries().first().dirPath, first);
    }

    void aFolderThatVanishedIsForgotten()
    {
        const QStringList folders = storeThree();
        GamepadDefinder editor;
        QVERIFY(QDir(folders.first()).removeRecursively());
        Dialogs dialogs({yes()});
        editor.actionDelete();
        QCOMPARE(namesOf(editor), u"BC"_s);
        QVERIFY(!QFileInfo::exists(folders.first()));
    }

    void theGamepadOfTheNextRowIsBound()
    {
        stage::store(1, {.name = u"A"_s, .deviceName = u"First"_s});
        stage::store(2, {.name = u"B"_s, .deviceName = u"Second"_s});
        stage::store(3, {.name = u"C"_s});
        pads().plug(0, u"First"_s);
        pads().plug(1, u"Second"_s);
        GamepadDefinder editor;
        stage::listOf(editor).setCurrentRow(1);
        stage::listOf(editor).setCurrentRow(0);
        QVERIFY(pads().isRunning(0));
        Dialogs dialogs({yes()});
        editor.actionDelete();
        QVERIFY(!pads().isRunning(0));
        QVERIFY(pads().isRunning(1));
        QCOMPARE(stage::comboOf(editor).currentText(), u"Second"_s);
    }
};

GAMEPAD_TEST_MAIN(TestEditorDeletion)
#include "tst_editordeletion.moc"
