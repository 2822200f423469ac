// SPDX-License-Identifier: MIT
#pragma once

#include "controlmanette.h"

#include <QtCore/QList>
#include <QtCore/QPointer>

#include <memory>
#include <optional>

namespace sf
{
class Window;
}
class QTimer;

/// Watches the machine's joysticks and keeps one `ControlManette` for each connected SFML slot, 0 to 7.
///
/// A device is created stopped, is a child of the manager, and goes by `deleteLater` when its slot empties.
/// Listeners must take repeated `gamepadsChanged` without harm. Discovery may run again inside its signals.
class GamepadManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(
        QList<QPointer<ControlManette>> gamepads READ gamepads WRITE setGamepads NOTIFY gamepadsChanged)
    Q_PROPERTY(bool autoDetectGamePad READ autoDetectGamePad WRITE setAutoDetectGamePad NOTIFY
                   autoDetectGamePadChanged)

public:
    using Gamepads = QList<QPointer<ControlManette>>;

    /// The manager of this process. The first call makes it as a child of `parent` (null: it lives until the
    /// process ends), discovers once and starts polling; later calls ignore `parent`. Never null; after the
    /// manager has died with its parent, the next call makes a new one.
    static GamepadManager *instance(QObject *parent = nullptr);
    ~GamepadManager() override;

    /// The tracked devices in the order in which they were found. Pointers can be null.
    [[nodiscard]] Gamepads gamepads() const { return m_gamepads; }
    void setGamepads(const Gamepads &gamepads);
    /// Whether the timers run. True at the start.
    [[nodiscard]] bool autoDetectGamePad() const { return m_autoDetectGamePad; }
    void setAutoDetectGamePad(bool autoDetectGamePad);

    /// Discovers at once and, with `autoDetectGamePad`, starts the timers that are idle. A timer that runs
    /// keeps its interval: `ms` counts from its next start.
    void setPollIntervalMs(int ms);
    void stopTimers();

Q_SIGNALS:
    void gamepadsChanged();
    /// The device is in `gamepads` already.
    void gamepadAdded(ControlManette *gamepad);
    /// The device is still in `gamepads` and alive; `gamepadsChanged` follows. -1 where it had died before.
    void gamepadRemoved(int deviceId);
    void autoDetectGamePadChanged();

private Q_SLOTS:
    void poll();
    void discoverDevices();

private:
    explicit GamepadManager(QObject *parent);

    void startTimers();
    void pumpEvents();
    void onAutoDetectChanged();
    [[nodiscard]] bool tracksSlot(int slot) const;
    [[nodiscard]] bool addFound();
    [[nodiscard]] std::optional<Gamepads> announceLost();

    Gamepads m_gamepads;
    bool m_autoDetectGamePad = true;
    bool m_announcingLost = false;
    int m_pollIntervalMs = 100;
    QTimer *m_pollTimer;
    std::unique_ptr<sf::Window> m_pumpWindow; ///< null where SFML can make none
    QTimer *m_pumpTimer;
};
