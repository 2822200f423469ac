// SPDX-License-Identifier: MIT
#include "barepad.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

BareReadings BareReadings::of(unsigned slot)
{
    sf::Joystick::update();
    // Made whole at once: SFML's own default of an identification carries a name, which costs as much again.
    BareReadings readings{.connected = sf::Joystick::isConnected(slot),
                          .identification = sf::Joystick::getIdentification(slot)};
    for (unsigned i = 0; i < readings.axes.size(); ++i)
        readings.axisPresent[i] = sf::Joystick::hasAxis(slot, static_cast<sf::Joystick::Axis>(i));
    for (unsigned i = 0; i < readings.axes.size(); ++i)
        readings.axes[i] = sf::Joystick::getAxisPosition(slot, static_cast<sf::Joystick::Axis>(i));
    for (unsigned i = 0; i < readings.buttons.size(); ++i)
        readings.buttons[i] = sf::Joystick::isButtonPressed(slot, i);
    return readings;
}

BareTimer::BareTimer(unsigned slot)
{
    connect(this, &QTimer::timeout, this, [slot] {
        const BareReadings readings = BareReadings::of(slot);
        benchmark::DoNotOptimize(&readings);
    });
}

BarePad::BarePad(unsigned slot)
    : m_slot(slot)
{
    for (unsigned i = 0; i < sf::Joystick::AxisCount; ++i)
        m_axisKeys.append(u"joy_%1"_s.arg(i));
    for (unsigned i = 0; i < sf::Joystick::ButtonCount; ++i)
        m_buttonKeys.append(u"but_%1"_s.arg(i));
}

void BarePad::tick()
{
    const BareReadings readings = BareReadings::of(m_slot);
    QStringList keys;
    QVariantList values;
    for (int i = 0; i < m_axisKeys.size(); ++i) {
        const auto value = static_cast<double>(readings.axes[static_cast<std::size_t>(i)]);
        keys.append(m_axisKeys.at(i));
        values.append(value);
        Q_EMIT axisChanged(i, value);
    }
    for (int i = 0; i < m_buttonKeys.size(); ++i) {
        const bool pressed = readings.buttons[static_cast<std::size_t>(i)];
        if (pressed == m_buttons[static_cast<std::size_t>(i)])
            continue;
        m_buttons[static_cast<std::size_t>(i)] = pressed;
        keys.append(m_buttonKeys.at(i));
        values.append(pressed);
        Q_EMIT buttonChanged(i, pressed);
    }
    Q_EMIT dataChanged(0, 1, keys, values);
    Q_EMIT dataChanged(u"gamepad"_s, u"gamepad"_s, keys, values);
    Q_EMIT axesChanged();
    Q_EMIT buttonsChanged();
}
