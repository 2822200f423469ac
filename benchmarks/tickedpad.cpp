// SPDX-License-Identifier: MIT
#include "tickedpad.h"

#include "expiry.h"
#include "scriptedjoystick.h"

namespace
{
constexpr int ticksToCalibrate = 40;

ControlManette *plugged(unsigned slot)
{
    scripted::plug(slot, scripted::restingPad());
    return new ControlManette(static_cast<int>(slot), nullptr);
}
} // namespace

TickedPad::TickedPad(unsigned slot)
    : m_device(plugged(slot))
    , m_timer(m_device->findChild<QTimer *>())
{
    m_device->start({});
    for (int i = 0; i < ticksToCalibrate; ++i)
        tick();

    const auto sign = QObject::connect(m_device.get(), &ControlManette::axisChanged, m_device.get(),
                                       [this] { m_publishes = true; });
    auto &axis = scripted::pad(slot).axes.front();
    axis = 50.0F;
    tick();
    axis = 0.0F;
    tick();
    QObject::disconnect(sign);
}

void TickedPad::tick()
{
    expire(*m_timer);
}
