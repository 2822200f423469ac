// SPDX-License-Identifier: MIT
#include "gamepaddefinder.h"

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtGui/QShortcut>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>

#include <array>

using namespace Qt::StringLiterals;

namespace
{
/// When an entry can be chosen. What needs a row works on it, so the row is selected first.
enum class Needs { Nothing, Row, Profiles };

struct MenuEntry
{
    QStringView text; ///< empty: a separator
    Needs needs = Needs::Nothing;
    void (GamepadDefinder::*action)() = nullptr;
};

using enum Needs;
constexpr std::array menuEntries{
    MenuEntry{u"Nouveauâ€¦", Nothing, &GamepadDefinder::actionNew},
    MenuEntry{u"Importerâ€¦", Nothing, &GamepadDefinder::actionImport},
    MenuEntry{},
    MenuEntry{u"Copier", Row, &GamepadDefinder::actionCopy},
    MenuEntry{u"Coller", Nothing, &GamepadDefinder::actionPaste},
    MenuEntry{},
    MenuEntry{u"Renommerâ€¦", Row, &GamepadDefinder::actionRename},
    MenuEntry{u"Dupliquer", Row, &GamepadDefinder::actionDuplicate},
    MenuEntry{u"Changer lâ€™imageâ€¦", Row, &GamepadDefinder::actionChangeImage},
    MenuEntry{u"Exporterâ€¦", Row, &GamepadDefinder::actionExport},
    MenuEntry{u"Snapshot PNGâ€¦", Row, &GamepadDefinder::actionSnapshot},
    MenuEntry{u"Snapshots PNG (tous)", Profiles, &GamepadDefinder::actionSnapshotAll},
    MenuEntry{u"Supprimer", Row, &GamepadDefinder::actionDelete},
};
} // namespace

void GamepadDefinder::setUpShortcuts()
{
    // The first binding alone: of those for Delete, X11's second is Ctrl+D, which is Duplicate's.
    const auto add = [this](const QKeySequence &keys, void (GamepadDefinder::*action)()) {
        auto *shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WindowShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    add(QKeySequence::New, &GamepadDefinder::actionNew);
    add(QKeySequence::Save, &GamepadDefinder::actionSave);
    add(QKeySequence(Qt::CTRL | Qt::Key_D), &GamepadDefinder::actionDuplicate);
    add(QKeySequence::Delete, &GamepadDefinder::actionDelete);
    add(QKeySequence(Qt::Key_F2), &GamepadDefinder::actionRename);
    add(QKeySequence::Copy, &GamepadDefinder::actionCopy);
    add(QKeySequence::Paste, &GamepadDefinder::actionPaste);
    add(QKeySequence(Qt::CTRL | Qt::Key_E), &GamepadDefinder::actionExport);
}

void GamepadDefinder::showListContextMenu(const QPoint &pos)
{
    const int pointed = m_listWidget->indexAt(pos).row();
    const QString folder = isRow(pointed) ? m_entries.at(pointed).dirPath : QString();
    // On the heap, since the editor can go while its menu is open and takes the menu with it.
    const QPointer<QMenu> menu = new QMenu(this);
    QHash<const QAction *, const MenuEntry *> entries;
    for (const MenuEntry &entry : menuEntries) {
        if (!entry.action) {
            menu->addSeparator();
            continue;
        }
        QAction *action = menu->addAction(entry.text.toString());
        action->setEnabled(entry.needs == Nothing || (entry.needs == Row && pointed >= 0) ||
                           (entry.needs == Profiles && !m_entries.isEmpty()));
        entries.insert(action, &entry);
    }

    const QAction *chosen = menu->exec(m_listWidget->viewport()->mapToGlobal(pos));
    if (!menu)
        return;
    menu->deleteLater();
    const MenuEntry *entry = entries.value(chosen);
    if (!entry)
        return;
    if (entry->needs == Row) {
        // Under the menu the rows may have changed.
        const int row = rowOf(folder);
        if (!isRow(row))
            return;
        const QPointer<GamepadDefinder> self = this;
        m_listWidget->setCurrentRow(row);
        // Where the profile on show cannot be saved, it stays on show, and is not what the menu was opened
        // on.
        if (!self || m_listWidget->currentRow() != row)
            return;
    }
    (this->*entry->action)();
}

void GamepadDefinder::on_pushButtonAdd_clicked()
{
    actionNew();
}
