// SPDX-License-Identifier: MIT
#include "deviceidentity.h"
#include "gamepadmanager.h"
#include "gamepadsfile.h"
#include "linkerdevicemodel.h"

#include <QtCore/QTimer>

#include <algorithm>
#include <tuple>

// The manager dies with whichever object was its parent, which can be another model. The devices died with
// it, so the rows ask for a new one.
GamepadManager *LinkerDeviceModel::manager()
{
    GamepadManager *current = GamepadManager::instance(this);
    if (current == m_manager)
        return current;
    m_manager = current;
    connect(current, &GamepadManager::gamepadsChanged, this, &LinkerDeviceModel::onManagerChanged);
    connect(current, &GamepadManager::gamepadAdded, this, &LinkerDeviceModel::onGamepadAdded);
    connect(current, &GamepadManager::gamepadRemoved, this, &LinkerDeviceModel::onGamepadRemoved);
    connect(current, &QObject::destroyed, this,
            [this] { QTimer::singleShot(0, this, &LinkerDeviceModel::syncWithManager); });
    if (!m_autoDetect)
        current->stopTimers();
    return current;
}

void LinkerDeviceModel::loadFromDisk()
{
    // A reset that is only being announced will read the file of whichever context is set by then.
    if (m_announcingReset)
        return;
    const QPointer<LinkerDeviceModel> self(this);
    m_announcingReset = true;
    beginResetModel();
    if (!self)
        return;
    m_announcingReset = false;

    // Nobody else speaks from here to the end of the reset, so the rows are of the context that they are
    // saved to.
    m_rowsContext = m_context;
    const GamepadsDocument document = parseGamepads(readGamepadsFile(storePath()));
    LiveDevices devices;
    const GamepadManager::Gamepads gamepads = manager()->gamepads();
    for (const QPointer<ControlManette> &device : gamepads) {
        if (device)
            devices.insert(usnOfSlot(device->deviceId()), device);
    }
    const LiveDevices followed = forgetRows();
    m_previousCount = document.lastCount;
    m_otherKeys = document.otherKeys;
    for (const StoredDevice &stored : document.devices) {
        DeviceRecord record;
        record.infoObject = stored.infoObject;
        record.kv = stored.kv;
        if (ControlManette *device = devices.value(stored.usn))
            adopt(record, *device);
        m_records.insert(stored.usn, record);
        m_usnOrder.append(stored.usn);
    }
    endResetModel();
    if (!self)
        return;
    // A device that runs on is followed in its new row, once however often the context changes. A row that is
    // selected sees to it by itself, below.
    for (auto device = followed.cbegin(); device != followed.cend(); ++device) {
        const DeviceRecord *record = recordOf(device.key());
        if (*device && !(record && selectedByUser(*record)))
            follow(**device, device.key());
    }
    Q_EMIT countChanged();
    if (self)
        Q_EMIT previousCountChanged();
    if (!self)
        return;

    const QStringList order = m_usnOrder;
    for (const QString &usn : order) {
        DeviceRecord *record = recordOf(usn);
        if (!record || !selectedByUser(*record))
            continue;
        ensureInterface(*record, usn);
        startInterface(usn);
        if (!self)
            return;
    }
    QTimer::singleShot(0, this, &LinkerDeviceModel::syncSelected);
}

/// Empties the list. Returns the devices that were followed and no longer are.
LinkerDeviceModel::LiveDevices LinkerDeviceModel::forgetRows()
{
    LiveDevices followed;
    for (const QString &usn : std::as_const(m_usnOrder)) {
        DeviceRecord &record = m_records[usn];
        releasePlaceholder(record);
        if (record.live && record.iface == record.live) {
            record.live->disconnect(this);
            followed.insert(usn, record.live);
        }
    }
    m_usnOrder.clear();
    m_records.clear();
    return followed;
}

QString LinkerDeviceModel::storePath() const
{
    return gamepadsFilePath(m_rowsContext);
}

void LinkerDeviceModel::saveToDisk() const
{
    GamepadsDocument document;
    document.otherKeys = m_otherKeys;
    for (const QString &usn : m_usnOrder) {
        const DeviceRecord &record = *m_records.constFind(usn);
        document.devices.append({
            .usn = usn,
            .infoObject = record.live ? identityOf(*record.live) : record.infoObject,
            .kv = record.kv,
        });
    }
    // Nobody is told of a failure: the old file is still there, and the next change tries again.
    std::ignore = writeGamepadsFile(storePath(), gamepadsJson(document));
}

