// SPDX-License-Identifier: MIT
// The editor may be deleted under each dialog and box of the operations on files.
#include "dialogs.h"
#include "editorfilestest.h"
#include "editorstage.h"
#include "exchangefiles.h"
#include "testmain.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
using Operation = void (GamepadDefinder::*)();
} // namespace

class TestEditorFilesLifetime : public EditorFilesTest
{
    Q_OBJECT

private Q_SLOTS:
    void theEditorMayGoUnderADialog_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QList<Dialogs::Answer>>("answers"); // of the dialogs before
        QTest::addColumn<bool>("blocked");                   // meta.json cannot be written
        QTest::addColumn<bool>("linked");                    // a gamepad is live, taken in another case
        const QList<Dialogs::Answer> none;
        const auto name = Dialogs::type(u"x"_s);
        const auto file = [](QWidget *dialog) { Dialogs::choose(picture())(dialog); };
        const auto taken = Dialogs::pick(u"Pad"_s);
        const auto row = [](const char *what, Operation operation, const QList<Dialogs::Answer> &answers,
                            bool blocked = false, bool linked = false) {
            QTest::newRow(what) << operation << answers << blocked << linked;
        };
        row("create, name", &GamepadDefinder::actionNew, none);
        row("create, picture", &GamepadDefinder::actionNew, {name});
        row("create, no free gamepad", &GamepadDefinder::actionNew, {name, file});
        row("create, gamepad", &GamepadDefinder::actionNew, {name, file}, false, true);
        row("create, gamepad taken", &GamepadDefinder::actionNew, {name, file, taken}, false, true);
        row("rename", &GamepadDefinder::actionRename, none);
        row("rename fails", &GamepadDefinder::actionRename, {name}, true);
        row("image", &GamepadDefinder::actionChangeImage, none);
        row("image fails", &GamepadDefinder::actionChangeImage, {file}, true);
        row("save fails", &GamepadDefinder::actionSave, none, true);
        row("delete", &GamepadDefinder::actionDelete, none);
    }

    void theEditorMayGoUnderADialog()
    {
        QFETCH(const Operation, operation);
        QFETCH(QList<Dialogs::Answer>, answers);
        QFETCH(const bool, blocked);
        QFETCH(const bool, linked);
        const QString folder = stage::store(1, {.deviceName = u"PAD"_s});
        std::unique_ptr<stage::BlockedFile> block;
        if (linked)
            pads().plug(0, u"Pad"_s);
        auto *editor = new GamepadDefinder;
        const QPointer<GamepadDefinder> watched = editor;
        if (blocked)
            block = std::make_unique<stage::BlockedFile>(folder + "/meta.json"_L1);
        answers.append(Dialogs::after([editor] { delete editor; }, Dialogs::escape()));
        const qsizetype expected = answers.size();
        Dialogs dialogs(std::move(answers));
        (editor->*operation)();
        QVERIFY(!watched);
        QCOMPARE(dialogs.answersLeft(), 0);
        QCOMPARE(dialogs.take().size(), expected);
        QVERIFY(QDir(folder).exists());
    }

    // Below the list's own signal the host has to ask for the deletion.
    void theEditorMayGoUnderTheBoxesOfADeletion_data()
    {
        QTest::addColumn<bool>("saveFails");
        QTest::newRow("save") << true;
        QTest::newRow("load") << false;
    }

    void theEditorMayGoUnderTheBoxesOfADeletion()
    {
        QFETCH(const bool, saveFails);
        const QString first = stage::store(1);
        const QString second = stage::store(2);
        auto *editor = new GamepadDefinder;
        const QPointer<GamepadDefinder> watched = editor;
        if (saveFails)
            stage::addPastille(*editor, u"unsaved"_s);
        const QString overlay = (saveFails ? first : second) + "/overlay.json"_L1;
        QVERIFY(QFile::remove(overlay) && QDir().mkdir(overlay));
        Dialogs dialogs({Dialogs::click(QMessageBox::Yes),
                         Dialogs::after([editor] { editor->deleteLater(); }, Dialogs::ok())});
        editor->actionDelete();
        QTRY_VERIFY(!watched);
        QVERIFY(dialogs.take().size() >= 2);
        QVERIFY(!QDir(first).exists()); // the answer stands
        QVERIFY(QDir(second).exists());
    }
};

GAMEPAD_TEST_MAIN(TestEditorFilesLifetime)
#include "tst_editorfileslifetime.moc"
