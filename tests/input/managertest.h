// SPDX-License-Identifier: MIT
#pragma once

#include "gamepadmanager.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QPointer>

/// The base of tests of the manager: each begins without pads, and with a parent that takes its manager along
/// when the test ends, if it has not gone before.
class ManagerTest : public QObject
{
    Q_OBJECT

protected:
    GamepadManager *manager() { return GamepadManager::instance(m_parent); }

    /// The slots in the manager's list, -1 for a device that has died.
    QList<int> listedSlots()
    {
        QList<int> slots;
        for (const auto &gamepad : manager()->gamepads())
            slots.append(gamepad ? gamepad->deviceId() : -1);
        return slots;
    }

    QPointer<QObject> m_parent;

protected Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
        m_parent = new QObject;
    }
    void cleanup() { delete m_parent; }
};
