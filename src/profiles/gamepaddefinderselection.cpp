// SPDX-License-Identifier: MIT
// Which profile is on show, and when what was changed of it goes to disk. Boxes run event loops and signals
// run other people's code: what comes after either asks first whether the editor and the row are still there.
#include "gamepaddefinder.h"

#include "deletionhold.h"
#include "interactiveoverlay.h"
#include "jsonfiles.h"
#include "notice.h"
#include "profileicon.h"

#include <QtCore/QEvent>
#include <QtCore/QSignalBlocker>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QListWidget>

using namespace Qt::StringLiterals;

void GamepadDefinder::onListSelectionChanged(int row)
{
    if (row == m_currentRow)
        return;
    const DeletionHold hold(this); // the list goes on after its signal
    connect(&hold, &DeletionHold::deletionHeld, this, &GamepadDefinder::closeBoxes);
    const QPointer<GamepadDefinder> self = this;
    if (!flush()) {
        if (self)
            returnToCurrentRow();
        return;
    }
    m_currentRow = row;
    if (!isRow(row)) {
        showNothing();
        return;
    }
    loadProfile(row);
    if (self)
        followNextManager();
    if (!self || m_currentRow != row || !isRow(row))
        return;
    const QString deviceName = m_entries.at(row).deviceName;
    selectDeviceInCombo(deviceName);
    bindGamepadByName(deviceName);
    if (self && isLinkOnShow(row, deviceName))
        Q_EMIT deviceSelectionChanged(deviceName);
}

void GamepadDefinder::returnToCurrentRow()
{
    const auto select = [this] {
        const QSignalBlocker blocker(m_listWidget);
        m_listWidget->setCurrentRow(m_currentRow);
    };
    select();
    // A mouse press selects what it hit after it has made it the current row, that is, after this.
    QTimer::singleShot(0, this, [this, select] {
        if (isRow(m_currentRow))
            select();
    });
}

void GamepadDefinder::showNothing()
{
    const QPointer<GamepadDefinder> self = this;
    // The overlay refuses this document, and the former pastilles stay over no picture.
    m_widgetOverlay->fromJson({});
    m_widgetOverlay->setBackgroundPixmap({});
    m_dirty = false;
    selectDeviceInCombo({});
    bindGamepadByName({});
    if (self && !isRow(m_currentRow))
        Q_EMIT deviceSelectionChanged({});
}

bool GamepadDefinder::loadProfile(int row)
{
    if (!isRow(row))
        return false;
    const GamepadEntry entry = m_entries.at(row);
    m_widgetOverlay->setBackgroundPixmap(readPicture(entry.imagePath));
    m_widgetOverlay->setBackgroundScaleMode(OverlayLines::BackgroundScaleMode::Contain);
    m_widgetOverlay->setMode(InteractiveOverlay::Edit);

    const QString title = u"Chargement"_s;
    bool ok = false;
    QString error;
    const QJsonObject overlay = readJsonFile(entry.overlayPath, &ok, &error);
    if (!ok) {
        showNotice(this, QMessageBox::Warning, title,
                   u"Impossible de charger la configuration : %1"_s.arg(error));
        return false;
    }
    // This counts as a change: the overlay is dirty with each pastille that it makes, and the profile is
    // saved a moment later as it was loaded.
    if (!m_widgetOverlay->fromJson(overlay)) {
        showNotice(this, QMessageBox::Warning, title, u"Format de configuration non reconnu."_s);
        return false;
    }
    m_dirty = false;
    Q_EMIT currentGamepadChanged(entry.id, entry.name, entry.deviceName, overlay, entry.imagePath);
    return true;
}

void GamepadDefinder::emitCurrentSelection()
{
    if (!isRow(m_currentRow))
        return;
    const GamepadEntry entry = m_entries.at(m_currentRow);
    bool ok = false;
    const QJsonObject overlay = readJsonFile(entry.overlayPath, &ok, nullptr);
    if (!ok)
        return;
    const QPointer<GamepadDefinder> self = this;
    Q_EMIT currentGamepadChanged(entry.id, entry.name, entry.deviceName, overlay, entry.imagePath);
    if (self)
        Q_EMIT deviceSelectionChanged(entry.deviceName);
}

void GamepadDefinder::onOverlayDirty()
{
    m_dirty = true;
    if (isRow(m_currentRow))
        m_saveTimer.start();
}

bool GamepadDefinder::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_widgetOverlay) {
        switch (event->type()) {
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Wheel:
            m_dirty = true;
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool GamepadDefinder::flush()
{
    return !isRow(m_currentRow) || !m_dirty || saveProfile(m_currentRow);
}

void GamepadDefinder::closeEvent(QCloseEvent *event)
{
    const QPointer<GamepadDefinder> self = this;
    const bool saved = flush();
    if (!self)
        return;
    if (saved)
        QWidget::closeEvent(event);
    else
        event->ignore();
}

void GamepadDefinder::actionSave()
{
    if (m_currentRow >= 0)
        saveProfile(m_currentRow);
}

void GamepadDefinder::actionDuplicate()
{
    if (m_currentRow < 0)
        return;
    const QPointer<GamepadDefinder> self = this;
    int newRow = -1;
    duplicateProfile(m_currentRow, &newRow);
    if (self && newRow >= 0 && newRow < m_listWidget->count())
        m_listWidget->setCurrentRow(newRow);
}
