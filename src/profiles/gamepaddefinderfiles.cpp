// SPDX-License-Identifier: MIT
// The operations on profiles that write to disk, with their dialogs. Each dialog and box runs an event loop:
// what comes after it asks first whether the editor and the profile are still there.
#include "gamepaddefinder.h"

#include "firstoverlay.h"
#include "interactiveoverlay.h"
#include "notice.h"
#include "profileicon.h"
#include "profilestore.h"
#include "storenotices.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QListWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
QString pictureFilter()
{
    return u"Images (*.png *.jpg *.jpeg *.bmp)"_s;
}

void tell(QWidget *parent, const StoreNotice &notice)
{
    showNotice(parent, notice.icon, notice.title, notice.text);
}

/// False after the box that tells of the failure.
bool isDone(QWidget *parent, const StoreResult &result)
{
    if (result)
        tell(parent, noticeOf(*result));
    return !result;
}
} // namespace

int GamepadDefinder::rowOf(const QString &folder) const
{
    const auto found = std::ranges::find(m_entries, folder, &GamepadEntry::dirPath);
    return found == m_entries.end() ? -1 : static_cast<int>(found - m_entries.begin());
}

QString GamepadDefinder::gamepadsRootPath()
{
    if (m_rootPath.isEmpty())
        m_rootPath = makeProfilesRoot();
    return m_rootPath;
}

void GamepadDefinder::reloadProfiles()
{
    const QPointer<GamepadDefinder> self = this;
    flush();
    if (!self)
        return;
    m_entries.clear();
    m_listWidget->clear();
    m_icons = ProfileIcons(iconSize);
    const QStringList folders = profileFolders(gamepadsRootPath());
    for (const QString &folder : folders) {
        GamepadEntry entry;
        if (loadEntryFromDir(folder, &entry))
            appendEntry(entry);
    }
    if (!m_entries.isEmpty())
        m_listWidget->setCurrentRow(0);
}

bool GamepadDefinder::saveProfile(int row)
{
    if (!isRow(row) || !isDone(this, saveProfileFiles(m_entries.at(row), m_widgetOverlay->toJsonBytes(true))))
        return false;
    m_dirty = false;
    return true;
}

void GamepadDefinder::actionNew()
{
    createProfile();
}

void GamepadDefinder::createProfile()
{
    const QPointer<GamepadDefinder> self = this;
    NewProfile profile;
    bool accepted = false;
    profile.name = QInputDialog::getText(this, u"Nouveau gamepad"_s, u"Nom du gamepad :"_s, QLineEdit::Normal,
                                         u"Gamepad"_s, &accepted);
    if (!self || !accepted)
        return;
    profile.picture =
        QFileDialog::getOpenFileName(this, u"Choisir lâ€™image du gamepad"_s, {}, pictureFilter());
    if (!self || profile.picture.isEmpty())
        return;
    profile.deviceName = chooseFreeDevice();
    if (!self)
        return;
    if (isDeviceNameTaken(profile.deviceName, -1)) {
        tell(this, deviceTakenNotice());
        if (!self)
            return;
        profile.deviceName.clear();
    }

    profile.overlay = firstOverlay(m_widgetOverlay->size());
    QString folder;
    if (!isDone(this, createProfileFiles(gamepadsRootPath(), profile, &folder)))
        return;
    GamepadEntry entry;
    if (!loadEntryFromDir(folder, &entry))
        return;
    appendEntry(entry);
    m_listWidget->setCurrentRow(m_listWidget->count() - 1);
    if (!self || profile.deviceName.isEmpty())
        return;
    // Where the profile on show cannot be saved, it stays on show, and so does its own gamepad.
    if (isOnShow(folder))
        selectDeviceInCombo(profile.deviceName);
    if (const int row = rowOf(folder); isRow(row))
        refreshItem(m_entries.at(row));
}

bool GamepadDefinder::duplicateProfile(int row, int *newRow)
{
    if (!isRow(row))
        return false;
    QString folder;
    if (!isDone(this, duplicateProfileFiles(gamepadsRootPath(), m_entries.at(row), &folder)))
        return false;
    GamepadEntry entry;
    if (!loadEntryFromDir(folder, &entry))
        return false;
    appendEntry(entry);
    *newRow = static_cast<int>(m_entries.size()) - 1;
    return true;
}

