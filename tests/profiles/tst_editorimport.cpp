// SPDX-License-Identifier: MIT
// Profiles that come by the file dialog.
#include "exchangestage.h"
#include "profilesroot.h"
#include "profilestore.h"
#include "smalldisk.h"
#include "testmain.h"

#include <QtWidgets/QMessageBox>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
QString refused()
{
    return u"Warning: Import: Impossible dâ€™importer ce fichier."_s;
}

/// Imports `bytes` from a file, and returns the boxes that came.
QStringList importBytes(GamepadDefinder &editor, const QByteArray &bytes)
{
    const QString path = workFile(u"in.velor.json"_s);
    write(path, bytes);
    Boxes boxes;
    const FileChoice file(path);
    editor.actionImport();
    return file.given() == 1 ? boxes.take() : QStringList(u"no dialog"_s);
}

QStringList importDocument(GamepadDefinder &editor, const QJsonObject &document)
{
    return importBytes(editor, textOf(document));
}
} // namespace

class TestEditorImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startExchange(); }

    void theDialogIsSetUp()
    {
        GamepadDefinder editor;
        const FileChoice file({}, [&](QFileDialog *dialog) {
            QCOMPARE(dialog->windowTitle(), u"Importer un gamepad"_s);
            QCOMPARE(dialog->parentWidget(), &editor);
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptOpen);
            QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFile);
            QCOMPARE(dialog->nameFilters(),
                     QStringList({u"Configuration Velor (*.velor.json)"_s, u"JSON (*.json)"_s}));
        });
        editor.actionImport();
        QCOMPARE(file.given(), 1);
        QVERIFY(editor.entries().isEmpty());
        QVERIFY(treeOf(profilesRootPath()).isEmpty());
    }

    void aProfileComesInAtTheEndAndIsShown()
    {
        store(1, {.name = u"Ici"_s});
        GamepadDefinder editor;
        Journal journal(&editor);
        QCOMPARE(importDocument(editor, travellingDocument()), QStringList());
        QCOMPARE(namesOf(editor), QStringList({u"Ici"_s, u"Voyageuse"_s}));
        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(listOf(editor).currentRow(), 1);
        QCOMPARE(titlesOn(editor), QStringList({u"Venue"_s}));
        const GamepadEntry entry = editor.entries().at(1);
        QCOMPARE(QFileInfo(entry.dirPath).path(), profilesRootPath());
        QCOMPARE(entry.deviceName, QString());
        QCOMPARE(bytesIn(entry.imagePath), pngOf({40, 30}, Qt::green));
        QCOMPARE(objectIn(mappingPath(entry.dirPath)), defaultMappingDocument());
        QCOMPARE(journal.take().size(), 2);
    }

    void theBindingsOfAnExportedProfileStayBehind()
    {
        const QString folder = store(1);
        write(mappingPath(folder), R"({"bridges":[{"action":"A"}]})");
        GamepadDefinder editor;
        {
            const FileChoice file(workFile(u"in.velor.json"_s));
            editor.actionExport();
        }
        QCOMPARE(importBytes(editor, bytesIn(workFile(u"in.velor.json"_s))), QStringList());
        QCOMPARE(editor.entries().size(), 2);
        QCOMPARE(objectIn(mappingPath(editor.entries().at(1).dirPath)), defaultMappingDocument());
        QCOMPARE(objectIn(mappingPath(folder)), object("{'bridges':[{'action':'A'}]}"));
    }

    void aNameInUseIsKept()
    {
        GamepadDefinder editor;
        QCOMPARE(importDocument(editor, travellingDocument()), QStringList());
        QCOMPARE(importDocument(editor, travellingDocument()), QStringList());
        QCOMPARE(namesOf(editor), QStringList({u"Voyageuse"_s, u"Voyageuse"_s}));
        QVERIFY(editor.entries().at(0).id != editor.entries().at(1).id);
        QVERIFY(editor.entries().at(0).dirPath != editor.entries().at(1).dirPath);
        QCOMPARE(editor.currentRow(), 1);
    }

    // Refusals.

    void aFileThatIsGoneByThenIsSaid()
    {
        GamepadDefinder editor;
        const QString path = workFile(u"gone.velor.json"_s);
        write(path, textOf(travellingDocument()));
        Boxes boxes;
        const FileChoice file(path, [&](QFileDialog *dialog) {
            connect(dialog, &QFileDialog::accepted, this, [&] { QFile::remove(path); });
        });
        editor.actionImport();
        QCOMPARE(boxes.take(),
                 QStringList({"Warning: Import: "_L1 + u"Impossible dâ€™ouvrir %1"_s.arg(path)}));
        QVERIFY(editor.entries().isEmpty());
    }

    void aMalformedFileIsSaid_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("cut short") << QByteArray("{\"type\":\"VelorGamepad\"");
        QTest::newRow("array") << QByteArray("[1]");
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\0", 10);
    }

    void aMalformedFileIsSaid()
    {
        QFETCH(const QByteArray, text);
        QJsonParseError reason;
        QJsonDocument::fromJson(text, &reason);
        GamepadDefinder editor;
        QCOMPARE(
            importBytes(editor, text),
            QStringList({"Warning: Import: "_L1 + u"JSON invalide dans %1 (%2)"_s.arg(
                                                      workFile(u"in.velor.json"_s), reason.errorString())}));
        QVERIFY(treeOf(profilesRootPath()).isEmpty());
    }

    void aLinkedDocumentIsRefused_data()
    {
        QTest::addColumn<QJsonObject>("document");
        const QJsonObject linked = with(travellingDocument(), u"deviceName"_s, u"Pad"_s);
        QTest::newRow("whole") << linked;
        QTest::newRow("of another type") << with(linked, u"type"_s, u"X"_s);
        QTest::newRow("blank") << with(linked, u"deviceName"_s, u" "_s);
    }

    void aLinkedDocumentIsRefused()
    {
        QFETCH(const QJsonObject, document);
        GamepadDefinder editor;
        QCOMPARE(
            importDocument(editor, document),
            QStringList(
                {u"Information: Import: Ce fichier est liÃ© Ã  une manette. Le coller/importe nâ€™est autorisÃ© que pour des profils non liÃ©s."_s}));
        QVERIFY(editor.entries().isEmpty());
        QVERIFY(treeOf(profilesRootPath()).isEmpty());
    }

    void whatIsNoProfileIsRefusedBeforeAnyFolderIsThere_data()
    {
        QTest::addColumn<QJsonObject>("document");
        QTest::newRow("nothing") << QJsonObject();
        QTest::newRow("type") << with(travellingDocument(), u"type"_s, u"velorgamepad"_s);
        QTest::newRow("empty overlay") << with(travellingDocument(), u"overlay"_s, QJsonObject());
        QTest::newRow("no overlay") << with(travellingDocument(), u"overlay"_s, QJsonValue::Undefined);
        QTest::newRow("overlay as text") << with(travellingDocument(), u"overlay"_s, u"{}"_s);
    }

    void whatIsNoProfileIsRefusedBeforeAnyFolderIsThere()
    {
        QFETCH(const QJsonObject, document);
        GamepadDefinder editor;
        QCOMPARE(importDocument(editor, document), QStringList({refused()}));
        QVERIFY(treeOf(profilesRootPath()).isEmpty());
    }

    void aFailedFileIsSaidTwice_data() { addFilesThatDoNotFit(); }

    void aFailedFileIsSaidTwice()
    {
        QFETCH(const int, places);
        QFETCH(const QString, text);
        QFETCH(const QString, file);
        const SmallDisk disk(profilesRootPath(), places);
        GAMEPAD_NEED_MOUNTED(disk);
        GamepadDefinder editor;
        const QStringList said = importDocument(editor, travellingDocument());
        const QString folder = profileFolders(profilesRootPath()).value(0);
        const QString error = u"Impossible dâ€™Ã©crire %1"_s.arg(folder + u'/' + file);
        QCOMPARE(said, QStringList({"Warning: Import: "_L1 + text.arg(error), refused()}));
        QVERIFY(editor.entries().isEmpty());
        QCOMPARE(editor.currentRow(), -1);
        // What was written stays: the folder and one file fewer than its place in the row.
        QCOMPARE(treeOf(folder).size(), places - 2);
    }

    void aSuffixTooLongForTheDiskIsSaidTwice()
    {
        GamepadDefinder editor;
        const QStringList said =
            importDocument(editor, with(travellingDocument(), u"imageExt"_s, QString(400, u'p')));
        QCOMPARE(said.size(), 2);
        QVERIFY(said.at(0).startsWith(u"Warning: Import: Ã‰chec Ã©criture image : %1"_s.section(u'%', 0, 0)));
        QCOMPARE(said.at(1), refused());
    }

    // Odd documents.

    void aDocumentWithoutPictureMakesAnEmptyOne()
    {
        GamepadDefinder editor;
        QJsonObject document = travellingDocument();
        document.remove("imageBase64"_L1);
        document.remove("imageExt"_L1);
        document.remove("name"_L1);
        QCOMPARE(importDocument(editor, document), QStringList());
        const GamepadEntry entry = editor.entries().at(0);
        QCOMPARE(entry.name, u"Gamepad importÃ©"_s);
        QCOMPARE(QFileInfo(entry.imagePath).fileName(), u"image.png"_s);
        QVERIFY(QFileInfo::exists(entry.imagePath));
        QCOMPARE(QFileInfo(entry.imagePath).size(), 0);
        // The placeholder is dark.
        const QImage icon = listOf(editor).item(0)->icon().pixmap(200, 140).toImage();
        QCOMPARE(icon.pixelColor(3, 3), QColor(Qt::darkGray));
    }

    void nothingLeavesTheProfilesFolder_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::newRow("way out") << u"/../../meta.json"_s;
        QTest::newRow("absolute") << u"/tmp/x"_s;
        QTest::newRow("backslash") << u"\\..\\x"_s;
        QTest::newRow("two dots") << u".."_s;
        QTest::newRow("cut by the system") << QString(u"\0/../x"_s);
    }

    void nothingLeavesTheProfilesFolder()
    {
        QFETCH(const QString, suffix);
        store(1, {.name = u"Ici"_s});
        const QStringList before = treeOf(temporaryHome());
        GamepadDefinder editor;
        QCOMPARE(importDocument(editor, with(travellingDocument(), u"imageExt"_s, suffix)), QStringList());
        const QString folder = QFileInfo(editor.entries().at(1).dirPath).fileName();
        for (const QString &path : treeOf(temporaryHome())) {
            // What file dialogs remember goes to "config"; the first profile is saved when it is left.
            QVERIFY2(before.contains(path) || path.contains(folder) || path.startsWith("desk"_L1) ||
                         path.startsWith("config"_L1) || path.endsWith("configActionGamepad.json"_L1),
                     qPrintable(path));
        }
        QCOMPARE(
            treeOf(editor.entries().at(1).dirPath),
            QStringList({u"configActionGamepad.json"_s, u"image.png"_s, u"meta.json"_s, u"overlay.json"_s}));
    }

    void wrongTypesAtEveryKeyAreNoHarm_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("value");
        for (const QString &key : travellingDocument().keys()) {
            for (const QJsonValue &value :
                 {QJsonValue(QJsonValue::Null), QJsonValue(true), QJsonValue(-1e300),
                  QJsonValue(QJsonArray{1, u"x"_s}), QJsonValue(QJsonObject{{u"type"_s, 1}})})
                QTest::addRow("%s: %d", qPrintable(key), int(value.type())) << key << value;
        }
    }

    void wrongTypesAtEveryKeyAreNoHarm()
    {
        QFETCH(const QString, key);
        QFETCH(const QJsonValue, value);
        const QString folder = store(1, {.name = u"Ici"_s});
        const QByteArray overlay = bytesIn(folder + "/overlay.json"_L1);
        GamepadDefinder editor;
        const QStringList said = importDocument(editor, with(travellingDocument(), key, value));
        const bool bad = key == "type"_L1 || (key == "overlay"_L1 && !value.isObject());
        // An overlay of another kind comes in, and cannot be shown.
        const bool shown = key != "overlay"_L1;
        QCOMPARE(said, bad ? QStringList({refused()})
                       : shown
                           ? QStringList()
                           : QStringList({u"Warning: Chargement: Format de configuration non reconnu."_s}));
        QCOMPARE(editor.entries().size(), bad ? 1 : 2);
        QCOMPARE(bytesIn(folder + "/overlay.json"_L1), overlay);
    }

    void aHugeOverlaySizeIsNoHarm()
    {
        GamepadDefinder editor;
        QCOMPARE(importDocument(editor, with(travellingDocument(), u"overlay"_s,
                                             ::overlayOf(u"A"_s, {2'000'000'000, 2'000'000'000}))),
                 QStringList());
        QCOMPARE(titlesOn(editor), QStringList({u"A"_s}));
        QCOMPARE(editor.exportSnapshotsToDir(workFile(u"out"_s)), 1);
    }

    void aHundredMegabytesComeIn()
    {
        GamepadDefinder editor;
        const QByteArray picture(78'643'200, 'x');
        QCOMPARE(importDocument(editor, with(travellingDocument(), u"imageBase64"_s,
                                             QString::fromLatin1(picture.toBase64()))),
                 QStringList());
        QCOMPARE(QFileInfo(editor.entries().at(0).imagePath).size(), picture.size());
    }

    void aNameOfTenThousandCharactersComesIn()
    {
        GamepadDefinder editor;
        const QString name(10'000, u'M');
        QCOMPARE(importDocument(editor, with(travellingDocument(), u"name"_s, name)), QStringList());
        QVERIFY(present(editor));
        QCOMPARE(namesOf(editor), QStringList({name}));
        QCOMPARE(metaIn(editor.entries().at(0).dirPath)["name"_L1], QJsonValue(name));
    }

    void rubbishForAPictureIsKeptAndShownAsMissing()
    {
        GamepadDefinder editor;
        QCOMPARE(importDocument(editor, with(travellingDocument(), u"imageBase64"_s, u"??aGk=é"_s)),
                 QStringList());
        QCOMPARE(bytesIn(editor.entries().at(0).imagePath), "hi");
    }
};

GAMEPAD_TEST_MAIN(TestEditorImport)
#include "tst_editorimport.moc"
