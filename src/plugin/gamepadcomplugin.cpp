// SPDX-License-Identifier: MIT
#include "recordedqtversion.h"

#include "gamepadcomplugin.h"

#include "deviceitemdelegate.h"
#include "linkerdevicemodel.h"
#include "manetteconfigurationwidget.h"

#include <QtCore/QScopeGuard>
#include <QtWidgets/QLayout>

#include <memory>

using namespace Qt::StringLiterals;

GamepadComPlugin::GamepadComPlugin()
{
    registerContractTypes();
}

QString GamepadComPlugin::providerName()
{
    return u"velor"_s;
}

QString GamepadComPlugin::interfaceName()
{
    return u"Gamepad"_s;
}

QAbstractListModel *GamepadComPlugin::model(const QString &context, QObject *parent)
{
    if (!m_model) {
        m_model = new LinkerDeviceModel(context, parent);
        connect(m_model, &LinkerDeviceModel::selectedInterfacesChanged, this,
                &GamepadComPlugin::selectedInterfacesChanged);
        // A delegate that served a model which has died goes on with the new one.
        if (m_delegate && m_delegateWired)
            wireDelegateToModel();
    }
    return m_model;
}

QAbstractItemDelegate *GamepadComPlugin::delegate(QObject *parent)
{
    if (!m_delegate) {
        m_delegate = new DeviceItemDelegate(parent);
        m_delegateWired = m_model != nullptr;
        wireDelegateToModel();
    }
    return m_delegate;
}

// Without a model Qt reports the missing receiver, which tells the host's author that the order is wrong.
void GamepadComPlugin::wireDelegateToModel()
{
    connect(m_delegate, &DeviceItemDelegate::requestDelete, m_model, &LinkerDeviceModel::deleteDevice);
    connect(m_delegate, &DeviceItemDelegate::toggledSelect, m_model, &LinkerDeviceModel::setSelected);
}

void GamepadComPlugin::selectedInterfaces(QList<IComInterface *> &ifaces, QJsonArray &infos)
{
    if (m_model) {
        m_model->collectSelected(ifaces, infos);
        return;
    }
    ifaces.clear();
    infos = {};
}

QMainWindow *GamepadComPlugin::configWindow(QWidget *parent)
{
    if (!m_window) {
        m_window = new QMainWindow(parent);
        m_window->setWindowTitle(u"Gamepad"_s);
        connect(m_window, &QObject::destroyed, this, &GamepadComPlugin::forgetWindow);
    }
    const QPointer<GamepadComPlugin> self = this;
    if (!m_configWidget && !m_fillingWindow)
        fillWindow();
    return self ? m_window.get() : nullptr;
}

// A profile that cannot be read shows a box while the widget is made, and under a box the host may do
// anything: ask for the window again, destroy it, or let the whole plugin go. So the widget joins the window
// when it stands.
void GamepadComPlugin::fillWindow()
{
    const QPointer<GamepadComPlugin> self = this;
    m_fillingWindow = true;
    const auto filled = qScopeGuard([self] {
        if (self)
            self->m_fillingWindow = false;
    });
    auto widget = std::make_unique<ManetteConfigurationWidget>();
    if (!self || !m_window)
        return;
    ManetteConfigurationWidget *const made = widget.release();
    m_configWidget = made;
    m_window->setCentralWidget(made);
    connect(made, &QObject::destroyed, this, [this](QObject *dying) {
        m_configWidget.clear();
        // It is no longer the one that would have to make room, and be deleted, for another.
        m_window->layout()->removeWidget(static_cast<QWidget *>(dying));
    });
    // A host that wants other services to count calls `setServices`; the signal hands on what is stored.
    connect(this, &GamepadComPlugin::servicesChanged, made, [this, made] {
        if (m_configWidget == made)
            made->setServices(m_services);
    });
    made->setServices(m_services);
}

// A profile that cannot be saved shows a box while the widget goes, and Qt clears the pointers to a widget
// only after its children went. Under that box the host is to get a window that lives.
void GamepadComPlugin::forgetWindow()
{
    m_window.clear();
    if (m_configWidget)
        m_configWidget->disconnect(this);
    m_configWidget.clear();
}

int GamepadComPlugin::reservedFlagA()
{
    return 0;
}

int GamepadComPlugin::reservedFlagB()
{
    return 0;
}

QJsonObject GamepadComPlugin::info()
{
    return {};
}

void GamepadComPlugin::setServices(const QJsonObject &services)
{
    m_services = services;
    if (m_configWidget)
        m_configWidget->setServices(m_services);
}

QIcon GamepadComPlugin::icon()
{
    return QIcon(u":/icon/ressources/console-video.png"_s);
}

// The plugin's metadata is part of moc's output and records the version that was set above, so it has to be
// compiled in this file.
#include "moc_gamepadcomplugin.cpp" // NOLINT(bugprone-suspicious-include)
