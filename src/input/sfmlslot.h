// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

#include <SFML/Window/Joystick.hpp>

#include <cmath>

/// The guarded door to one joystick slot of SFML, which indexes its arrays with whatever it is given. A slot,
/// an axis or a button that SFML does not have is simply not there.
class SfmlSlot
{
public:
    static constexpr int slotCount = static_cast<int>(sf::Joystick::Count);
    static constexpr int axisCount = static_cast<int>(sf::Joystick::AxisCount);
    static constexpr int buttonCount = static_cast<int>(sf::Joystick::ButtonCount);

    explicit SfmlSlot(int slot)
        : m_slot(static_cast<unsigned>(slot))
    {}

    [[nodiscard]] bool exists() const { return m_exists; }
    [[nodiscard]] bool isConnected() const { return m_exists && sf::Joystick::isConnected(m_slot); }

    /// What SFML knows of the joystick; no name and no ids for a slot that does not exist.
    [[nodiscard]] sf::Joystick::Identification identification() const;

    /// `axis` is an `sf::Joystick::Axis`, 0 to 7.
    [[nodiscard]] bool hasAxis(int axis) const
    {
        return m_exists && axis >= 0 && axis < axisCount &&
               sf::Joystick::hasAxis(m_slot, static_cast<sf::Joystick::Axis>(axis));
    }

    /// -100 to 100; 0 where the driver gives no finite number, and for an axis that is not there.
    [[nodiscard]] double axisPosition(int axis) const
    {
        if (!m_exists || axis < 0 || axis >= axisCount)
            return 0.0;
        const float position = sf::Joystick::getAxisPosition(m_slot, static_cast<sf::Joystick::Axis>(axis));
        return std::isfinite(position) ? static_cast<double>(position) : 0.0;
    }

    /// `button` is 0 to 31.
    [[nodiscard]] bool isButtonPressed(int button) const
    {
        return m_exists && button >= 0 && button < buttonCount &&
               sf::Joystick::isButtonPressed(m_slot, static_cast<unsigned>(button));
    }

    /// How many buttons the driver reports.
    [[nodiscard]] unsigned reportedButtons() const
    {
        return m_exists ? sf::Joystick::getButtonCount(m_slot) : 0;
    }

private:
    unsigned m_slot; ///< of a negative number, far above what exists
    bool m_exists = m_slot < sf::Joystick::Count;
};

/// SFML's UTF-32 text.
[[nodiscard]] QString textOf(const sf::String &text);

/// Whether `text` reads as `known`, found out without building a text: names are compared at every tick.
[[nodiscard]] bool readsAs(const sf::String &text, QStringView known);
