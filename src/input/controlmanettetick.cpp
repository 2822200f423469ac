// SPDX-License-Identifier: MIT
// The tick of a started gamepad: read, calibrate, publish.
#include "controlmanette.h"

#include "diagnostics.h"
#include "inputkeys.h"
#include "sfmlslot.h"

#include <QtCore/QDebug>
#include <QtCore/QPointer>

using namespace Qt::StringLiterals;

namespace
{
// A gamepad sends these whichever its slot is: the host tells devices apart by the sender.
constexpr int sentDeviceId = 0;
constexpr int sentCategoryId = 1;

void reportBias(int axis, AxisCalibration::Outcome outcome, double bias)
{
    switch (outcome) {
    case AxisCalibration::Outcome::Nothing:
        break;
    case AxisCalibration::Outcome::HardBias:
        qCDebug(diagnostics) << "[calib] axis" << axis << "HARD bias =" << bias << "(trigger)";
        break;
    case AxisCalibration::Outcome::SoftBias:
        qCDebug(diagnostics) << "[calib] axis" << axis << "SOFT bias =" << bias;
        break;
    }
}

QString flushText(const QStringList &keys, const QVariantList &values)
{
    QStringList pairs;
    for (qsizetype i = 0; i < keys.size(); ++i)
        pairs.append(u"%1=%2"_s.arg(keys.at(i), values.at(i).toString()));
    return pairs.join(u", "_s);
}
} // namespace

void ControlManette::onTick()
{
    sf::Joystick::update();
    const SfmlSlot slot(m_deviceId);
    const bool present = slot.isConnected();
    if (present != m_connected && !survives([this, present] { setConnected(present); }))
        return;
    // A pad that is away keeps its name, but what is no slot has none. A listener may have stopped the
    // device.
    if (slot.exists() && !(present && m_connected))
        return;
    if (!readIdentification(slot) || !present)
        return;
    readAxisPresence(slot);

    Batch batch;
    if (!passAxes(slot, batch))
        return;
    openPublishingWhenCalibrated();
    if (!passButtons(slot, batch))
        return;
    if (m_publishing && !batch.keys.isEmpty())
        flush(batch);
}

bool ControlManette::readIdentification(SfmlSlot slot)
{
    const auto identification = slot.identification();
    if (identification.vendorId == m_vendorId && identification.productId == m_productId &&
        readsAs(identification.name, m_name))
        return true;
    return survives([&] { setVendorId(identification.vendorId); }) &&
           survives([&] { setProductId(identification.productId); }) &&
           survives([&] { setName(textOf(identification.name)); });
}

bool ControlManette::passAxes(SfmlSlot slot, Batch &batch)
{
    for (int i = 0; i < axisCount; ++i) {
        if (!m_axisPresent[static_cast<std::size_t>(i)])
            continue;
        AxisCalibration &axis = m_axes[static_cast<std::size_t>(i)];
        const auto outcome = axis.read(slot.axisPosition(i));
        reportBias(i, outcome, axis.bias);
        if (!axis.calibrated || !axis.accept() || !m_publishing)
            continue;
        const double value = axis.value;
        batch.add(axisKey(i), value);
        qCDebug(diagnostics) << axisKey(i) << value;
        if (!survives([this, i, value] { Q_EMIT axisChanged(i, value); }))
            return false;
    }
    return true;
}

void ControlManette::openPublishingWhenCalibrated()
{
    // A listener may have stopped the device in this very tick.
    if (m_publishing || !m_connected)
        return;
    for (std::size_t i = 0; i < m_axes.size(); ++i) {
        if (m_axisPresent[i] && !m_axes[i].calibrated)
            return;
    }
    m_publishing = true;
    qCDebug(diagnostics) << "[ready] all present axes calibrated → start publishing";
}

bool ControlManette::passButtons(SfmlSlot slot, Batch &batch)
{
    for (int i = 0; i < buttonCount; ++i) {
        const bool pressed = slot.isButtonPressed(i);
        bool &known = m_buttons[static_cast<std::size_t>(i)];
        if (pressed == known)
            continue;
        known = pressed;
        if (!m_publishing)
            continue;
        batch.add(buttonKey(i), pressed);
        qCDebug(diagnostics) << buttonKey(i) << pressed;
        if (!survives([this, i, pressed] { Q_EMIT buttonChanged(i, pressed); }))
            return false;
    }
    return true;
}

void ControlManette::flush(const Batch &batch)
{
    qCDebug(diagnostics) << "[flush]" << flushText(batch.keys, batch.values);
    if (survives([&] { Q_EMIT dataChanged(sentDeviceId, sentCategoryId, batch.keys, batch.values); }) &&
        survives([&] { Q_EMIT dataChanged(u"gamepad"_s, u"gamepad"_s, batch.keys, batch.values); }) &&
        survives([this] { Q_EMIT axesChanged(); }))
        Q_EMIT buttonsChanged();
}

void ControlManette::Batch::add(const QString &key, const QVariant &value)
{
    if (keys.isEmpty()) {
        keys.reserve(axisCount + buttonCount);
        values.reserve(axisCount + buttonCount);
    }
    keys.append(key);
    values.append(value);
}

template <typename Emission>
bool ControlManette::survives(const Emission &emission)
{
    const QPointer<ControlManette> self(this);
    emission();
    return !self.isNull();
}
