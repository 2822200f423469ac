// SPDX-License-Identifier: MIT
// The commands that load functions from a file and export a mapping to one, with their dialogs and boxes.
#include "machine.h"
#include "overlaymenus.h"

#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{
/// What a box says, and how.
struct Words
{
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QString title;
    QString text;

    bool operator==(const Words &) const = default;
};

enum class BoxAnswer { Ok, OfTheTest };

/// Chooses `entry`, gives its file dialog `name` (none: Escape), and returns what the box said that followed.
Words chooseFile(OverlayStage &stage, const QString &entry, const QString &name,
                 BoxAnswer boxAnswer = BoxAnswer::Ok)
{
    Words words;
    const Answer<QFileDialog> file(openDialog, [&](QFileDialog *dialog) {
        auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
        edit->selectAll();
        if (name.isEmpty()) {
            QTest::keyClick(dialog, Qt::Key_Escape);
            return;
        }
        QTest::keyClicks(edit, name);
        QTest::keyClick(edit, Qt::Key_Return);
    });
    // A test that answers the box itself must be the only one to do so.
    std::optional<Answer<QMessageBox>> box;
    if (boxAnswer == BoxAnswer::Ok) {
        box.emplace(openDialog, [&](QMessageBox *open) {
            words = {open->icon(), open->windowTitle(), open->text()};
            QCOMPARE(open->standardButtons(), QMessageBox::Ok);
            QCOMPARE(open->textFormat(), Qt::PlainText); // a path may look like markup
            QTest::mouseClick(open->button(QMessageBox::Ok), Qt::LeftButton);
        });
    }
    choose(stage, entry);
    return words;
}

void write(const QString &name, const QByteArray &text)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
}

QJsonObject writtenTo(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}
} // namespace

class TestInteractiveOverlayFiles : public QObject
{
    Q_OBJECT

private:
    QDir m_folder;

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void init()
    {
        failOnUnexpectedWarnings();
        m_folder = QDir(temporaryHome() + "/desk"_L1);
        m_folder.removeRecursively();
        QVERIFY(m_folder.mkpath(u"."_s));
        QVERIFY(QDir::setCurrent(m_folder.path()));
    }

    // Loading functions.

    void theDialogForFunctionsIsSetUp()
    {
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        const Answer<QFileDialog> file(openDialog, [&](QFileDialog *dialog) {
            QCOMPARE(dialog->windowTitle(), u"Charger fonctions (ref)"_s);
            QCOMPARE(dialog->parentWidget(), stage.overlay());
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptOpen);
            QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFile);
            QCOMPARE(dialog->directory().canonicalPath(), m_folder.canonicalPath());
            QCOMPARE(dialog->nameFilters(), QStringList({u"JSON (*.json)"_s}));
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        choose(stage, loading);
        QCOMPARE(file.given(), 1);
    }

    void noFileIsNoCatalogue()
    {
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        stage->setExternalServices(someFunctions());
        stage.takeDirty();
        QCOMPARE(chooseFile(stage, loading, QString()), Words());
        QCOMPARE(stage->externalServices(), someFunctions());
        QCOMPARE(stage.takeDirty(), 0);
    }

