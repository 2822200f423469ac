// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtGui/QIcon>
#include <QtWidgets/QAbstractItemDelegate>
#include <QtWidgets/QMainWindow>

// The two contract classes as a host has them: written a second time, from the host's side, and compiled
// into the test alone. Calls and connections through these classes work only while the plugin's own
// declaration has the same order of virtual operations and of signals.

class IComInterface : public QObject
{
    Q_OBJECT

public:
    enum DeviceType { gimbal, videoprocessing, gps, controler, gamepade, motor, userType, mavlink };
    Q_ENUM(DeviceType)
    enum ComStatus { noCom, waitingForEngagment, degraded, connected };
    Q_ENUM(ComStatus)

    virtual void start(const QString &) = 0;
    virtual void stop() = 0;
    virtual void quit() = 0;
    virtual int reservedFlag() = 0;
    virtual QString deviceJson() = 0;
    virtual void reservedHook() = 0;
    virtual void setValue(int deviceId, int catId, const QString &propertyName, const QVariant &value) = 0;
    virtual int deviceType() = 0;
    virtual QStringList noCodeApp() = 0;
    virtual QVariant value() = 0;
    virtual int status() = 0;
    virtual QJsonArray fonctions() = 0;

Q_SIGNALS:
    void finished();
    void statusChanged(ComStatus status); // clazy:exclude=fully-qualified-moc-types
    void noCodeAppChanged(QStringList);
    void fonctionsChanged(QJsonArray);
    void dataChanged(int deviceId, int catId, QStringList propertyName, QVariantList values);
    void dataChanged(QString deviceName, QString catName, QStringList propertyName, QVariantList values);
};

class IComInterfaceModelProvider : public QObject
{
    Q_OBJECT

public:
    virtual QString providerName() = 0;
    virtual QString interfaceName() = 0;
    virtual QAbstractListModel *model(const QString &context, QObject *parent) = 0;
    virtual QAbstractItemDelegate *delegate(QObject *parent) = 0;
    virtual void selectedInterfaces(QList<IComInterface *> &ifaces, QJsonArray &infos) = 0;
    virtual QMainWindow *configWindow(QWidget *parent) = 0;
    virtual int reservedFlagA() = 0;
    virtual int reservedFlagB() = 0;
    virtual QJsonObject info() = 0;
    virtual void setServices(const QJsonObject &services) = 0;
    virtual QIcon icon() = 0;

Q_SIGNALS:
    void selectedInterfacesChanged(QList<IComInterface *> selectedIfaces, QJsonArray info);
    void servicesChanged(QJsonObject services);
};

Q_DECLARE_INTERFACE(IComInterfaceModelProvider, "fr.velor.IComInterfaceModelProvider/1.0")
