// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtCore/QVariantList>

/// One communication device, as the host sees it.
///
/// The host is compiled against its own copy of this class. The order of the virtual operations, the order
/// of the signals and every name below are that contract; nothing may be inserted, moved or renamed. All
/// calls and signals happen on the host's main thread.
class IComInterface : public QObject
{
    Q_OBJECT

public:
    enum DeviceType {
        gimbal = 0,
        videoprocessing = 1,
        gps = 2,
        controler = 3,
        gamepade = 4,
        motor = 5,
        userType = 6,
        mavlink = 7,
    };
    Q_ENUM(DeviceType)

    enum ComStatus {
        noCom = 0,
        waitingForEngagment = 1,
        degraded = 2,
        connected = 3,
    };
    Q_ENUM(ComStatus)

    using QObject::QObject;

    /// Begins polling and reporting. What the text means is up to the device.
    virtual void start(const QString &parameter) = 0;
    /// Stops polling and reports `noCom`.
    virtual void stop() = 0;
    /// Stops through the virtual table, then emits `finished`.
    virtual void quit() = 0;
    /// Always zero; the slot keeps the table's order.
    virtual int reservedFlag() = 0;
    /// The device as one JSON text.
    virtual QString deviceJson() = 0;
    /// Does nothing; the slot keeps the table's order.
    virtual void reservedHook() = 0;
    /// Writes a device property if `deviceId` is this device's.
    virtual void setValue(int deviceId, int catId, const QString &propertyName, const QVariant &value) = 0;
    /// A `DeviceType`.
    virtual int deviceType() = 0;
    /// Paths of the no-code application files of this device; they need not exist.
    virtual QStringList noCodeApp() = 0;
    /// Not used by gamepads: an invalid variant.
    virtual QVariant value() = 0;
    /// A `ComStatus`, computed at each call.
    virtual int status() = 0;
    /// The device's own functions.
    virtual QJsonArray fonctions() = 0;

Q_SIGNALS:
    void finished();
    void statusChanged(ComStatus status); // clazy:exclude=fully-qualified-moc-types (the host's own spelling)
    void noCodeAppChanged(const QStringList &);
    void fonctionsChanged(const QJsonArray &);
    /// `values[i]` is the value of the key `propertyName[i]`; both forms of one batch carry the same lists.
    void dataChanged(int deviceId, int catId, const QStringList &propertyName, const QVariantList &values);
    void dataChanged(const QString &deviceName, const QString &catName, const QStringList &propertyName,
                     const QVariantList &values);
};

Q_DECLARE_METATYPE(IComInterface *)
Q_DECLARE_METATYPE(QList<IComInterface *>)
