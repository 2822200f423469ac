// SPDX-License-Identifier: MIT
#pragma once

#include "axiscalibration.h"
#include "icominterface.h"

#include <QtCore/QTimer>

#include <array>

class SfmlSlot;

/// One gamepad: reads one SFML joystick slot on a fast timer, learns where each axis rests, and publishes
/// corrected values. Publishing begins when every present axis has shown a steady rest position.
///
/// Owned by its parent. It goes by `deleteLater` when its slot empties, so everyone else holds it through
/// `QPointer`. Listeners run inside the tick that emits, and may stop, reset or destroy the device there.
class ControlManette : public IComInterface
{
    Q_OBJECT
    Q_PROPERTY(int deviceId READ deviceId WRITE setDeviceId NOTIFY deviceIdChanged)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(uint vendorId READ vendorId WRITE setVendorId NOTIFY vendorIdChanged)
    Q_PROPERTY(uint productId READ productId WRITE setProductId NOTIFY productIdChanged)
    Q_PROPERTY(bool connected READ isConnected WRITE setConnected NOTIFY connectedChanged)
    Q_PROPERTY(QVariantList axes READ axes NOTIFY axesChanged)
    Q_PROPERTY(QVariantList buttons READ buttons NOTIFY buttonsChanged)

public:
    static constexpr int axisCount = 8;
    static constexpr int buttonCount = 32;

    /// A stopped device for the joystick slot `deviceId`, with the name and ids that SFML has for it. The
    /// slot -1 makes a placeholder, with neither, in which no joystick is ever found.
    ControlManette(int deviceId, QObject *parent);

    /// Begins calibration and, after it, publishing, at one tick each 10 ms; `parameter` is ignored. Emits
    /// `statusChanged` where the joystick is there and was not before.
    void start(const QString &parameter) override;
    /// Stops a connected device and reports `noCom`. A device that is not connected is left as it is, a
    /// running timer included.
    void stop() override;
    void quit() override;
    int reservedFlag() override;
    /// One compact object: `deviceId`, `name`, the ids as "0x" and lower-case hexadecimal, `connected`,
    /// `axes` and `bias` (8 numbers each), `buttons` (32 booleans).
    QString deviceJson() override;
    void reservedHook() override;
    /// Takes "pollingInterval" (milliseconds) and "resetBias" where `deviceId` is this slot; else nothing.
    void setValue(int deviceId, int catId, const QString &propertyName, const QVariant &value) override;
    int deviceType() override;
    /// Exactly one path: the document of the first profile that serves this device, or the common one,
    /// which need not exist. Looked up at each call.
    QStringList noCodeApp() override;
    QVariant value() override;
    int status() override;
    QJsonArray fonctions() override;

    /// Tells the host, by `noCodeAppChanged`, to read the device's document again.
    void refreshNoCodeApp();
    /// Path of the picture of the profile linked to this device's name, or else a resource path named by
    /// the product id, which only the host can fill. Looked up at each call.
    [[nodiscard]] QString imagePathForDevice() const;

    /// The joystick slot, 0 to 7, or -1 in a placeholder. Any other number is a slot with no joystick.
    [[nodiscard]] int deviceId() const { return m_deviceId; }
    void setDeviceId(int deviceId);
    [[nodiscard]] QString name() const { return m_name; }
    void setName(const QString &name);
    [[nodiscard]] uint vendorId() const { return m_vendorId; }
    void setVendorId(uint vendorId);
    [[nodiscard]] uint productId() const { return m_productId; }
    void setProductId(uint productId);
    /// Whether the joystick was there at the last tick or `start`; false after `stop`.
    [[nodiscard]] bool isConnected() const { return m_connected; }
    void setConnected(bool nowConnected);
    /// The last accepted value of each axis: 8 `double`, -100 to 100.
    [[nodiscard]] QVariantList axes() const;
    /// The last state of each button: 32 `bool`.
    [[nodiscard]] QVariantList buttons() const;

    /// Forgets every rest position, so that calibration begins again on the next tick. Emits nothing.
    Q_INVOKABLE void resetAllBias();

Q_SIGNALS:
    /// Only while the device publishes, at once, inside the tick. `value` is corrected, -100 to 100.
    void axisChanged(int axis, double value);
    void buttonChanged(int button, bool pressed);
    void axesChanged();
    void buttonsChanged();
    void deviceIdChanged();
    void nameChanged();
    void vendorIdChanged();
    void productIdChanged();
    void connectedChanged();

private:
    /// What one tick tells the host: `values[i]` belongs to `keys[i]`.
    struct Batch
    {
        QStringList keys;
        QVariantList values;

        void add(const QString &key, const QVariant &value);
    };

    // A listener may destroy the device. These return false then, and nothing of it may be touched any more.
    template <typename Emission>
    [[nodiscard]] bool survives(const Emission &emission);
    [[nodiscard]] bool readIdentification(SfmlSlot slot);
    [[nodiscard]] bool passAxes(SfmlSlot slot, Batch &batch);
    [[nodiscard]] bool passButtons(SfmlSlot slot, Batch &batch);

    void onTick();
    void readAxisPresence(SfmlSlot slot);
    void openPublishingWhenCalibrated();
    void flush(const Batch &batch);

    int m_deviceId = -1;
    QString m_name;
    uint m_vendorId = 0;
    uint m_productId = 0;
    bool m_connected = false;
    std::array<AxisCalibration, axisCount> m_axes{};
    std::array<bool, axisCount> m_axisPresent{};
    std::array<bool, buttonCount> m_buttons{};
    bool m_publishing = false;
    QTimer m_timer;
};
