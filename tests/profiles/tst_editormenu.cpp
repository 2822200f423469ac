// SPDX-License-Identifier: MIT
// The list's context menu and the editor's keys.
#include "editorstage.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QShortcut>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
// An ellipsis, and an apostrophe, as these texts hold them.
const QString dots = u"\u00e2\u20ac\u00a6"_s;
const QString quote = u"\u00e2\u20ac\u2122"_s;

const QStringList allEntries{
    u"Nouveau"_s + dots,
    u"Importer"_s + dots,
    u"-"_s,
    u"Copier"_s,
    u"Coller"_s,
    u"-"_s,
    u"Renommer"_s + dots,
    u"Dupliquer"_s,
    u"Changer l"_s + quote + u"image"_s + dots,
    u"Exporter"_s + dots,
    u"Snapshot PNG"_s + dots,
    u"Snapshots PNG (tous)"_s,
    u"Supprimer"_s,
};

QPoint middleOf(const GamepadDefinder &editor, int row)
{
    QListWidget &list = listOf(editor);
    list.scrollToItem(list.item(row));
    return QPoint(60, list.visualItemRect(list.item(row)).center().y());
}

QPoint emptyPlace(const GamepadDefinder &editor)
{
    return QPoint(20, listOf(editor).viewport()->height() - 5);
}

/// A person's right click in the list, whose menu `answer` gets.
void rightClick(GamepadDefinder &editor, const QPoint &pos, const std::function<void(QMenu *)> &answer)
{
    const QPoint inWindow = listOf(editor).viewport()->mapTo(&editor, pos);
    QWindow *window = editor.windowHandle();
    bool released = false;
    const auto release = [&] {
        if (!std::exchange(released, true))
            QTest::mouseRelease(window, Qt::RightButton, Qt::NoModifier, inWindow);
    };
    bool came = false;
    const Answer<QMenu> menu(openPopup, [&](QMenu *open) {
        came = true;
        release();
        answer(open);
    });
    QTest::mouseMove(window, QPoint(1, 1));
    QTest::mouseMove(window, inWindow);
    QTest::mousePress(window, Qt::RightButton, Qt::NoModifier, inWindow);
    release();
    QVERIFY(came);
}

void choose(GamepadDefinder &editor, const QPoint &pos, const QString &text)
{
    rightClick(editor, pos, [&](QMenu *menu) {
        const QList<QAction *> actions = menu->actions();
        const auto wanted = std::ranges::find(actions, text, &QAction::text);
        QVERIFY(wanted != actions.end());
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(*wanted).center());
    });
}

