// SPDX-License-Identifier: MIT
// Making profiles and copying them, driven as a person does it.
#include "dialogs.h"
#include "editorfilestest.h"
#include "editorstage.h"
#include "exchangefiles.h"
#include "interactiveoverlay.h"
#include "profilesroot.h"
#include "smalldisk.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

namespace
{
const QString askName = u"Input: Nouveau gamepad: Nom du gamepad :: Gamepad"_s;
const QString askGamepad = u"Input: Association manette: "_s;

QString titled(const QString &kind, const QString &title, const QString &text)
{
    return kind + ": "_L1 + title + ": "_L1 + text;
}

QString askPicture()
{
    return titled(u"File"_s, u"Choisir lâ€™image du gamepad"_s, u"Images (*.png *.jpg *.jpeg *.bmp)"_s);
}

QString noFreeGamepad()
{
    return titled(
        u"Information"_s, u"Association manette"_s,
        u"Toutes les manettes connectÃ©es sont dÃ©jÃ  associÃ©es.\nVous pouvez crÃ©er un profil sans liaison et lâ€™associer plus tard."_s);
}

/// The folders in the root, but those of `known`.
QStringList newFolders(const QStringList &known = {})
{
    QStringList folders;
    const QDir root(profilesRootPath());
    const QStringList names = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        if (!known.contains(root.filePath(name)))
            folders.append(root.filePath(name));
    }
    return folders;
}
} // namespace

class TestEditorCreation : public EditorFilesTest
{
    Q_OBJECT

private Q_SLOTS:
    void theButtonMakesAProfile()
    {
        GamepadDefinder editor;
        QVERIFY(stage::present(editor));
        const QString chosen = picture();
        Dialogs dialogs({Dialogs::type(u" Mon pad "_s), Dialogs::choose(chosen), Dialogs::ok()});
        QTest::mouseClick(editor.findChild<QPushButton *>(u"pushButtonAdd"_s), Qt::LeftButton);
        QCOMPARE(dialogs.take(), QStringList({askName, askPicture(), noFreeGamepad()}));

        QCOMPARE(editor.entries().size(), 1);
        QCOMPARE(editor.currentRow(), 0);
        const GamepadEntry entry = editor.entries().first();
        QCOMPARE(entry.name, u" Mon pad "_s); // as it was typed
        QCOMPARE(entry.deviceName, QString());
        QCOMPARE(newFolders(), QStringList({entry.dirPath}));
        QCOMPARE(stage::metaIn(entry.dirPath).size(), 10);
        QCOMPARE(stage::titlesOn(editor), QStringList({u"Start"_s}));
        QCOMPARE(stage::titlesIn(entry.dirPath), QStringList({u"Start"_s}));
        const QJsonObject size = stage::overlayIn(entry.dirPath)["overlaySize"_L1].toObject();
        QCOMPARE(QSize(size["w"_L1].toInt(), size["h"_L1].toInt()), stage::overlayOf(editor).size());
        QCOMPARE(stage::comboOf(editor).currentIndex(), -1);
        QVERIFY(QFile::exists(entry.dirPath + "/configActionGamepad.json"_L1));
    }

