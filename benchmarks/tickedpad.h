// SPDX-License-Identifier: MIT
#pragma once

#include "controlmanette.h"

#include <memory>

/// A started gamepad on a scripted joystick whose ticks come when they are asked for.
class TickedPad
{
public:
    /// Plugs a pad of eight axes and eleven buttons into `slot`, and ticks until it publishes.
    explicit TickedPad(unsigned slot);

    void tick();
    /// False where calibration did not open publishing.
    [[nodiscard]] bool publishes() const { return m_publishes; }
    [[nodiscard]] ControlManette &device() { return *m_device; }

private:
    std::unique_ptr<ControlManette> m_device;
    QTimer *m_timer;
    bool m_publishes = false;
};
