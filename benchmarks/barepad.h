// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtCore/QVariantList>

#include <SFML/Window/Joystick.hpp>

#include <array>

/// What one tick has to ask SFML for.
struct BareReadings
{
    bool connected = false;
    sf::Joystick::Identification identification;
    std::array<bool, sf::Joystick::AxisCount> axisPresent{};
    std::array<float, sf::Joystick::AxisCount> axes{};
    std::array<bool, sf::Joystick::ButtonCount> buttons{};

    /// Asks once, and does nothing else.
    [[nodiscard]] static BareReadings of(unsigned slot);
};

/// A timer that asks at each expiry, and looks at no answer. It is not started.
class BareTimer : public QTimer
{
    Q_OBJECT

public:
    explicit BareTimer(unsigned slot);
};

/// The least that tells what a gamepad must tell: every axis as it is read, every button that has changed,
/// with no calibration, no gate and no care for listeners that stop or destroy it.
class BarePad : public QObject
{
    Q_OBJECT

public:
    explicit BarePad(unsigned slot);

    void tick();

Q_SIGNALS:
    void axisChanged(int axis, double value);
    void buttonChanged(int button, bool pressed);
    void dataChanged(int deviceId, int catId, const QStringList &keys, const QVariantList &values);
    void dataChanged(const QString &deviceName, const QString &catName, const QStringList &keys,
                     const QVariantList &values);
    void axesChanged();
    void buttonsChanged();

private:
    unsigned m_slot;
    // The texts of the keys never change, so making them is no part of the work.
    QStringList m_axisKeys;
    QStringList m_buttonKeys;
    std::array<bool, sf::Joystick::ButtonCount> m_buttons{};
};
