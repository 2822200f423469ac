// SPDX-License-Identifier: MIT
// The armed action, the gamepad whose next input it waits for, and the clicks that disarm it.
#include "actionlinker.h"

#include "actionspanel.h"
#include "casekey.h"
#include "gamepadmanager.h"
#include "inputcapture.h"
#include "inputkeys.h"
#include "interactiveoverlay.h"

#include <QtCore/QEvent>

void ActionLinker::onInputButtonChanged(int button, bool pressed)
{
    if (pressed)
        takeInput(buttonKey(button));
}

void ActionLinker::onInputAxisChanged(int axis, double value)
{
    if (isMeant(value))
        takeInput(axisKey(axis));
}

void ActionLinker::takeInput(const QString &key)
{
    const QString action = m_actionsPanel->armedAction();
    if (action.isEmpty())
        return;
    m_overlay->applyActionToTitle(action, key);
    m_actionsPanel->clearArmedAction();
}

bool ActionLinker::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        const auto *widget = static_cast<QWidget *>(watched);
        const bool isHere = widget == this || isAncestorOf(widget);
        if (isHere && !m_actionsPanel->armedAction().isEmpty() && !m_actionsPanel->isOnList(widget))
            m_actionsPanel->clearArmedAction();
    }
    return QWidget::eventFilter(watched, event);
}

void ActionLinker::onDeviceSelectionChanged(const QString &deviceName)
{
    m_deviceName = deviceName;
    followManager();
    followDevice();
}

void ActionLinker::followManager()
{
    GamepadManager *manager = GamepadManager::instance();
    if (manager == m_manager)
        return;
    m_manager = manager;
    connect(manager, &GamepadManager::gamepadsChanged, this, &ActionLinker::followDevice);
}

void ActionLinker::followDevice()
{
    updatePanelVisibility();
    rebindInputDevice();
}

ControlManette *ActionLinker::findDevice(const QString &name) const
{
    // Not the process's manager of this moment: this also runs while one is being destroyed, and asking for
    // it then would make the next.
    const QList<QPointer<ControlManette>> devices =
        m_manager ? m_manager->gamepads() : GamepadManager::Gamepads();
    for (const QPointer<ControlManette> &device : devices) {
        if (device && equalWithoutCase(device->name(), name))
            return device;
    }
    return nullptr;
}

bool ActionLinker::isDeviceConnected() const
{
    // There are gamepads whose own name ends in blanks.
    const QString name = m_deviceName.trimmed();
    return !name.isEmpty() && (findDevice(name) || findDevice(m_deviceName));
}

void ActionLinker::updatePanelVisibility()
{
    const bool connected = isDeviceConnected();
    m_actionsPanel->setVisible(connected);
    if (!connected)
        m_actionsPanel->clearArmedAction();
}

void ActionLinker::rebindInputDevice()
{
    ControlManette *device = isDeviceConnected() ? findDevice(m_deviceName) : nullptr;
    if (device && device == m_inputDevice)
        return;
    unbindInputDevice();
    if (!device)
        return;
    m_inputDevice = device;
    m_inputConnections = {
        connect(device, &ControlManette::buttonChanged, this, &ActionLinker::onInputButtonChanged),
        connect(device, &ControlManette::axisChanged, this, &ActionLinker::onInputAxisChanged),
        connect(device, &QObject::destroyed, this,
                [this] {
                    unbindInputDevice();
                    updatePanelVisibility();
                }),
    };
}

void ActionLinker::unbindInputDevice()
{
    for (QMetaObject::Connection &connection : m_inputConnections) {
        if (connection)
            disconnect(connection);
        connection = {};
    }
    m_inputDevice = nullptr;
}
