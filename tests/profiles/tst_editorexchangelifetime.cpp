// SPDX-License-Identifier: MIT
// A host may take the editor away while one of its dialogs is open.
#include "exchangestage.h"
#include "testmain.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtWidgets/QMessageBox>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
using Command = void (GamepadDefinder::*)();

/// How the host takes it away.
enum class Removal { AtOnce, Later };

void remove(QPointer<GamepadDefinder> &editor, Removal removal)
{
    if (removal == Removal::AtOnce) {
        delete editor;
        return;
    }
    editor->deleteLater();
    QTRY_VERIFY(!editor);
}

void hold(const QByteArray &bytes)
{
    auto *data = new QMimeData;
    data->setData(u"application/x-velor-gamepad"_s, bytes);
    QGuiApplication::clipboard()->setMimeData(data);
}
} // namespace

class TestEditorExchangeLifetime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startExchange(); }

    void theEditorMayGoUnderAFileDialog_data()
    {
        QTest::addColumn<int>("command");
        QTest::addColumn<Removal>("removal");
        const std::array names{"export", "import", "snapshot", "snapshots"};
        for (size_t i = 0; i < names.size(); ++i) {
            QTest::addRow("%s, at once", names[i]) << int(i) << Removal::AtOnce;
            QTest::addRow("%s, later", names[i]) << int(i) << Removal::Later;
        }
    }

    void theEditorMayGoUnderAFileDialog()
    {
        QFETCH(const int, command);
        QFETCH(const Removal, removal);
        const std::array<Command, 4> commands{&GamepadDefinder::actionExport, &GamepadDefinder::actionImport,
                                              &GamepadDefinder::actionSnapshot,
                                              &GamepadDefinder::actionSnapshotAll};
        store(1);
        QPointer<GamepadDefinder> editor = new GamepadDefinder;
        const Answer<QFileDialog> dialog(openDialog, [&](QFileDialog *) { remove(editor, removal); });
        (editor->*commands.at(static_cast<size_t>(command)))();
        QCOMPARE(dialog.given(), 1);
        QVERIFY(!editor);
        QVERIFY(treeOf(workFolder()).isEmpty());
    }

    void theEditorMayGoUnderABox_data()
    {
        QTest::addColumn<QString>("door");
        QTest::addColumn<Removal>("removal");
        for (const char *door : {"copy", "export", "export failure", "import", "import file",
                                 "import failure", "paste", "paste type", "paste text", "paste nothing",
                                 "paste failure", "snapshot failure", "snapshots", "snapshots flush"}) {
            QTest::addRow("%s, at once", door) << QString::fromLatin1(door) << Removal::AtOnce;
            QTest::addRow("%s, later", door) << QString::fromLatin1(door) << Removal::Later;
        }
    }

    void theEditorMayGoUnderABox()
    {
        QFETCH(const QString, door);
        QFETCH(const Removal, removal);
        const bool linked = door == "copy"_L1 || door == "export"_L1;
        const QString folder = store(1, {.deviceName = linked ? u"Pad"_s : QString()});
        QPointer<GamepadDefinder> editor = new GamepadDefinder;
        std::optional<BlockedFile> blocked;
        const Answer<QMessageBox> box(openDialog, [&](QMessageBox *) {
            blocked.reset(); // so that the destructor's own save has no box of its own
            remove(editor, removal);
        });

        const QJsonObject document = travellingDocument();
        const QJsonObject toPad = with(document, u"deviceName"_s, u"Pad"_s);
        const QJsonObject failing = with(document, u"imageExt"_s, QString(400, u'p'));
        const QString path = workFile(u"file.velor.json"_s);
        const auto import = [&](const QByteArray &bytes) {
            write(path, bytes);
            const FileChoice file(path);
            editor->actionImport();
        };
        // The file becomes a folder at the moment of the acceptance.
        const auto failToWrite = [&](Command command) {
            const FileChoice file(path, [&](QFileDialog *dialog) {
                connect(dialog, &QFileDialog::accepted, this, [&] { QDir().mkpath(path); });
            });
            (editor->*command)();
        };

        if (door == "copy"_L1) {
            editor->actionCopy();
        } else if (door == "export"_L1) {
            const FileChoice file(path);
            editor->actionExport();
        } else if (door == "export failure"_L1) {
            failToWrite(&GamepadDefinder::actionExport);
        } else if (door == "import"_L1) {
            import(textOf(toPad));
        } else if (door == "import file"_L1) {
            import("{");
        } else if (door == "import failure"_L1) {
            import(textOf(failing)); // under the first of two boxes
        } else if (door == "paste"_L1) {
            hold(textOf(toPad));
            editor->actionPaste();
        } else if (door == "paste type"_L1) {
            hold("{}");
            editor->actionPaste();
        } else if (door == "paste text"_L1) {
            QGuiApplication::clipboard()->setText(u"words"_s);
            editor->actionPaste();
        } else if (door == "paste nothing"_L1) {
            QGuiApplication::clipboard()->clear();
            editor->actionPaste();
        } else if (door == "paste failure"_L1) {
            hold(textOf(failing));
            editor->actionPaste();
        } else if (door == "snapshot failure"_L1) {
            failToWrite(&GamepadDefinder::actionSnapshot);
        } else if (door == "snapshots"_L1) {
            const FileChoice file(workFolder());
            editor->actionSnapshotAll();
        } else {
            addPastille(*editor, u"Neuve"_s);
            blocked.emplace(folder + "/overlay.json"_L1);
            int count = 7;
            QStringList errors;
            QVERIFY(!editor->exportAllSnapshots(workFile(u"out"_s), &count, &errors));
            QCOMPARE(count, 0);
        }
        QCOMPARE(box.given(), 1);
        QVERIFY(!editor);
    }

    void theListMayChangeUnderAFileDialog_data()
    {
        QTest::addColumn<int>("command");
        QTest::newRow("export") << 0;
        QTest::newRow("snapshot") << 1;
    }

    void theListMayChangeUnderAFileDialog()
    {
        QFETCH(const int, command);
        const QString first = store(1, {.name = u"A"_s});
        store(2, {.name = u"B"_s});
        GamepadDefinder editor;
        const FileChoice file(workFile(u"x.png"_s), [&](QFileDialog *) {
            QDir(first).removeRecursively();
            editor.reloadProfiles();
        });
        // What the dialog was opened for is not there any more.
        if (command == 0)
            editor.actionExport();
        else
            editor.actionSnapshot();
        QCOMPARE(file.given(), 1);
        QVERIFY(treeOf(workFolder()).isEmpty());
    }
};

GAMEPAD_TEST_MAIN(TestEditorExchangeLifetime)
#include "tst_editorexchangelifetime.moc"