void GamepadDefinder::actionRename()
{
    if (!isRow(m_currentRow))
        return;
    const QPointer<GamepadDefinder> self = this;
    const GamepadEntry before = m_entries.at(m_currentRow);
    bool accepted = false;
    const QString name = QInputDialog::getText(this, u"Renommer"_s, u"Nouveau nom :"_s, QLineEdit::Normal,
                                               before.name, &accepted)
                             .trimmed();
    if (!self || !accepted || name.isEmpty())
        return;
    const int row = rowOf(before.dirPath);
    if (!isRow(row))
        return;
    m_entries[row].name = name;
    if (isDone(this, saveRenamedProfile(m_entries.at(row))))
        refreshItem(m_entries.at(row));
}

void GamepadDefinder::actionChangeImage()
{
    if (!isRow(m_currentRow))
        return;
    const QPointer<GamepadDefinder> self = this;
    const QString folder = m_entries.at(m_currentRow).dirPath;
    const QString picture =
        QFileDialog::getOpenFileName(this, u"Choisir une nouvelle image"_s, {}, pictureFilter());
    if (!self || picture.isEmpty())
        return;
    const int row = rowOf(folder);
    QString imagePath;
    if (!isRow(row) || !isDone(this, copyProfilePicture(m_entries.at(row), picture, &imagePath)))
        return;
    m_icons.forget(m_entries.at(row).imagePath);
    m_icons.forget(imagePath);
    m_entries[row].imagePath = imagePath;
    refreshItem(m_entries.at(row));
    if (row == m_currentRow)
        m_widgetOverlay->setBackgroundPixmap(readPicture(imagePath));
    isDone(this, saveChangedPicture(m_entries.at(row)));
}

void GamepadDefinder::actionDelete()
{
    if (!isRow(m_currentRow))
        return;
    const QPointer<GamepadDefinder> self = this;
    const GamepadEntry doomed = m_entries.at(m_currentRow);
    if (!confirmed(this, u"Supprimer"_s, u"Supprimer Â« %1 Â» ?"_s.arg(doomed.name)) || !self)
        return;
    const bool wasOnShow = isOnShow(doomed.dirPath);
    leaveRow(rowOf(doomed.dirPath));
    if (!self)
        return;
    if (const int row = rowOf(doomed.dirPath); isRow(row))
        removeRow(row, wasOnShow);
}

void GamepadDefinder::leaveRow(int row)
{
    if (!isRow(row) || m_listWidget->currentRow() != row)
        return;
    const bool isBottom = row == m_listWidget->count() - 1;
    // The list would do the same from inside the removal, and a box of a save or a load that fails must not
    // run its event loop there. A save that fails keeps the row.
    m_listWidget->setCurrentRow(isBottom ? row - 1 : row + 1);
}

void GamepadDefinder::removeRow(int row, bool wasOnShow)
{
    const int shown = m_currentRow;
    const bool couldNotLeave = shown == row; // since it could not be saved
    const bool isBottom = row == m_listWidget->count() - 1;
    {
        const QSignalBlocker blocker(m_listWidget);
        delete m_listWidget->takeItem(row);
        if (couldNotLeave)
            m_listWidget->setCurrentRow(-1);
    }
    m_icons.forget(m_entries.at(row).imagePath);
    removeProfileFolder(m_entries.at(row).dirPath);
    m_entries.removeAt(row);
    m_currentRow = -1; // what went must not be saved
    if (couldNotLeave) {
        const int next = std::min(row, static_cast<int>(m_entries.size()) - 1);
        if (next < 0)
            showNothing();
        else
            m_listWidget->setCurrentRow(next);
        return;
    }
    // The list stands there already. Where the bottom row was on show, nothing is current until a row is
    // chosen.
    if (!wasOnShow || !isBottom)
        m_currentRow = shown > row ? shown - 1 : shown;
}