QStringList enabledEntries(GamepadDefinder &editor, const QPoint &pos)
{
    QStringList enabled;
    rightClick(editor, pos, [&](QMenu *menu) {
        for (const QAction *action : menu->actions()) {
            if (!action->isSeparator() && action->isEnabled())
                enabled.append(action->text());
        }
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    return enabled;
}

/// Notes the title of the first dialog that opens, and leaves it by Escape.
class DialogTitle
{
public:
    QString take() { return std::exchange(m_title, {}); }

private:
    QString m_title;
    Answer<QDialog> m_answer{openDialog, [this](QDialog *dialog) {
                                 m_title = dialog->windowTitle();
                                 QTest::keyClick(dialog, Qt::Key_Escape);
                             }};
};
} // namespace

class TestEditorMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init()
    {
        startAfresh();
        QGuiApplication::clipboard()->clear();
    }

    void entriesStandInTheirOrder()
    {
        store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QStringList entries;
        QPoint at;
        rightClick(editor, middleOf(editor, 0), [&](QMenu *menu) {
            at = menu->pos();
            for (const QAction *action : menu->actions())
                entries.append(action->isSeparator() ? u"-"_s : action->text());
            QTest::keyClick(menu, Qt::Key_Escape);
        });
        QCOMPARE(entries, allEntries);
        QCOMPARE(at, listOf(editor).viewport()->mapToGlobal(middleOf(editor, 0)));
    }

    void onARowEverythingCanBeChosen()
    {
        store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QStringList all = allEntries;
        all.removeAll(u"-"_s);
        QCOMPARE(enabledEntries(editor, middleOf(editor, 0)), all);
    }

    void onNoRowWhatNeedsOneCannotBeChosen()
    {
        store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QCOMPARE(enabledEntries(editor, emptyPlace(editor)),
                 (QStringList{allEntries.at(0), allEntries.at(1), u"Coller"_s, u"Snapshots PNG (tous)"_s}));
    }

    void withoutProfilesThereAreNoSnapshots()
    {
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QCOMPARE(enabledEntries(editor, emptyPlace(editor)),
                 (QStringList{allEntries.at(0), allEntries.at(1), u"Coller"_s}));
    }

    void anEntryOpensItsDialogOnTheRowUnderThePointer_data()
    {
        QTest::addColumn<int>("entry");
        QTest::addColumn<QString>("title");
        QTest::newRow("new") << 0 << u"Nouveau gamepad"_s;
        QTest::newRow("import") << 1 << u"Importer un gamepad"_s;
        QTest::newRow("paste") << 4 << u"Coller"_s;
        QTest::newRow("rename") << 6 << u"Renommer"_s;
        QTest::newRow("picture") << 8 << u"Choisir une nouvelle image"_s;
        QTest::newRow("export") << 9 << u"Exporter le gamepad"_s;
        QTest::newRow("snapshot") << 10 << u"Exporter snapshot PNG"_s;
        QTest::newRow("snapshots") << 11 << u"Choisir un dossier pour les snapshots"_s;
        QTest::newRow("delete") << 12 << u"Supprimer"_s;
    }
    void anEntryOpensItsDialogOnTheRowUnderThePointer()
    {
        QFETCH(int, entry);
        QFETCH(QString, title);
        store(1);
        store(2);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        DialogTitle dialog;
        choose(editor, middleOf(editor, 1), allEntries.at(entry));
        QCOMPARE(dialog.take(), title);
        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(editor.entries().size(), 2);
    }

    void anEntrySelectsTheRowThatTheMenuWasAskedFor()
    {
        store(1, {.name = u"Un"_s});
        store(2, {.name = u"Deux"_s});
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QString proposed;
        const Answer<QInputDialog> dialog(openDialog, [&](QInputDialog *open) {
            proposed = open->textValue();
            QTest::keyClick(open, Qt::Key_Escape);
        });
        const QPoint place = middleOf(editor, 1);
        const Answer<QMenu> menu(openPopup, [&](QMenu *open) {
            QCOMPARE(editor.currentRow(), 0);
            QTest::mouseClick(open, Qt::LeftButton, Qt::NoModifier,
                              open->actionGeometry(open->actions().at(6)).center());
        });
        editor.showListContextMenu(place);
        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(proposed, u"Deux"_s);
    }

    void copyAndDuplicateWorkOnTheRowUnderThePointer()
    {
        store(1, {.name = u"Un"_s});
        store(2, {.name = u"Deux"_s});
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        choose(editor, middleOf(editor, 1), u"Copier"_s);
        const QByteArray copied =
            QGuiApplication::clipboard()->mimeData()->data(u"application/x-velor-gamepad"_s);
        QCOMPARE(QJsonDocument::fromJson(copied)["name"_L1].toString(), u"Deux"_s);
        choose(editor, middleOf(editor, 1), u"Dupliquer"_s);
        QCOMPARE(editor.entries().size(), 3);
        QCOMPARE(editor.entries().at(2).name, u"Deux (copie)"_s);
        QCOMPARE(editor.currentRow(), 2);
    }

    void aRowThatCannotBeShownIsNotWorkedOn()
    {
        const QString first = store(1);
        store(2);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        addPastille(editor, u"Neuve"_s);
        saveTimerOf(editor).stop();
        const BlockedFile blocked(first + "/overlay.json"_L1);
        Boxes boxes;
        const QPoint place = middleOf(editor, 1);
        const Answer<QMenu> menu(openPopup, [&](QMenu *open) {
            QTest::mouseClick(open, Qt::LeftButton, Qt::NoModifier,
                              open->actionGeometry(open->actions().at(7)).center());
        });
        editor.showListContextMenu(place);
        QCOMPARE(menu.given(), 1);
        QCOMPARE(boxes.take().size(), 1);
        QCOMPARE(editor.currentRow(), 0);
        QCOMPARE(editor.entries().size(), 2);
    }

    void anEntryFindsItsProfileWhereTheRowsHaveChanged_data()
    {
        QTest::addColumn<int>("gone");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<int>("currentRow");
        QTest::newRow("the profile itself") << 1 << QStringList{u"Un"_s, u"Trois"_s} << 0;
        QTest::newRow("one above it") << 0 << QStringList{u"Deux"_s, u"Trois"_s, u"Deux (copie)"_s} << 2;
    }
    void anEntryFindsItsProfileWhereTheRowsHaveChanged()
    {
        QFETCH(int, gone);
        const QStringList folders{store(1, {.name = u"Un"_s}), store(2, {.name = u"Deux"_s}),
                                  store(3, {.name = u"Trois"_s})};
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        const Answer<QMenu> menu(openPopup, [&](QMenu *open) {
            QVERIFY(QDir(folders.at(gone)).removeRecursively());
            editor.reloadProfiles();
            QAction *duplicate = open->actions().at(7);
            QCOMPARE(duplicate->text(), u"Dupliquer"_s);
            QTest::mouseClick(open, Qt::LeftButton, Qt::NoModifier, open->actionGeometry(duplicate).center());
        });
        editor.showListContextMenu(middleOf(editor, 1));
        QCOMPARE(menu.given(), 1);
        QStringList found;
        for (const GamepadEntry &entry : editor.entries())
            found.append(entry.name);
        QTEST(found, "names");
        QTEST(editor.currentRow(), "currentRow");
    }

    void leavingTheMenuDoesNothing()
    {
        store(1);
        store(2);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        const Answer<QMenu> menu(openPopup, [](QMenu *open) { QTest::keyClick(open, Qt::Key_Escape); });
        editor.showListContextMenu(middleOf(editor, 1));
        QCOMPARE(menu.given(), 1);
        QCOMPARE(editor.currentRow(), 0);
        settle();
        QVERIFY(!editor.findChild<QMenu *>());
    }

    void keysAreThoseOfTheWindow()
    {
        const Pads pads;
        const GamepadDefinder editor;
        QStringList keys;
        for (const QShortcut *shortcut : editor.findChildren<QShortcut *>(Qt::FindDirectChildrenOnly)) {
            QCOMPARE(shortcut->context(), Qt::WindowShortcut);
            keys.append(shortcut->key().toString(QKeySequence::PortableText));
        }
        QCOMPARE(keys, (QStringList{u"Ctrl+N"_s, u"Ctrl+S"_s, u"Ctrl+D"_s, u"Del"_s, u"F2"_s, u"Ctrl+C"_s,
                                    u"Ctrl+V"_s, u"Ctrl+E"_s}));
    }

    void aKeyOpensItsDialog_data()
    {
        QTest::addColumn<QKeySequence>("key");
        QTest::addColumn<QString>("title");
        QTest::newRow("new") << QKeySequence(QKeySequence::New) << u"Nouveau gamepad"_s;
        QTest::newRow("delete") << QKeySequence(QKeySequence::Delete) << u"Supprimer"_s;
        QTest::newRow("rename") << QKeySequence(Qt::Key_F2) << u"Renommer"_s;
        QTest::newRow("paste") << QKeySequence(QKeySequence::Paste) << u"Coller"_s;
        QTest::newRow("export") << QKeySequence(Qt::CTRL | Qt::Key_E) << u"Exporter le gamepad"_s;
    }
    void aKeyOpensItsDialog()
    {
        QFETCH(QKeySequence, key);
        QFETCH(QString, title);
        store(1);
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        DialogTitle dialog;
        QTest::keySequence(editor.windowHandle(), key);
        QCOMPARE(dialog.take(), title);
    }

    void keysSaveDuplicateAndCopy()
    {
        const QString folder = store(1, {.name = u"Un"_s});
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QTest::keySequence(editor.windowHandle(), QKeySequence(QKeySequence::Save));
        QVERIFY(!metaIn(folder).contains("createdAt"_L1));
        QTest::keySequence(editor.windowHandle(), QKeySequence(QKeySequence::Copy));
        QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(u"application/x-velor-gamepad"_s));
        QTest::keySequence(editor.windowHandle(), QKeySequence(Qt::CTRL | Qt::Key_D));
        QCOMPARE(editor.entries().size(), 2);
        QCOMPARE(editor.currentRow(), 1);
    }

    void hiddenTheEditorTakesNoKeys()
    {
        const QString folder = store(1);
        const Pads pads;
        QWidget window;
        window.resize(800, 600);
        GamepadDefinder editor(&window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        editor.hide();
        QTest::keySequence(window.windowHandle(), QKeySequence(QKeySequence::Save));
        QVERIFY(metaIn(folder).contains("createdAt"_L1));
        editor.show();
        QTest::keySequence(window.windowHandle(), QKeySequence(QKeySequence::Save));
        QVERIFY(!metaIn(folder).contains("createdAt"_L1));
    }
};

GAMEPAD_TEST_MAIN(TestEditorMenu)
#include "tst_editormenu.moc"
