// SPDX-License-Identifier: MIT
// Profiles that leave by the file dialog.
#include "exchangestage.h"
#include "interactiveoverlay.h"
#include "testmain.h"

#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
QJsonObject exportedTo(const QString &name)
{
    return objectIn(workFile(name));
}

/// Exports the profile on show to `name`, and returns the boxes that came.
QStringList exportTo(GamepadDefinder &editor, const QString &name)
{
    Boxes boxes;
    const FileChoice file(workFile(name));
    editor.actionExport();
    return file.given() == 1 ? boxes.take() : QStringList(u"no dialog"_s);
}
} // namespace

class TestEditorExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startExchange(); }

    void nothingOnShowIsNothingToExport()
    {
        GamepadDefinder editor;
        const FileChoice file({});
        editor.actionExport();
        settle();
        QCOMPARE(file.given(), 0);
    }

    void theDialogProposesANameInTheHomeFolder()
    {
        store(1, {.name = u"Été/1"_s});
        GamepadDefinder editor;
        const FileChoice file({}, [&](QFileDialog *dialog) {
            QCOMPARE(dialog->windowTitle(), u"Exporter le gamepad"_s);
            QCOMPARE(dialog->parentWidget(), &editor);
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
            QCOMPARE(dialog->nameFilters(), QStringList({u"Configuration Velor (*.velor.json)"_s}));
            QCOMPARE(dialog->directory().canonicalPath(), QDir::home().canonicalPath());
            QCOMPARE(nameFieldOf(dialog)->text(), u"_t__1.velor.json"_s);
        });
        editor.actionExport();
        QCOMPARE(file.given(), 1);
        QVERIFY(treeOf(workFolder()).isEmpty());
    }

    void theDocumentIsWritten()
    {
        const QString folder = store(1, {.name = u"Manette é %1"_s, .picture = Qt::red});
        GamepadDefinder editor;
        QCOMPARE(exportTo(editor, u"out.velor.json"_s), QStringList());
        QJsonObject document = exportedTo(u"out.velor.json"_s);
        QCOMPARE(bytesIn(workFile(u"out.velor.json"_s)),
                 QJsonDocument(document).toJson(QJsonDocument::Indented));
        QVERIFY(document.take("createdAt"_L1).toString().endsWith(u'Z'));
        QCOMPARE(document,
                 (QJsonObject{
                     {u"type"_s, u"VelorGamepad"_s},
                     {u"version"_s, 2},
                     {u"name"_s, u"Manette é %1"_s},
                     {u"overlay"_s, stage::overlayOf(editor).toJson()},
                     {u"imageBase64"_s, QString::fromLatin1(bytesIn(folder + "/image.png"_L1).toBase64())},
                     {u"imageExt"_s, u"png"_s},
                     {u"deviceName"_s, QString()},
                 }));
    }

    void theNameIsUsedAsItStands()
    {
        store(1);
        GamepadDefinder editor;
        QCOMPARE(exportTo(editor, u"bare"_s), QStringList());
        QCOMPARE(exportTo(editor, u"other.txt"_s), QStringList());
        QCOMPARE(treeOf(workFolder()), QStringList({u"bare"_s, u"other.txt"_s}));
        QCOMPARE(exportedTo(u"bare"_s)["type"_L1], QJsonValue(u"VelorGamepad"_s));
    }

    void aFileThatStandsThereIsReplacedWhenThePersonSaysSo()
    {
        store(1);
        GamepadDefinder editor;
        write(workFile(u"out.velor.json"_s), QByteArray(1'000'000, 'x'));
        const Answer<QMessageBox> question(openDialog, [](QMessageBox *box) {
            QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
        });
        QCOMPARE(exportTo(editor, u"out.velor.json"_s), QStringList());
        QCOMPARE(question.given(), 1);
        QCOMPARE(exportedTo(u"out.velor.json"_s).size(), 8);
    }

    void anEditIsInTheExportBeforeItIsOnDisk()
    {
        const QString folder = store(1);
        GamepadDefinder editor;
        addPastille(editor, u"Neuve"_s);
        const auto titlesOf = [](const QJsonObject &document) {
            QStringList titles;
            for (const QJsonValue &node : document["overlay"_L1]["nodes"_L1].toArray())
                titles.append(node["title"_L1].toString());
            return titles;
        };
        QCOMPARE(exportTo(editor, u"out.velor.json"_s), QStringList());
        QCOMPARE(titlesOf(exportedTo(u"out.velor.json"_s)), QStringList({u"Start"_s, u"Neuve"_s}));
        QVERIFY(editor.isDirty());
        QCOMPARE(titlesIn(folder), QStringList({u"Start"_s}));
    }

    void aPictureThatIsGoneIsEmptyInTheDocument()
    {
        store(1, {.picture = QColor()});
        GamepadDefinder editor;
        QCOMPARE(exportTo(editor, u"out.velor.json"_s), QStringList());
        const QJsonObject document = exportedTo(u"out.velor.json"_s);
        QCOMPARE(document["imageBase64"_L1], QJsonValue(QString()));
        QCOMPARE(document["imageExt"_L1], QJsonValue(u"png"_s));
        QCOMPARE(document.size(), 8);
    }

    void aLinkedProfileIsRefusedAfterTheDialog()
    {
        store(1, {.deviceName = u"Pad"_s});
        GamepadDefinder editor;
        QCOMPARE(
            exportTo(editor, u"out.velor.json"_s),
            QStringList(
                {u"Information: Export: Ce profil est associÃ© Ã  une manette. Le copier/coller nâ€™est disponible que pour les profils non liÃ©s."_s}));
        QVERIFY(treeOf(workFolder()).isEmpty());
        // Without a file there is nothing to refuse.
        Boxes boxes;
        const FileChoice file({});
        editor.actionExport();
        QCOMPARE(file.given(), 1);
        QCOMPARE(boxes.take(), QStringList());
    }

    void aFileThatCannotBeWrittenIsSaid()
    {
        store(1);
        GamepadDefinder editor;
        const QString path = workFile(u"out.velor.json"_s);
        // It becomes a folder at the moment of the acceptance.
        Boxes boxes;
        const FileChoice file(path, [&](QFileDialog *dialog) {
            connect(dialog, &QFileDialog::accepted, this, [&] { QVERIFY(QDir().mkpath(path)); });
        });
        editor.actionExport();
        QCOMPARE(boxes.take(),
                 QStringList({"Warning: Export: "_L1 +
                              u"Ã‰chec export : %1"_s.arg(u"Impossible dâ€™Ã©crire %1"_s.arg(path))}));
        QVERIFY(treeOf(path).isEmpty());
    }

    void aNameOfTenThousandCharactersTravels()
    {
        const QString name(10'000, u'é');
        store(1, {.name = name});
        GamepadDefinder editor;
        Boxes boxes;
        const FileChoice file(workFile(u"out.velor.json"_s), [](const QFileDialog *dialog) {
            QCOMPARE(nameFieldOf(dialog)->text(), QString(QString(64, u'_') + ".velor.json"_L1));
        });
        editor.actionExport();
        QCOMPARE(boxes.take(), QStringList());
        QCOMPARE(exportedTo(u"out.velor.json"_s)["name"_L1], QJsonValue(name));
    }
};

GAMEPAD_TEST_MAIN(TestEditorExport)
#include "tst_editorexport.moc"
