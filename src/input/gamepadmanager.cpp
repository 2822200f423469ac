// SPDX-License-Identifier: MIT
#include "gamepadmanager.h"

#include "pumpwindow.h"
#include "sfmlslot.h"

#include <QtCore/QScopeGuard>
#include <QtCore/QTimer>

#include <SFML/Window/Window.hpp>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{
constexpr int defaultPollIntervalMs = 100;
constexpr int pumpIntervalMs = 50;
constexpr auto settleTime = 250ms; // a joystick that has just come is not readable at once
} // namespace

GamepadManager *GamepadManager::instance(QObject *parent)
{
    static QPointer<GamepadManager> manager;
    if (!manager) {
        manager = new GamepadManager(parent);
        manager->setPollIntervalMs(defaultPollIntervalMs);
    }
    return manager;
}

GamepadManager::GamepadManager(QObject *parent)
    : QObject(parent)
    , m_pollTimer(new QTimer(this))
    , m_pumpWindow(makePumpWindow())
    , m_pumpTimer(new QTimer(this))
{
    qRegisterMetaType<QPointer<ControlManette>>();
    qRegisterMetaType<Gamepads>();
    m_pollTimer->setObjectName(u"pollTimer"_s);
    m_pumpTimer->setObjectName(u"pumpTimer"_s);
    connect(m_pollTimer, &QTimer::timeout, this, &GamepadManager::poll);
    connect(m_pumpTimer, &QTimer::timeout, this, &GamepadManager::pumpEvents);
    connect(this, &GamepadManager::autoDetectGamePadChanged, this, &GamepadManager::onAutoDetectChanged);
}

// Here, where the window's type is known.
GamepadManager::~GamepadManager() = default;

void GamepadManager::setGamepads(const Gamepads &gamepads)
{
    if (m_gamepads == gamepads)
        return;
    m_gamepads = gamepads;
    Q_EMIT gamepadsChanged();
}

void GamepadManager::setAutoDetectGamePad(bool autoDetectGamePad)
{
    if (m_autoDetectGamePad == autoDetectGamePad)
        return;
    m_autoDetectGamePad = autoDetectGamePad;
    Q_EMIT autoDetectGamePadChanged();
}

void GamepadManager::setPollIntervalMs(int ms)
{
    const QPointer<GamepadManager> self(this);
    m_pollIntervalMs = ms;
    discoverDevices();
    if (self && m_autoDetectGamePad)
        startTimers();
}

void GamepadManager::startTimers()
{
    if (!m_pollTimer->isActive())
        m_pollTimer->start(std::max(m_pollIntervalMs, 0));
    if (!m_pumpTimer->isActive())
        m_pumpTimer->start(pumpIntervalMs);
}

void GamepadManager::stopTimers()
{
    m_pollTimer->stop();
    m_pumpTimer->stop();
}

void GamepadManager::onAutoDetectChanged()
{
    if (!m_autoDetectGamePad) {
        stopTimers();
        return;
    }
    const QPointer<GamepadManager> self(this);
    discoverDevices();
    if (self && m_autoDetectGamePad)
        startTimers();
}

void GamepadManager::poll()
{
    sf::Joystick::update();
    discoverDevices();
}

void GamepadManager::pumpEvents()
{
    if (m_pumpWindow && drainJoystickEvents(*m_pumpWindow))
        QTimer::singleShot(settleTime, this, &GamepadManager::discoverDevices);
}

// Listeners run inside this. They may run it again, change the list, or destroy devices and the manager.
void GamepadManager::discoverDevices()
{
    const QPointer<GamepadManager> self(this);
    sf::Joystick::update();
    const bool added = addFound();
    if (!self)
        return;
    const auto kept = announceLost();
    if (!self || (!added && !kept))
        return;
    if (kept)
        setGamepads(*kept);
    if (self)
        Q_EMIT gamepadsChanged();
}

bool GamepadManager::addFound()
{
    const QPointer<GamepadManager> self(this);
    bool added = false;
    for (int slot = 0; self && slot < SfmlSlot::slotCount; ++slot) {
        if (!SfmlSlot(slot).isConnected() || tracksSlot(slot))
            continue;
        const QPointer<ControlManette> device = new ControlManette(slot, this);
        added = true;
        setGamepads(m_gamepads + Gamepads{device});
        if (self && device)
            Q_EMIT gamepadAdded(device);
    }
    return added;
}

/// Tells of every device that is gone while all are still in the list. Returns the list without them, or
/// nothing where none was gone.
std::optional<GamepadManager::Gamepads> GamepadManager::announceLost()
{
    // Discovery inside `gamepadRemoved` would find the same devices gone, and tell of them again, endlessly.
    if (m_announcingLost)
        return std::nullopt;
    const QPointer<GamepadManager> self(this);
    m_announcingLost = true;
    const auto done = qScopeGuard([self] {
        if (self)
            self->m_announcingLost = false;
    });

    const Gamepads walked = m_gamepads;
    Gamepads kept;
    bool lost = false;
    for (const QPointer<ControlManette> &gamepad : walked) {
        if (gamepad && SfmlSlot(gamepad->deviceId()).isConnected()) {
            kept.append(gamepad);
            continue;
        }
        lost = true;
        const int deviceId = gamepad ? gamepad->deviceId() : -1;
        if (gamepad) {
            // No child any more: whoever hears of its end may let go of this manager, which would then delete
            // it a second time.
            gamepad->setParent(nullptr);
            gamepad->deleteLater();
        }
        Q_EMIT gamepadRemoved(deviceId);
        if (!self)
            return std::nullopt;
    }
    if (!lost)
        return std::nullopt;
    // Discovery inside those signals may have added some.
    std::ranges::copy_if(std::as_const(m_gamepads), std::back_inserter(kept),
                         [&](const auto &gamepad) { return !walked.contains(gamepad); });
    return kept;
}

bool GamepadManager::tracksSlot(int slot) const
{
    return std::ranges::any_of(
        m_gamepads, [slot](const auto &gamepad) { return gamepad && gamepad->deviceId() == slot; });
}