    void anEmptyNameIsAccepted()
    {
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::type({}), Dialogs::choose(picture()), Dialogs::ok()});
        editor.actionNew();
        QCOMPARE(editor.entries().size(), 1);
        QCOMPARE(stage::metaIn(editor.entries().first().dirPath)["name"_L1], QJsonValue(u""_s));
    }

    void aNameOfTenThousandCharactersIsAccepted()
    {
        const QString name(10'000, u'n');
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::type(name), Dialogs::choose(picture()), Dialogs::ok()});
        editor.actionNew();
        QCOMPARE(editor.entries().size(), 1);
        QCOMPARE(stage::metaIn(editor.entries().first().dirPath)["name"_L1].toString(), name);
    }

    void whoGivesUpMakesNothing_data()
    {
        QTest::addColumn<bool>("atTheName");
        QTest::newRow("name") << true;
        QTest::newRow("picture") << false;
    }

    void whoGivesUpMakesNothing()
    {
        QFETCH(const bool, atTheName);
        GamepadDefinder editor;
        Dialogs dialogs(atTheName ? QList<Dialogs::Answer>{Dialogs::escape()}
                                  : QList<Dialogs::Answer>{Dialogs::type(u"x"_s), Dialogs::escape()});
        editor.actionNew();
        QCOMPARE(dialogs.take(), atTheName ? QStringList({askName}) : QStringList({askName, askPicture()}));
        QCOMPARE(newFolders(), QStringList());
        QVERIFY(editor.entries().isEmpty());
    }

    void aFreeGamepadIsLinkedAtOnce()
    {
        pads().plug(0, u"zulu"_s);
        pads().plug(1, u"Alpha"_s);
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::type(u"x"_s), Dialogs::choose(picture()), Dialogs::pick(u"zulu"_s)});
        editor.actionNew();
        QCOMPARE(dialogs.take(), QStringList({askName, askPicture(),
                                              titled(u"Input"_s, u"Association manette"_s,
                                                     u"Choisir la manette Ã  lier :"_s) +
                                                  ": Alpha,zulu"_L1}));
        QCOMPARE(editor.entries().size(), 1);
        const GamepadEntry entry = editor.entries().first();
        QCOMPARE(entry.deviceName, u"zulu"_s);
        QCOMPARE(stage::metaIn(entry.dirPath)["deviceName"_L1].toString(), u"zulu"_s);
        QCOMPARE(stage::comboOf(editor).currentText(), u"zulu"_s);
        QVERIFY(pads().isRunning(0)); // a new profile is selected like any other
        QVERIFY(stage::isFramed(editor, 0));
    }

    void withoutAChoiceOfGamepadTheProfileIsUnlinked()
    {
        pads().plug(0, u"Pad"_s);
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::type(u"x"_s), Dialogs::choose(picture()), Dialogs::escape()});
        editor.actionNew();
        QCOMPARE(editor.entries().size(), 1);
        QCOMPARE(editor.entries().first().deviceName, QString());
        QCOMPARE(stage::comboOf(editor).currentIndex(), -1);
    }

    void aGamepadTakenInAnotherCaseIsRefused()
    {
        stage::store(1, {.deviceName = u"PAD"_s});
        pads().plug(0, u"Pad"_s);
        GamepadDefinder editor;
        Dialogs dialogs(
            {Dialogs::type(u"x"_s), Dialogs::choose(picture()), Dialogs::pick(u"Pad"_s), Dialogs::ok()});
        editor.actionNew();
        const QStringList seen = dialogs.take();
        QCOMPARE(seen.size(), 4);
        QCOMPARE(seen.last(), titled(u"Warning"_s, u"Association"_s,
                                     u"Cette manette est dÃ©jÃ  associÃ©e Ã  un autre profil."_s));
        QCOMPARE(editor.entries().size(), 2);
        QCOMPARE(editor.entries().last().deviceName, QString());
        QCOMPARE(editor.currentRow(), 1);
        QVERIFY(!pads().isRunning(0));
    }

    void theComboKeepsToAProfileThatCannotBeLeft()
    {
        const QString folder = stage::store(1);
        pads().plug(0, u"zulu"_s);
        GamepadDefinder editor;
        stage::addPastille(editor, u"unsaved"_s);
        stage::saveTimerOf(editor).stop();
        const stage::BlockedFile blocked(folder + "/overlay.json"_L1);
        Dialogs dialogs(
            {Dialogs::type(u"x"_s), Dialogs::choose(picture()), Dialogs::pick(u"zulu"_s), Dialogs::ok()});
        editor.actionNew();
        const QStringList seen = dialogs.take();
        QCOMPARE(seen.size(), 4);
        QVERIFY2(seen.last().startsWith("Critical: Sauvegarde: "_L1), qPrintable(seen.last()));
        QCOMPARE(editor.currentRow(), 0);
        QCOMPARE(editor.entries().size(), 2);
        QCOMPARE(editor.entries().last().deviceName, u"zulu"_s);
        QVERIFY(stage::isFramed(editor, 1));
        // The profile on show is linked to none.
        QCOMPARE(stage::comboOf(editor).currentIndex(), -1);
    }

    void aNewProfileStandsLastUntilTheNextScan()
    {
        stage::store(9, {.name = u"nine"_s});
        {
            GamepadDefinder editor;
            Dialogs dialogs({Dialogs::type(u"new"_s), Dialogs::choose(picture()), Dialogs::ok()});
            editor.actionNew();
            QCOMPARE(editor.entries().last().name, u"new"_s);
            QCOMPARE(stage::listOf(editor).item(1)->text(), u"new"_s);
        }
        const GamepadDefinder editor;
        QStringList ids;
        for (const GamepadEntry &entry : editor.entries())
            ids.append(QFileInfo(entry.dirPath).fileName());
        QStringList sorted = ids;
        sorted.sort(Qt::CaseInsensitive);
        QCOMPARE(ids.size(), 2);
        QCOMPARE(ids, sorted);
    }

    void aPictureThatVanishedLeavesAnEmptyFolder()
    {
        const QString chosen = picture();
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::type(u"x"_s), Dialogs::choose(chosen),
                         Dialogs::after([&] { QFile::remove(chosen); }, Dialogs::ok()), Dialogs::ok()});
        editor.actionNew();
        QCOMPARE(newFolders().size(), 1);
        const QString folder = newFolders().first();
        QCOMPARE(dialogs.take().last(), titled(u"Warning"_s, u"CrÃ©ation"_s,
                                               u"Impossible de copier lâ€™image %1 vers %2"_s.arg(
                                                   chosen, folder + "/image.png"_L1)));
        QCOMPARE(treeOf(folder), QStringList());
        QVERIFY(editor.entries().isEmpty());
        QCOMPARE(editor.currentRow(), -1);
    }

    void aFullDiskIsToldAndNothingIsListed_data()
    {
        QTest::addColumn<int>("places"); // the root, the folder, then file after file
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("file");
        QTest::newRow("overlay") << 3 << u"CrÃ©ation"_s
                                 << u"Impossible dâ€™Ã©crire la configuration par dÃ©faut : %1"_s
                                 << u"/overlay.json"_s;
        QTest::newRow("meta") << 4 << u"CrÃ©ation"_s << u"Impossible dâ€™Ã©crire meta.json : %1"_s
                              << u"/meta.json"_s;
        QTest::newRow("mapping") << 5 << u"Creation"_s << u"Echec ecriture mapping : %1"_s
                                 << u"/configActionGamepad.json"_s;
    }

    void aFullDiskIsToldAndNothingIsListed()
    {
        QFETCH(const int, places);
        QFETCH(const QString, title);
        QFETCH(const QString, text);
        QFETCH(const QString, file);
        const QString chosen = picture();
        const SmallDisk disk(profilesRootPath(), places);
        GAMEPAD_NEED_MOUNTED(disk);
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::type(u"x"_s), Dialogs::choose(chosen), Dialogs::ok(), Dialogs::ok()});
        editor.actionNew();
        QCOMPARE(newFolders().size(), 1);
        const QString error = u"Impossible dâ€™Ã©crire %1"_s.arg(newFolders().first() + file);
        QCOMPARE(dialogs.take().last(), titled(u"Warning"_s, title, text.arg(error)));
        QVERIFY(editor.entries().isEmpty());
        // What lacks the mapping alone is there at the next scan.
        Dialogs rest;
        const GamepadDefinder next;
        QCOMPARE(next.entries().size(), places == 5 ? 1 : 0);
    }

    // Copying.

    void aCopyIsShownUnlinked()
    {
        const QString source = stage::store(1, {.name = u"Pad"_s, .deviceName = u"Live"_s});
        GamepadDefinder editor;
        stage::addPastille(editor, u"unsaved"_s);
        editor.actionDuplicate();
        QCOMPARE(editor.currentRow(), 1);
        const GamepadEntry copy = editor.entries().at(1);
        QCOMPARE(copy.name, u"Pad (copie)"_s);
        QCOMPARE(copy.deviceName, QString());
        QCOMPARE(stage::listOf(editor).currentRow(), 1);
        // A copy is of what was on disk; that it is shown then saves the source.
        QCOMPARE(stage::titlesIn(copy.dirPath), QStringList({u"Start"_s}));
        QCOMPARE(stage::titlesIn(source), QStringList({u"Start"_s, u"unsaved"_s}));
        QCOMPARE(stage::metaIn(source)["deviceName"_L1].toString(), u"Live"_s);
    }

    void copyingTellsOfEachFailure_data()
    {
        QTest::addColumn<QString>("blocked");
        QTest::addColumn<QString>("text"); // %1 the blocked file
        QTest::newRow("overlay") << u"/overlay.json"_s << u"Impossible de copier la configuration."_s;
        QTest::newRow("mapping") << u"/configActionGamepad.json"_s << u"Echec copie mapping : %1"_s;
    }

    void copyingTellsOfEachFailure()
    {
        QFETCH(const QString, blocked);
        QFETCH(QString, text);
        const QString source = stage::store(1);
        write(source + "/configActionGamepad.json"_L1, "{}");
        GamepadDefinder editor;
        const stage::BlockedFile block(source + blocked);
        Dialogs dialogs({Dialogs::ok()});
        int row = 77;
        QVERIFY(!editor.duplicateProfile(0, &row));
        QCOMPARE(row, 77);
        QCOMPARE(dialogs.take(), QStringList({titled(u"Warning"_s, u"Dupliquer"_s,
                                                     text.replace("%1"_L1, source + blocked))}));
        QCOMPARE(editor.entries().size(), 1);
        QCOMPARE(newFolders({source}).size(), 1); // nothing is rolled back
    }

    // A host may be given its name late.
    void theRootIsThatOfTheEditorsBeginning()
    {
        stage::store(1);
        const QString root = profilesRootPath();
        const QString name = QCoreApplication::applicationName();
        GamepadDefinder editor;
        QCoreApplication::setApplicationName(u"renamed"_s);
        const bool moved = profilesRootPath() != root;
        int row = -1;
        const bool copied = editor.duplicateProfile(0, &row);
        QCoreApplication::setApplicationName(name);
        QVERIFY(moved && copied);
        QCOMPARE(QFileInfo(editor.entries().at(row).dirPath).path(), root);
    }

    void aRowOutOfRangeIsNotCopied()
    {
        stage::store(1);
        GamepadDefinder editor;
        int row = 77;
        for (const int wrong : {-1, 1, 1000}) {
            QVERIFY(!editor.duplicateProfile(wrong, &row));
            QVERIFY(!editor.saveProfile(wrong));
        }
        QCOMPARE(row, 77);
        QCOMPARE(newFolders().size(), 1);
    }

    void everySaveFailureIsCritical_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("text");
        QTest::newRow("overlay") << u"/overlay.json"_s << u"Ã‰chec sauvegarde config : %1"_s;
        QTest::newRow("mapping") << u"/configActionGamepad.json"_s << u"Echec sauvegarde mapping : %1"_s;
        QTest::newRow("meta") << u"/meta.json"_s << u"Ã‰chec sauvegarde meta : %1"_s;
    }

    void everySaveFailureIsCritical()
    {
        QFETCH(const QString, file);
        QFETCH(const QString, text);
        const QString folder = stage::store(1);
        GamepadDefinder editor;
        stage::addPastille(editor, u"new"_s);
        QFile::remove(folder + file);
        QVERIFY(QFile::link(folder + "/nowhere/file"_L1, folder + file)); // there, and cannot be written
        Dialogs dialogs({Dialogs::ok()});
        QVERIFY(!editor.saveProfile(0));
        QCOMPARE(dialogs.take(),
                 QStringList({titled(u"Critical"_s, u"Sauvegarde"_s,
                                     text.arg(u"Impossible dâ€™Ã©crire %1"_s.arg(folder + file)))}));
        QVERIFY(editor.isDirty());
        if (file != "/overlay.json"_L1)
            QCOMPARE(stage::titlesIn(folder), QStringList({u"Start"_s, u"new"_s}));
        QVERIFY(QFile::remove(folder + file));
        QVERIFY(editor.saveProfile(0));
        QVERIFY(!editor.isDirty());
    }
};

GAMEPAD_TEST_MAIN(TestEditorCreation)
#include "tst_editorcreation.moc"
