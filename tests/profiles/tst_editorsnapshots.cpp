// SPDX-License-Identifier: MIT
// Snapshots by the editor's commands.
#include "exchangestage.h"
#include "interactiveoverlay.h"
#include "machine.h"
#include "profilesroot.h"
#include "snapshots.h"
#include "testmain.h"

#include <QtCore/QStandardPaths>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
/// One snapshot into `path`, with the boxes that came.
QStringList snapshotTo(GamepadDefinder &editor, const QString &path)
{
    Boxes boxes;
    const FileChoice file(path);
    editor.actionSnapshot();
    return file.given() == 1 ? boxes.take() : QStringList(u"no dialog"_s);
}

QStringList snapshotAllTo(GamepadDefinder &editor, const QString &folder)
{
    Boxes boxes;
    const FileChoice file(folder);
    editor.actionSnapshotAll();
    return file.given() == 1 ? boxes.take() : QStringList(u"no dialog"_s);
}

QImage imageIn(const QString &path)
{
    return QImage(path).convertToFormat(QImage::Format_ARGB32);
}

QImage expectedOf(const QJsonObject &overlay, const QString &folder)
{
    return renderOverlaySnapshot(overlay, folder + "/image.png"_L1, {}, nullptr)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

QString outFolder()
{
    return workFile(u"out"_s);
}

/// Rewrites the overlay document of a stored profile.
void storeOverlay(const QString &folder, const QJsonObject &overlay)
{
    write(folder + "/overlay.json"_L1, textOf(overlay));
}
} // namespace