void LinkerDeviceModel::syncWithManager()
{
    const QPointer<LinkerDeviceModel> self(this);
    const GamepadManager::Gamepads gamepads = manager()->gamepads();
    for (const QPointer<ControlManette> &device : gamepads) {
        // Discovery inside the signals of this merge may have dropped it, and given its row another device.
        if (device && manager()->gamepads().contains(device))
            mergeLive(device);
        if (!self)
            return;
    }
    const QStringList order = m_usnOrder;
    for (const QString &usn : order) {
        markIfAbsent(usn);
        if (!self)
            return;
    }
    saveToDisk();
    syncSelected();
}

bool LinkerDeviceModel::managerHas(const QString &usn)
{
    return std::ranges::any_of(manager()->gamepads(), [&usn](const QPointer<ControlManette> &device) {
        return device && usnOfSlot(device->deviceId()) == usn;
    });
}

void LinkerDeviceModel::mergeLive(ControlManette *device)
{
    const QString usn = usnOfSlot(device->deviceId());
    DeviceRecord *record = recordOf(usn);
    if (!record) {
        insertLive(usn, *device);
        return;
    }
    releasePlaceholder(*record);
    record->live = device;
    record->isConnected = true;
    refreshCapabilities(*record);
    const QPointer<LinkerDeviceModel> self(this);
    announce(usn,
             {NameRole, ConnectedRole, VideoInterfacesRole, ProductRole, ImageRole, ModelRole, JsonRole});

    record = self ? recordOf(usn) : nullptr;
    if (!record)
        return;
    ensureInterface(*record, usn);
    if (selectedByUser(*record))
        startInterface(usn);
}

void LinkerDeviceModel::insertLive(const QString &usn, ControlManette &device)
{
    DeviceRecord record;
    adopt(record, device);
    const QPointer<LinkerDeviceModel> self(this);
    beginInsertRows({}, count(), count());
    m_records.insert(usn, record);
    m_usnOrder.append(usn);
    endInsertRows();
    if (self)
        Q_EMIT countChanged();
}

void LinkerDeviceModel::adopt(DeviceRecord &record, ControlManette &device)
{
    record.live = &device;
    record.isConnected = true;
    record.productName = device.name();
    record.infoObject = identityOf(device);
    refreshCapabilities(record);
}

void LinkerDeviceModel::refreshCapabilities(DeviceRecord &record)
{
    record.capabilities = record.live ? capabilitiesOf(*record.live) : QStringList();
}

void LinkerDeviceModel::markIfAbsent(const QString &usn)
{
    DeviceRecord *record = recordOf(usn);
    if (!record || !record->isConnected || managerHas(usn))
        return;
    record->isConnected = false;
    record->live.clear();
    record->linkState = DeviceRecord::NoLink;
    if (selectedByUser(*record)) {
        ensureInterface(*record, usn);
    } else {
        releasePlaceholder(*record);
        record->iface.clear();
        record->ifaceIsStub = false;
    }
    announce(usn, {ConnectedRole, LinkStateRole, JsonRole});
}

bool LinkerDeviceModel::deleteDevice(const QString &usn)
{
    if (!m_usnOrder.contains(usn) || !m_records.contains(usn))
        return false;

    // Stopping speaks to listeners, who may not be let in between the begin and the end of a removal.
    const QPointer<LinkerDeviceModel> self(this);
    if (const QPointer<IComInterface> iface = recordOf(usn)->iface)
        iface->stop();
    if (!self)
        return true;
    const int row = indexOfUsn(usn);
    if (row < 0)
        return true;

    beginRemoveRows({}, row, row);
    DeviceRecord gone = m_records.take(usn);
    m_usnOrder.removeOne(usn);
    endRemoveRows();
    releasePlaceholder(gone);

    if (self)
        Q_EMIT countChanged();
    if (self)
        saveToDisk();
    if (self)
        syncSelected();
    return true;
}

void LinkerDeviceModel::onManagerChanged()
{
    syncWithManager();
}

void LinkerDeviceModel::onGamepadAdded(ControlManette * /*gp*/)
{
    syncWithManager();
}

void LinkerDeviceModel::onGamepadRemoved(int /*deviceId*/)
{
    syncWithManager();
}