    void functionsAreLoadedInPlaceOfTheOldOnes_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("array") << QByteArray(R"([{"name":"A"},{"name":"B"},3])");
        QTest::newRow("ref") << QByteArray(R"({"ref":[{"name":"A"},{"name":"B"},3]})");
        QTest::newRow("services") << QByteArray(R"({"services":{"ref":[{"name":"A"},{"name":"B"},3]}})");
    }

    void functionsAreLoadedInPlaceOfTheOldOnes()
    {
        QFETCH(const QByteArray, text);
        write(u"f.json"_s, text);
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        stage->setExternalServices(someFunctions());
        // The lock is for mappings; this is the person's own wish.
        stage->setServicesLocked(true);
        QSignalSpy changed(stage.overlay(), &InteractiveOverlay::externalServicesChanged);
        stage.takeDirty();
        QCOMPARE(chooseFile(stage, loading, u"f.json"_s),
                 (Words{QMessageBox::Information, u"Fonctions"_s, u"Loaded 3 functions"_s}));
        QCOMPARE(stage->externalServices(), array("[{'name':'A'},{'name':'B'},3]"));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(stage.takeDirty(), 1);
        // The same once more: no change, but the tool boxes are given it again.
        QCOMPARE(chooseFile(stage, loading, u"f.json"_s).text, u"Loaded 3 functions"_s);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(stage.takeDirty(), 1);
    }

    void aFileWithoutFunctionsIsRefused_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("broken") << QByteArray("{\"ref\":") << u"Invalid JSON in %1 (%2)"_s;
        QTest::newRow("empty") << QByteArray() << u"Invalid JSON in %1 (%2)"_s;
        QTest::newRow("no functions") << QByteArray("{\"bridges\":[]}") << u"No 'ref' array found in %1"_s;
        QTest::newRow("empty array") << QByteArray("[]") << u"No 'ref' array found in %1"_s;
    }

    void aFileWithoutFunctionsIsRefused()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QString, message);
        write(u"bad.json"_s, text);
        QJsonParseError reason;
        QJsonDocument::fromJson(text, &reason);
        QString expected = message;
        expected.replace(u"%1"_s, m_folder.filePath(u"bad.json"_s)).replace(u"%2"_s, reason.errorString());

        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        stage->setExternalServices(someFunctions());
        stage.takeDirty();
        QCOMPARE(chooseFile(stage, loading, u"bad.json"_s),
                 (Words{QMessageBox::Warning, u"Fonctions"_s, expected}));
        QCOMPARE(stage->externalServices(), someFunctions());
        QCOMPARE(stage.takeDirty(), 0);
    }

    void aFileThatIsGoneByThenIsSaid()
    {
        write(u"gone.json"_s, "[1]");
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        Words words;
        const Answer<QFileDialog> file(openDialog, [&](QFileDialog *dialog) {
            // It goes at the moment of the acceptance.
            connect(dialog, &QFileDialog::accepted, this, [] { QFile::remove(u"gone.json"_s); });
            auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
            QTest::keyClicks(edit, u"gone.json"_s);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        const Answer<QMessageBox> box(openDialog, [&](QMessageBox *open) {
            words = {open->icon(), open->windowTitle(), open->text()};
        });
        choose(stage, loading);
        QCOMPARE(words, (Words{QMessageBox::Warning, u"Fonctions"_s,
                               "Cannot open "_L1 + m_folder.filePath(u"gone.json"_s)}));
    }

    // Exporting the mapping.

    void theDialogForTheMappingIsSetUp()
    {
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        const Answer<QFileDialog> file(openDialog, [&](QFileDialog *dialog) {
            QCOMPARE(dialog->windowTitle(), u"Exporter mapping JSON"_s);
            QCOMPARE(dialog->parentWidget(), stage.overlay());
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
            QCOMPARE(dialog->directory().canonicalPath(), m_folder.canonicalPath());
            QCOMPARE(dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->text(),
                     u"configActionGamepad.json"_s);
            QCOMPARE(dialog->nameFilters(), QStringList({u"JSON (*.json)"_s}));
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        choose(stage, exporting);
        QCOMPARE(file.given(), 1);
        QVERIFY(m_folder.isEmpty());
    }

    void theMappingIsWritten_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("written");
        QTest::newRow("suffix") << u"map.json"_s << u"map.json"_s;
        QTest::newRow("no suffix") << u"map"_s << u"map.json"_s;
        QTest::newRow("another suffix") << u"map.txt"_s << u"map.txt"_s;
        QTest::newRow("a dot at the end") << u"map."_s << u"map..json"_s;
        QTest::newRow("a blank inside") << u"ma manette"_s << u"ma manette.json"_s;
    }

    void theMappingIsWritten()
    {
        QFETCH(const QString, typed);
        QFETCH(const QString, written);
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"but_1"_s);
        stage.box(0)->applyConfig(object("{'ref':'Centrer'}"));
        stage.takeDirty();
        QCOMPARE(chooseFile(stage, exporting, typed),
                 (Words{QMessageBox::Information, u"Exporter mapping"_s,
                        "Mapping exported to "_L1 + QDir::toNativeSeparators(m_folder.filePath(written))}));
        QCOMPARE(m_folder.entryList(QDir::Files), QStringList({written}));
        QCOMPARE(writtenTo(written),
                 object("{'signals':[],'onStartup':[],'onClose':[],'timers':[],'bridges':["
                        "{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,"
                        "'stringKey':'but_1'},'dst':[{'ref':'center'}],'action':'Centrer'}]}"));
        QCOMPARE(stage.takeDirty(), 0);
    }

    void whatCannotBeWrittenIsSaid()
    {
        // The name that is typed becomes another one, which is a folder.
        QVERIFY(m_folder.mkdir(u"map.json"_s));
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        QCOMPARE(chooseFile(stage, exporting, u"map"_s),
                 (Words{QMessageBox::Warning, u"Exporter mapping"_s,
                        "Cannot write "_L1 + m_folder.filePath(u"map.json"_s)}));
    }

    void aFullDiskIsSaid()
    {
        GAMEPAD_NEED_FULL_DEVICE();
        QVERIFY(QFile::link(fullDevice(), u"full.json"_s));
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        // Without its suffix, so that the dialog does not ask about a file that is there.
        QCOMPARE(chooseFile(stage, exporting, u"full"_s),
                 (Words{QMessageBox::Warning, u"Exporter mapping"_s,
                        "Write failed for "_L1 + m_folder.filePath(u"full.json"_s)}));
    }

    // What may happen while they are open.

    void theOverlayMayGoUnderItsFileDialog_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<bool>("later");
        QTest::newRow("loading, at once") << loading << false;
        QTest::newRow("loading, by deferred deletion") << loading << true;
        QTest::newRow("exporting, at once") << exporting << false;
        QTest::newRow("exporting, by deferred deletion") << exporting << true;
    }

    void theOverlayMayGoUnderItsFileDialog()
    {
        QFETCH(const QString, entry);
        QFETCH(const bool, later);
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        const Answer<QFileDialog> file(openDialog, [&](QFileDialog *) { removeOverlay(stage, later); });
        choose(stage, entry);
        QCOMPARE(file.given(), 1);
        QVERIFY(!stage.overlay());
        QVERIFY(m_folder.isEmpty());
    }

    void theOverlayMayGoUnderItsMessageBox_data() { theOverlayMayGoUnderItsFileDialog_data(); }

    void theOverlayMayGoUnderItsMessageBox()
    {
        QFETCH(const QString, entry);
        QFETCH(const bool, later);
        write(u"f.json"_s, "[1]");
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        const Answer<QMessageBox> box(openDialog, [&](QMessageBox *) { removeOverlay(stage, later); });
        chooseFile(stage, entry, entry == loading ? u"f.json"_s : u"g.json"_s, BoxAnswer::OfTheTest);
        QCOMPARE(box.given(), 1);
        QVERIFY(!stage.overlay());
    }

    void aListenerMayDeleteTheOverlayWhenTheCatalogueChanges()
    {
        write(u"f.json"_s, "[1]");
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        connect(stage.overlay(), &InteractiveOverlay::dirty, this, [&] { stage->deleteLater(); });
        QCOMPARE(chooseFile(stage, loading, u"f.json"_s).text, QString());
        QTRY_VERIFY(!stage.overlay());
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayFiles)
#include "tst_interactiveoverlayfiles.moc"