class TestEditorSnapshots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startExchange(); }

    // The profile on show.

    void nothingOnShowIsNothingToPicture()
    {
        GamepadDefinder editor;
        const FileChoice file({});
        editor.actionSnapshot();
        settle();
        QCOMPARE(file.given(), 0);
    }

    void theDialogProposesANameInThePicturesFolder()
    {
        const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
        QVERIFY(QDir().mkpath(pictures));
        store(1, {.name = u"Été/1"_s});
        GamepadDefinder editor;
        const FileChoice file({}, [&](QFileDialog *dialog) {
            QCOMPARE(dialog->windowTitle(), u"Exporter snapshot PNG"_s);
            QCOMPARE(dialog->parentWidget(), &editor);
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
            QCOMPARE(dialog->nameFilters(), QStringList({u"Images PNG (*.png)"_s}));
            QCOMPARE(dialog->directory().canonicalPath(), QDir(pictures).canonicalPath());
            QCOMPARE(nameFieldOf(dialog)->text(), u"_t__1.png"_s);
        });
        editor.actionSnapshot();
        QCOMPARE(file.given(), 1);
        QVERIFY(treeOf(workFolder()).isEmpty());
        QVERIFY(treeOf(pictures).isEmpty());
    }

    void theProfileIsPicturedAsItIsEdited()
    {
        const QString folder = store(1);
        GamepadDefinder editor;
        QVERIFY(present(editor));
        addPastille(editor, u"Neuve"_s);
        QCOMPARE(snapshotTo(editor, workFile(u"a.png"_s)), QStringList());
        const QImage image = imageIn(workFile(u"a.png"_s));
        QCOMPARE(image.size(), stage::overlayOf(editor).size());
        QCOMPARE(image, expectedOf(stage::overlayOf(editor).toJson(), folder));
        QVERIFY(image != expectedOf(overlayIn(folder), folder));
        // The editor is not disturbed.
        QCOMPARE(titlesOn(editor), QStringList({u"Start"_s, u"Neuve"_s}));
        QVERIFY(editor.isDirty());
    }

    void aProfileWithoutAnOverlayIsPicturedAsItStandsOnShow()
    {
        store(1, {.pastilles = {u"A"_s}});
        const QString second = store(2, {.picture = Qt::red});
        storeOverlay(second, {});
        GamepadDefinder editor;
        {
            Boxes boxes;
            listOf(editor).setCurrentRow(1);
            QCOMPARE(boxes.take(),
                     QStringList({u"Warning: Chargement: Format de configuration non reconnu."_s}));
        }
        // Its document is empty only on disk: what is on show never is.
        QCOMPARE(snapshotTo(editor, workFile(u"a.png"_s)), QStringList());
        QCOMPARE(titlesOn(editor), QStringList({u"A"_s}));
        QCOMPARE(imageIn(workFile(u"a.png"_s)), expectedOf(stage::overlayOf(editor).toJson(), second));
    }

    void aNameWithoutSuffixGetsOne_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("written");
        QTest::newRow("none") << u"a"_s << u"a.png"_s;
        QTest::newRow("png") << u"a.png"_s << u"a.png"_s;
        QTest::newRow("another") << u"a.jpg"_s << u"a.jpg"_s;
        QTest::newRow("blank inside") << u"ma manette"_s << u"ma manette.png"_s;
    }

    void aNameWithoutSuffixGetsOne()
    {
        QFETCH(const QString, typed);
        QFETCH(const QString, written);
        store(1);
        GamepadDefinder editor;
        QCOMPARE(snapshotTo(editor, workFile(typed)), QStringList());
        QCOMPARE(treeOf(workFolder()), QStringList({written}));
        QVERIFY(bytesIn(workFile(written)).startsWith("\x89PNG"));
    }

    void aFileThatStandsThereIsReplacedWhenThePersonSaysSo()
    {
        store(1);
        GamepadDefinder editor;
        write(workFile(u"a.png"_s), "old");
        const Answer<QMessageBox> question(openDialog, [](QMessageBox *box) {
            QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
        });
        QCOMPARE(snapshotTo(editor, workFile(u"a.png"_s)), QStringList());
        QCOMPARE(question.given(), 1);
        QVERIFY(bytesIn(workFile(u"a.png"_s)).startsWith("\x89PNG"));
    }

    void aFileThatCannotBeWrittenIsSaid()
    {
        store(1);
        GamepadDefinder editor;
        Boxes boxes;
        const QString path = workFile(u"a.png"_s);
        // It becomes a folder at the moment of the acceptance.
        const FileChoice file(path, [&](QFileDialog *dialog) {
            connect(dialog, &QFileDialog::accepted, this, [&] { QVERIFY(QDir().mkpath(path)); });
        });
        editor.actionSnapshot();
        QCOMPARE(boxes.take(),
                 QStringList({"Warning: Snapshot PNG: "_L1 + u"Ã‰chec sauvegarde PNG : %1"_s.arg(path)}));
    }

    void aFullDiskIsSaid()
    {
        GAMEPAD_NEED_FULL_DEVICE();
        store(1);
        GamepadDefinder editor;
        Boxes boxes;
        const QString path = workFile(u"a.png"_s);
        const FileChoice file(path, [&](QFileDialog *dialog) {
            connect(dialog, &QFileDialog::accepted, this, [&] { QVERIFY(QFile::link(fullDevice(), path)); });
        });
        editor.actionSnapshot();
        QCOMPARE(boxes.take(),
                 QStringList({"Warning: Snapshot PNG: "_L1 + u"Ã‰chec sauvegarde PNG : %1"_s.arg(path)}));
    }

    // All profiles, by the menu's command.

    void noProfilesAreNothingToPicture()
    {
        GamepadDefinder editor;
        const FileChoice file({});
        editor.actionSnapshotAll();
        settle();
        QCOMPARE(file.given(), 0);
    }

    void theDialogForAFolderIsSetUp()
    {
        const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
        QVERIFY(QDir().mkpath(pictures));
        store(1);
        GamepadDefinder editor;
        const FileChoice file({}, [&](QFileDialog *dialog) {
            QCOMPARE(dialog->windowTitle(), u"Choisir un dossier pour les snapshots"_s);
            QCOMPARE(dialog->parentWidget(), &editor);
            QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
            QVERIFY(dialog->testOption(QFileDialog::ShowDirsOnly));
            QCOMPARE(dialog->directory().canonicalPath(), QDir(pictures).canonicalPath());
        });
        Boxes boxes;
        editor.actionSnapshotAll();
        QCOMPARE(file.given(), 1);
        QCOMPARE(boxes.take(), QStringList());
        QVERIFY(treeOf(pictures).isEmpty());
    }

    void allAreWrittenAndCounted()
    {
        const QString first = store(1, {.name = u"A"_s});
        const QString second = store(2, {.name = u"B"_s, .picture = Qt::red});
        store(3, {.name = u"A"_s, .picture = QColor()});
        GamepadDefinder editor;
        QVERIFY(QDir().mkpath(outFolder()));
        QCOMPARE(snapshotAllTo(editor, outFolder()),
                 QStringList({"Information: Snapshots PNG: "_L1 + u"Snapshots gÃ©nÃ©rÃ©s : %1"_s.arg(3)}));
        QCOMPARE(treeOf(outFolder()), QStringList({u"A.png"_s, u"A_1.png"_s, u"B.png"_s}));
        QCOMPARE(imageIn(outFolder() + "/B.png"_L1), expectedOf(overlayIn(second), second));
        QCOMPARE(imageIn(outFolder() + "/A.png"_L1), expectedOf(stage::overlayOf(editor).toJson(), first));
        // The next run stands beside it.
        QCOMPARE(snapshotAllTo(editor, outFolder()).size(), 1);
        QCOMPARE(treeOf(outFolder()), QStringList({u"A.png"_s, u"A_1.png"_s, u"A_2.png"_s, u"A_3.png"_s,
                                                   u"B.png"_s, u"B_1.png"_s}));
        QCOMPARE(snapshotAllTo(editor, outFolder()).size(), 1);
        QVERIFY(QFileInfo::exists(outFolder() + "/B_2.png"_L1));
    }

    void failuresOfSomeAreListedWithTheCount()
    {
        store(1, {.name = u"A"_s});
        const QString gone = store(2, {.name = u"Gone"_s});
        const QString bad = store(3, {.name = u"Bad %1"_s});
        store(4, {.name = u"D"_s});
        GamepadDefinder editor;
        QVERIFY(QFile::remove(gone + "/overlay.json"_L1));
        storeOverlay(bad, object("{'type':'X'}"));
        QVERIFY(QDir().mkpath(outFolder()));
        const QString errors = "Gone : "_L1 + u"Impossible dâ€™ouvrir %1"_s.arg(gone + "/overlay.json"_L1) +
                               "\nBad %1 : Format de configuration non reconnu."_L1;
        QCOMPARE(snapshotAllTo(editor, outFolder()),
                 QStringList({"Warning: Snapshots PNG: "_L1 +
                              u"Snapshots gÃ©nÃ©rÃ©s : %1\nErreurs :\n%2"_s.arg(u"2"_s, errors)}));
        QCOMPARE(treeOf(outFolder()), QStringList({u"A.png"_s, u"D.png"_s}));
    }

    void aRunThatCannotBeginSaysWhy()
    {
        const QString folder = store(1);
        GamepadDefinder editor;
        addPastille(editor, u"Neuve"_s);
        QVERIFY(QDir().mkpath(outFolder()));
        const BlockedFile blocked(folder + "/overlay.json"_L1);
        const QStringList said = snapshotAllTo(editor, outFolder());
        QCOMPARE(said.size(), 2);
        QVERIFY(said.at(0).startsWith("Critical: Sauvegarde: "_L1));
        QCOMPARE(said.at(1),
                 u"Warning: Snapshots PNG: Impossible de sauvegarder la configuration en cours."_s);
        QVERIFY(treeOf(outFolder()).isEmpty());
        saveTimerOf(editor).stop();
        QVERIFY(editor.isDirty()); // the destructor tries once more
    }

    // By programs.

    void aBlankFolderIsNoRun_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::newRow("empty") << QString();
        QTest::newRow("blank") << u" \t "_s;
    }

    void aBlankFolderIsNoRun()
    {
        QFETCH(const QString, folder);
        store(1);
        GamepadDefinder editor;
        int count = 7;
        QStringList errors;
        QVERIFY(!editor.exportAllSnapshots(folder, &count, &errors));
        QCOMPARE(count, 0);
        QCOMPARE(errors, QStringList({u"Dossier de sortie vide."_s}));
        QVERIFY(!editor.exportAllSnapshots(folder, nullptr, nullptr));
        QCOMPARE(editor.exportSnapshotsToDir(folder), -1);
    }

    void theFolderIsLookedAtBeforeAnEditIsSavedAndMadeAfterIt()
    {
        const QString folder = store(1);
        GamepadDefinder editor;
        addPastille(editor, u"Neuve"_s);
        QVERIFY(!editor.exportAllSnapshots(u" "_s, nullptr, nullptr));
        QVERIFY(editor.isDirty());
        QCOMPARE(titlesIn(folder), QStringList({u"Start"_s}));
        write(outFolder(), "a file");
        QVERIFY(!editor.exportAllSnapshots(outFolder(), nullptr, nullptr));
        QVERIFY(!editor.isDirty());
        QCOMPARE(titlesIn(folder), QStringList({u"Start"_s, u"Neuve"_s}));
    }

    void noProfilesAreARunOfNone()
    {
        GamepadDefinder editor;
        int count = 7;
        QStringList errors;
        QVERIFY(editor.exportAllSnapshots(outFolder(), &count, &errors));
        QCOMPARE(count, 0);
        QVERIFY(errors.isEmpty());
        QVERIFY(QDir(outFolder()).exists());
        QCOMPARE(editor.exportSnapshotsToDir(outFolder()), 0);
    }

    void theFolderIsTrimmedAndMade()
    {
        store(1, {.name = u"A"_s});
        GamepadDefinder editor;
        int count = -1;
        QVERIFY(QMetaObject::invokeMethod(&editor, "exportSnapshotsToDir", Q_RETURN_ARG(int, count),
                                          Q_ARG(QString, "  "_L1 + outFolder() + "/deep/er \n"_L1)));
        QCOMPARE(count, 1);
        QCOMPARE(treeOf(outFolder() + "/deep/er"_L1), QStringList({u"A.png"_s}));
    }

    void aFolderThatCannotBeMadeIsNoRun()
    {
        store(1);
        GamepadDefinder editor;
        write(outFolder(), "a file");
        for (const QString &folder : {outFolder(), QString(outFolder() + "/below"_L1)}) {
            QStringList errors;
            QVERIFY(!editor.exportAllSnapshots(folder + u' ', nullptr, &errors));
            QCOMPARE(errors, QStringList({u"Impossible de crÃ©er le dossier : %1"_s.arg(folder)}));
            QCOMPARE(editor.exportSnapshotsToDir(folder), -1);
        }
        QCOMPARE(bytesIn(outFolder()), "a file");
    }

    void anEditIsSavedAndInTheSnapshot()
    {
        const QString folder = store(1, {.name = u"A"_s});
        GamepadDefinder editor;
        addPastille(editor, u"Neuve"_s);
        QCOMPARE(editor.exportSnapshotsToDir(outFolder()), 1);
        QVERIFY(!editor.isDirty());
        QCOMPARE(titlesIn(folder), QStringList({u"Start"_s, u"Neuve"_s}));
        QCOMPARE(imageIn(outFolder() + "/A.png"_L1), expectedOf(overlayIn(folder), folder));
    }

    void aCleanProfileIsNotSaved()
    {
        const QString folder = store(1);
        GamepadDefinder editor;
        QVERIFY(!editor.isDirty());
        QCOMPARE(editor.exportSnapshotsToDir(outFolder()), 1);
        QVERIFY(metaIn(folder).contains("createdAt"_L1));
    }

    void aSaveThatFailsIsNoRun()
    {
        const QString folder = store(1);
        GamepadDefinder editor;
        addPastille(editor, u"Neuve"_s);
        const BlockedFile blocked(folder + "/overlay.json"_L1);
        Boxes boxes;
        QStringList errors;
        QVERIFY(!editor.exportAllSnapshots(outFolder(), nullptr, &errors));
        QCOMPARE(errors, QStringList({u"Impossible de sauvegarder la configuration en cours."_s}));
        QCOMPARE(editor.exportSnapshotsToDir(outFolder()), -1);
        QCOMPARE(boxes.take().size(), 2);
        QVERIFY(!QDir(outFolder()).exists());
        saveTimerOf(editor).stop();
    }

    void failuresAreLogged()
    {
        store(1, {.name = u"A"_s});
        const QString bad = store(2, {.name = u"Bad"_s});
        const QString empty = store(3, {.name = u"Empty"_s});
        storeOverlay(bad, object("{'type':'X'}"));
        storeOverlay(empty, {});
        GamepadDefinder editor;
        QTest::ignoreMessage(QtWarningMsg, "snapshot: \"Bad : Format de configuration non reconnu.\"");
        QTest::ignoreMessage(QtWarningMsg, "snapshot: \"Empty : Overlay vide.\"");
        QCOMPARE(editor.exportSnapshotsToDir(outFolder()), 1);
        QCOMPARE(treeOf(outFolder()), QStringList({u"A.png"_s}));
    }

    void theSizeFollowsEachDocumentAndElseTheEditor()
    {
        store(1, {.name = u"Shown"_s});
        const QString sized = store(2, {.name = u"Sized"_s});
        const QString zero = store(3, {.name = u"Zero"_s});
        storeOverlay(sized, ::overlayOf(u"a"_s, {123, 45}));
        storeOverlay(zero, ::overlayOf(u"a"_s, {0, 0}));
        GamepadDefinder editor;
        QVERIFY(present(editor));
        editor.resize(editor.size() + QSize(37, 21));
        QVERIFY(QTest::qWaitFor([&] { return stage::overlayOf(editor).width() > 0; }));
        settle();
        const QSize shown = stage::overlayOf(editor).size();
        QCOMPARE(editor.exportSnapshotsToDir(outFolder()), 3);
        QCOMPARE(QImage(outFolder() + "/Sized.png"_L1).size(), QSize(123, 45));
        QCOMPARE(QImage(outFolder() + "/Zero.png"_L1).size(), shown);
        QCOMPARE(QImage(outFolder() + "/Shown.png"_L1).size(), shown);
    }

    void anEditorWithoutSizeMakesThem800By600()
    {
        store(1, {.name = u"A"_s});
        const QString zero = store(2, {.name = u"Zero"_s});
        storeOverlay(zero, ::overlayOf(u"a"_s, {0, 0}));
        GamepadDefinder editor;
        InteractiveOverlay &overlay = stage::overlayOf(editor);
        overlay.setMinimumSize(0, 0);
        overlay.resize(0, 0);
        QCOMPARE(overlay.size(), QSize(0, 0));
        QCOMPARE(editor.exportSnapshotsToDir(outFolder()), 2);
        QCOMPARE(QImage(outFolder() + "/A.png"_L1).size(), QSize(800, 600));
        QCOMPARE(QImage(outFolder() + "/Zero.png"_L1).size(), QSize(800, 600));
    }
};

GAMEPAD_TEST_MAIN(TestEditorSnapshots)
#include "tst_editorsnapshots.moc"
