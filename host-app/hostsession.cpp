// SPDX-License-Identifier: MIT
#include "hostsession.h"

#include "icominterfacemodelprovider.h"

#include <QtCore/QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr int restIntervalMs = 50;
} // namespace

HostSession::HostSession(IComInterfaceModelProvider *provider, const QString &context, QObject *parent)
    : QObject(parent)
    , m_provider(provider)
{
    registerContractTypes();
    m_model = m_provider->model(context, this);
    m_delegate = m_provider->delegate(this);

    connect(m_provider, &IComInterfaceModelProvider::selectedInterfacesChanged, this, &HostSession::take);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &HostSession::rowsChanged);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &HostSession::rowsChanged);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &HostSession::rowsChanged);
    connect(m_model, &QAbstractItemModel::modelReset, this, &HostSession::rowsChanged);

    // What a device has learned of its rest is told by no signal.
    connect(&m_restTimer, &QTimer::timeout, this, &HostSession::lookAtRest);
    m_restTimer.start(restIntervalMs);
}

// The model saves when it goes, and what it says meanwhile is for nobody.
HostSession::~HostSession()
{
    m_provider->disconnect(this);
    for (const auto &[interface, number] : m_numbers.asKeyValueRange())
        interface->disconnect(this);
    delete m_model;
}

const HeldDevice *HostSession::device(int number) const
{
    const auto found =
        std::ranges::find_if(m_devices, [number](const HeldDevice &held) { return held.number == number; });
    return found == m_devices.end() ? nullptr : &*found;
}

QVariant HostSession::rowData(int row, const QByteArray &role) const
{
    const int number = m_model->roleNames().key(role, -1);
    return number < 0 ? QVariant() : m_model->index(row).data(number);
}

bool HostSession::setRowData(int row, const QByteArray &role, const QVariant &value)
{
    const int number = m_model->roleNames().key(role, -1);
    return number >= 0 && m_model->setData(m_model->index(row), value, number);
}

int HostSession::rowOf(const QString &usn) const
{
    int row = -1;
    QMetaObject::invokeMethod(m_model, "indexOfUsn", Q_RETURN_ARG(int, row), Q_ARG(QString, usn));
    return row;
}

int HostSession::rowOf(const QObject *interface) const
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        QObject *found = nullptr;
        QMetaObject::invokeMethod(m_model, "interfaceForRow", Q_RETURN_ARG(QObject *, found),
                                  Q_ARG(int, row));
        if (found == interface)
            return row;
    }
    return -1;
}

void HostSession::setSelected(const QString &usn, bool selected)
{
    QMetaObject::invokeMethod(m_model, "setSelected", Q_ARG(QString, usn), Q_ARG(bool, selected));
}

bool HostSession::forget(const QString &usn)
{
    bool done = false;
    QMetaObject::invokeMethod(m_model, "deleteDevice", Q_RETURN_ARG(bool, done), Q_ARG(QString, usn));
    return done;
}

bool HostSession::write(const QString &usn, const QString &property, const QVariant &value)
{
    const auto held = std::ranges::find(m_devices, usn, &HeldDevice::usn);
    if (held == m_devices.end() || !held->interface)
        return false;
    const QJsonObject json = QJsonDocument::fromJson(held->interface->deviceJson().toUtf8()).object();
    constexpr int anyCategory = 1;
    held->interface->setValue(json["deviceId"_L1].toInt(), anyCategory, property, value);
    return true;
}

void HostSession::handServices(const QJsonObject &services)
{
    m_provider->setServices(services);
}

QMainWindow *HostSession::configWindow(QWidget *parent)
{
    return m_provider->configWindow(parent);
}

void HostSession::take(const QList<IComInterface *> &interfaces, const QJsonArray &infos)
{
    QList<HeldDevice> devices;
    for (IComInterface *interface : interfaces) {
        const int row = rowOf(interface);
        devices.append({.number = numberOf(interface),
                        .usn = rowData(row, "usn").toString(),
                        .name = rowData(row, "name").toString(),
                        .interface = interface});
    }
    m_devices = devices;
    Q_EMIT selectionReceived(devices, infos);
}

int HostSession::numberOf(IComInterface *interface)
{
    const auto known = m_numbers.constFind(interface);
    if (known != m_numbers.cend())
        return *known;
    const int number = ++m_lastNumber;
    m_numbers.insert(interface, number);
    listenTo(interface, number);
    return number;
}

// For as long as it lives: a device says that it has stopped after it has left the selection.
void HostSession::listenTo(IComInterface *interface, int number)
{
    using Numeric = void (IComInterface::*)(int, int, const QStringList &, const QVariantList &);
    using Named =
        void (IComInterface::*)(const QString &, const QString &, const QStringList &, const QVariantList &);
    const QString type = deviceTypeWord(interface->deviceType());

    connect(
        interface, static_cast<Numeric>(&IComInterface::dataChanged), this,
        [this, number, type](int deviceId, int catId, const QStringList &keys, const QVariantList &values) {
            Q_EMIT valuesReceived({.device = number,
                                   .deviceType = type,
                                   .deviceId = deviceId,
                                   .catId = catId,
                                   .keys = keys,
                                   .values = values});
        });
    connect(interface, static_cast<Named>(&IComInterface::dataChanged), this,
            [this, number](const QString &deviceName, const QString &catName, const QStringList &keys,
                           const QVariantList &values) {
                Q_EMIT namedValuesReceived(number, deviceName, catName, keys, values);
            });
    connect(interface, &IComInterface::statusChanged, this,
            [this, number](IComInterface::ComStatus status) { Q_EMIT statusReceived(number, status); });
    connect(interface, &IComInterface::noCodeAppChanged, this,
            [this, number](const QStringList &paths) { Q_EMIT noCodeAppReceived(number, paths); });
    connect(interface, &IComInterface::finished, this, [this, number] { Q_EMIT finishedReceived(number); });
    connect(interface, &QObject::destroyed, this, [this, number](const QObject *gone) {
        m_numbers.remove(gone);
        m_rest.remove(number);
        Q_EMIT deviceGone(number);
    });
}

void HostSession::lookAtRest()
{
    const QList<HeldDevice> devices = m_devices;
    for (const HeldDevice &device : devices) {
        if (!device.interface)
            continue;
        const QJsonObject json = QJsonDocument::fromJson(device.interface->deviceJson().toUtf8()).object();
        const QJsonArray bias = json["bias"_L1].toArray();
        if (m_rest.value(device.number) == bias)
            continue;
        m_rest.insert(device.number, bias);
        Q_EMIT restChanged(device.number, bias);
    }
}
