// SPDX-License-Identifier: MIT
#include "controlmanette.h"

#include "devicejson.h"
#include "diagnostics.h"
#include "profilelookup.h"
#include "sfmlslot.h"

#include <QtCore/QPointer>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{
constexpr int tickIntervalMs = 10;

/// A timer takes no negative interval, and a number beyond `int` stays as long as can be.
int intervalFrom(const QVariant &value)
{
    return static_cast<int>(qBound(0LL, value.toLongLong(), qlonglong(std::numeric_limits<int>::max())));
}
} // namespace

ControlManette::ControlManette(int deviceId, QObject *parent)
    : IComInterface(parent)
    , m_deviceId(deviceId)
    , m_timer(this)
{
    if (deviceId == -1)
        return;
    sf::Joystick::update();
    const auto identification = SfmlSlot(deviceId).identification();
    m_name = textOf(identification.name);
    m_vendorId = identification.vendorId;
    m_productId = identification.productId;
    connect(&m_timer, &QTimer::timeout, this, &ControlManette::onTick);
}

void ControlManette::start(const QString & /*parameter*/)
{
    const QPointer<ControlManette> self(this);
    sf::Joystick::update();
    const SfmlSlot slot(m_deviceId);
    const bool wasConnected = m_connected;
    const bool present = slot.isConnected();
    setConnected(present);
    // A listener may have stopped it at once.
    if (!self || m_connected != present)
        return;
    resetAllBias();
    readAxisPresence(slot);
    m_timer.start(tickIntervalMs);
    if (m_connected && !wasConnected)
        Q_EMIT statusChanged(ComStatus::connected);
}

void ControlManette::stop()
{
    if (!m_connected)
        return;
    const QPointer<ControlManette> self(this);
    m_timer.stop();
    setConnected(false);
    // A listener may have started it again, and it is connected then.
    if (!self || m_connected)
        return;
    m_publishing = false;
    Q_EMIT statusChanged(noCom);
}

void ControlManette::quit()
{
    const QPointer<ControlManette> self(this);
    stop();
    if (self)
        Q_EMIT finished();
}

int ControlManette::reservedFlag()
{
    return 0;
}

QString ControlManette::deviceJson()
{
    QVariantList bias;
    for (const AxisCalibration &axis : m_axes)
        bias.append(axis.bias);
    return deviceJsonText({
        .deviceId = m_deviceId,
        .name = m_name,
        .vendorId = m_vendorId,
        .productId = m_productId,
        .connected = m_connected,
        .axes = axes(),
        .bias = bias,
        .buttons = buttons(),
    });
}

void ControlManette::reservedHook() {}

void ControlManette::setValue(int deviceId, int /*catId*/, const QString &propertyName, const QVariant &value)
{
    if (deviceId != m_deviceId)
        return;
    if (propertyName == "pollingInterval"_L1 && value.canConvert<int>())
        m_timer.setInterval(intervalFrom(value));
    else if (propertyName == "resetBias"_L1)
        resetAllBias();
}

int ControlManette::deviceType()
{
    return gamepade;
}

QStringList ControlManette::noCodeApp()
{
    QString path = findConfigFile(m_name, m_vendorId, m_productId);
    if (path.isEmpty())
        path = commonConfigPath();
    qCDebug(diagnostics) << "no code app from gamepad:" << path;
    return {path};
}

QVariant ControlManette::value()
{
    return {};
}

int ControlManette::status()
{
    return m_connected ? ComStatus::connected : noCom;
}

QJsonArray ControlManette::fonctions()
{
    return {};
}

void ControlManette::refreshNoCodeApp()
{
    Q_EMIT noCodeAppChanged(noCodeApp());
}

QString ControlManette::imagePathForDevice() const
{
    const QString ofProfile = findProfileImage(m_name);
    return ofProfile.isEmpty() ? u":/new/prefix1/ressources/menette_id_%1.png"_s.arg(m_productId) : ofProfile;
}

void ControlManette::setDeviceId(int deviceId)
{
    if (m_deviceId == deviceId)
        return;
    m_deviceId = deviceId;
    Q_EMIT deviceIdChanged();
}

void ControlManette::setName(const QString &name)
{
    if (m_name == name)
        return;
    m_name = name;
    Q_EMIT nameChanged();
}

void ControlManette::setVendorId(uint vendorId)
{
    if (m_vendorId == vendorId)
        return;
    m_vendorId = vendorId;
    Q_EMIT vendorIdChanged();
}

void ControlManette::setProductId(uint productId)
{
    if (m_productId == productId)
        return;
    m_productId = productId;
    Q_EMIT productIdChanged();
}

void ControlManette::setConnected(bool nowConnected)
{
    if (m_connected == nowConnected)
        return;
    m_connected = nowConnected;
    Q_EMIT connectedChanged();
}

QVariantList ControlManette::axes() const
{
    QVariantList values;
    for (const AxisCalibration &axis : m_axes)
        values.append(axis.value);
    return values;
}

QVariantList ControlManette::buttons() const
{
    QVariantList states;
    for (const bool pressed : m_buttons)
        states.append(pressed);
    return states;
}

void ControlManette::resetAllBias()
{
    m_axes.fill({});
    m_publishing = false;
}

void ControlManette::readAxisPresence(SfmlSlot slot)
{
    for (int i = 0; i < axisCount; ++i)
        m_axisPresent[static_cast<std::size_t>(i)] = slot.hasAxis(i);
}
