// SPDX-License-Identifier: MIT
// The gamepads that are connected, and the link of a profile to one of them by its name. Boxes run event
// loops, and starting or stopping a gamepad runs other people's code: what comes after either asks first
// whether the editor is still there.
#include "gamepaddefinder.h"

#include "casekey.h"
#include "deletionhold.h"
#include "gamepadmanager.h"
#include "notice.h"

#include <QtCore/QMetaProperty>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QInputDialog>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
QStringList sortedWithoutCase(QStringList names)
{
    std::ranges::stable_sort(
        names, [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    return names;
}

QStringList namesOf(const GamepadDefinder::Gamepads &gamepads)
{
    QStringList names;
    for (const auto &gamepad : gamepads) {
        if (gamepad)
            names.append(gamepad->name());
    }
    names.removeDuplicates();
    return names;
}

QStringList textsOf(const QComboBox &combo)
{
    QStringList texts;
    for (int i = 0; i < combo.count(); ++i)
        texts.append(combo.itemText(i));
    return texts;
}
} // namespace

void GamepadDefinder::takeGamepads()
{
    GamepadManager *manager = GamepadManager::instance();
    // Not by `setProperty`, whose inline body calls what no Qt before 6.10 exports.
    const QMetaProperty list = metaObject()->property(metaObject()->indexOfProperty("realGamepads"));
    const auto take = [this, manager, list] { list.write(this, manager->property("gamepads")); };
    connect(manager, &GamepadManager::gamepadsChanged, this, take);
    // No next manager is made by that: it may be the end of the application.
    connect(manager, &QObject::destroyed, this, [this] {
        m_managerDied = true;
        setRealGamepads({});
    });
    take();
}

/// For a step that looks for gamepads. May run an event loop, as each change of the gamepads may.
void GamepadDefinder::followNextManager()
{
    if (std::exchange(m_managerDied, false))
        takeGamepads();
}

void GamepadDefinder::setRealGamepads(const Gamepads &gamepads)
{
    if (gamepads == m_realGamepads)
        return;
    const QPointer<GamepadDefinder> self = this;
    // A copy, as the list may be the caller's own and change with the listeners.
    const Gamepads applied(gamepads.begin(), gamepads.end());
    m_realGamepads = applied;
    Q_EMIT realGamepadsChanged();
    // A listener may have changed the list again, and that one is applied by now.
    if (self && m_realGamepads == applied)
        onRealGamepadsApplied(applied);
}

void GamepadDefinder::onRealGamepadsApplied(const Gamepads &gamepads)
{
    rebuildDeviceCombo(gamepads);
    rebuildLiveNames(gamepads);
    for (const GamepadEntry &entry : std::as_const(m_entries))
        refreshItem(entry);
    checkCoverage();
}

void GamepadDefinder::rebuildDeviceCombo(const Gamepads &gamepads)
{
    const QStringList names = sortedWithoutCase(namesOf(gamepads));
    if (names == textsOf(*m_comboBoxVendorId))
        return;
    const QString shown = m_comboBoxVendorId->currentText();
    const QSignalBlocker blocker(m_comboBoxVendorId);
    m_comboBoxVendorId->setUpdatesEnabled(false);
    m_comboBoxVendorId->clear();
    m_comboBoxVendorId->insertItems(0, names);
    m_comboBoxVendorId->setUpdatesEnabled(true);

    int index = m_comboBoxVendorId->findData(shown, Qt::DisplayRole);
    if (index < 0 && isRow(m_currentRow))
        index = m_comboBoxVendorId->findData(m_entries.at(m_currentRow).deviceName, Qt::DisplayRole);
    m_comboBoxVendorId->setCurrentIndex(index);
}

void GamepadDefinder::rebuildLiveNames(const Gamepads &gamepads)
{
    const QStringList names = namesOf(gamepads);
    m_liveNames = QSet<QString>(names.cbegin(), names.cend());
}

void GamepadDefinder::checkCoverage()
{
    if (m_coverageNoticeShown || m_liveNames.isEmpty() || !isVisible())
        return;
    QSet<QString> linked;
    for (const GamepadEntry &entry : std::as_const(m_entries)) {
        if (!entry.deviceName.isEmpty())
            linked.insert(entry.deviceName);
    }
    if (!linked.contains(m_liveNames))
        return;
    m_coverageNoticeShown = true;
    showNotice(this, QMessageBox::Information, u"Couverture complÃ¨te"_s,
               u"Toutes les manettes actuellement connectÃ©es sont dÃ©jÃ  associÃ©es Ã  des profils."_s);
}

QString GamepadDefinder::chooseFreeDevice()
{
    const QString title = u"Association manette"_s;
    const QPointer<GamepadDefinder> self = this;
    followNextManager();
    if (!self)
        return {};
    QSet<QString> free = m_liveNames;
    for (const GamepadEntry &entry : std::as_const(m_entries))
        free.remove(entry.deviceName);
    if (free.isEmpty()) {
        showNotice(nullptr, QMessageBox::Information, title,
                   u"Toutes les manettes connectÃ©es sont dÃ©jÃ  associÃ©es.\n"
                   u"Vous pouvez crÃ©er un profil sans liaison et lâ€™associer plus tard."_s);
        return {};
    }
    QStringList names = free.values();
    names.sort();
    bool accepted = false;
    const QString chosen = QInputDialog::getItem(nullptr, title, u"Choisir la manette Ã  lier :"_s,
                                                 sortedWithoutCase(names), 0, false, &accepted);
    return accepted ? chosen : QString();
}

bool GamepadDefinder::isDeviceNameTaken(const QString &name, int exceptRow) const
{
    if (name.isEmpty())
        return false;
    for (int row = 0; row < m_entries.size(); ++row) {
        if (row != exceptRow && equalWithoutCase(m_entries.at(row).deviceName, name))
            return true;
    }
    return false;
}

void GamepadDefinder::selectDeviceInCombo(const QString &name)
{
    const QSignalBlocker blocker(m_comboBoxVendorId);
    m_comboBoxVendorId->setCurrentIndex(m_comboBoxVendorId->findData(name, Qt::DisplayRole));
}

void GamepadDefinder::onDeviceComboChanged(const QString &deviceName)
{
    const int row = m_currentRow;
    if (!isRow(row))
        return;
    const DeletionHold hold(this); // the combo goes on after its signal
    connect(&hold, &DeletionHold::deletionHeld, this, &GamepadDefinder::closeBoxes);
    const QPointer<GamepadDefinder> self = this;
    if (isDeviceNameTaken(deviceName, row)) {
        showNotice(this, QMessageBox::Warning, u"Association"_s,
                   u"Â« %1 Â» est dÃ©jÃ  associÃ© Ã  un autre profil."_s.arg(deviceName));
        if (self && isRow(m_currentRow))
            selectDeviceInCombo(m_entries.at(m_currentRow).deviceName);
        return;
    }
    if (m_entries.at(row).deviceName == deviceName)
        return;
    m_entries[row].deviceName = deviceName;
    refreshItem(m_entries.at(row));
    saveProfile(row);
    if (self)
        followNextManager();
    if (!self || !isLinkOnShow(row, deviceName))
        return;
    bindGamepadByName(deviceName);
    if (self && isLinkOnShow(row, deviceName))
        Q_EMIT deviceSelectionChanged(deviceName);
}

/// Asked after other people's code ran, which may have chosen another row or link.
bool GamepadDefinder::isLinkOnShow(int row, const QString &deviceName) const
{
    return row == m_currentRow && isRow(row) && m_entries.at(row).deviceName == deviceName;
}

ControlManette *GamepadDefinder::findGamepadByName(const QString &name) const
{
    const auto found = std::ranges::find_if(m_realGamepads, [&name](const auto &gamepad) {
        return gamepad && equalWithoutCase(gamepad->name(), name);
    });
    return found == m_realGamepads.cend() ? nullptr : found->data();
}

void GamepadDefinder::bindGamepadByName(const QString &name)
{
    m_wantedGamepad = !name.isEmpty() && m_liveNames.contains(name) ? findGamepadByName(name) : nullptr;
    if (m_wantedGamepad)
        bindGamepad(m_wantedGamepad);
    else
        unbindGamepad();
}

void GamepadDefinder::bindGamepad(ControlManette *gamepad)
{
    if (gamepad == m_boundGamepad)
        return;
    const QPointer<GamepadDefinder> self = this;
    const QPointer<ControlManette> started = gamepad;
    resetPendingInput();
    gamepad->start(QString());
    if (self && m_wantedGamepad == started && m_boundGamepad != started)
        unbindGamepad();
    if (!self || !started || m_boundGamepad == started)
        return;
    // Both tell the host, which may have chosen another gamepad meanwhile, or none.
    if (m_wantedGamepad != started) {
        started->stop();
        return;
    }
    m_boundGamepad = gamepad;
    m_inputConnections = {
        connect(gamepad, &ControlManette::buttonChanged, this, &GamepadDefinder::onButtonChanged),
        connect(gamepad, &ControlManette::axisChanged, this, &GamepadDefinder::onAxisChanged),
        connect(gamepad, &QObject::destroyed, this, &GamepadDefinder::unbindGamepad),
    };
}

void GamepadDefinder::unbindGamepad()
{
    const QList<QMetaObject::Connection> connections = std::exchange(m_inputConnections, {});
    for (const QMetaObject::Connection &connection : connections)
        disconnect(connection);
    resetPendingInput();
    const QPointer<ControlManette> bound = std::exchange(m_boundGamepad, nullptr);
    if (bound)
        bound->stop();
}
