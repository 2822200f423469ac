// SPDX-License-Identifier: MIT
#pragma once

#include "icominterfacemodelprovider.h"

#include <QtCore/QPointer>

class DeviceItemDelegate;
class LinkerDeviceModel;
class ManetteConfigurationWidget;

/// The family of gamepads: the one object that the plugin's loader makes. It makes model, delegate and window
/// on demand, wires them together and holds no logic of its own. What it hands out belongs to the parents
/// that the host gives, and is made anew when it has died.
class GamepadComPlugin : public IComInterfaceModelProvider
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IComInterfaceModelProvider_iid)
    Q_INTERFACES(IComInterfaceModelProvider)

public:
    GamepadComPlugin();

    QString providerName() override;
    QString interfaceName() override;
    QAbstractListModel *model(const QString &context, QObject *parent) override;
    QAbstractItemDelegate *delegate(QObject *parent) override;
    void selectedInterfaces(QList<IComInterface *> &ifaces, QJsonArray &infos) override;
    QMainWindow *configWindow(QWidget *parent) override;
    int reservedFlagA() override;
    int reservedFlagB() override;
    QJsonObject info() override;
    void setServices(const QJsonObject &services) override;
    QIcon icon() override;

private:
    void wireDelegateToModel();
    void fillWindow();
    void forgetWindow();

    QPointer<LinkerDeviceModel> m_model;
    QPointer<DeviceItemDelegate> m_delegate;
    QPointer<QMainWindow> m_window;
    QPointer<ManetteConfigurationWidget> m_configWidget;
    QJsonObject m_services;
    bool m_delegateWired = false;
    bool m_fillingWindow = false;
};
