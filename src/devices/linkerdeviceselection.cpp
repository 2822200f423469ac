// SPDX-License-Identifier: MIT
#include "diagnostics.h"
#include "linkerdevicemodel.h"

bool LinkerDeviceModel::isSelected(const QString &usn) const
{
    const auto found = m_records.constFind(usn);
    return found != m_records.cend() && selectedByUser(*found);
}

void LinkerDeviceModel::setSelected(const QString &usn, bool sel)
{
    const int row = indexOfUsn(usn);
    if (row >= 0)
        setData(index(row), sel, SelectedRole);
}

void LinkerDeviceModel::collectSelected(QList<IComInterface *> &ifaces, QJsonArray &infos)
{
    ifaces.clear();
    infos = {};
    for (const QString &usn : std::as_const(m_usnOrder)) {
        DeviceRecord *record = recordOf(usn);
        if (!record || !selectedByUser(*record))
            continue;
        ensureInterface(*record, usn);
        if (!record->iface)
            continue;
        ifaces.append(record->iface);
        infos.append(record->infoObject);
    }
}

void LinkerDeviceModel::syncSelected()
{
    QList<IComInterface *> ifaces;
    QJsonArray infos;
    collectSelected(ifaces, infos);
    qCDebug(diagnostics) << "****************************fffffffffffffffffffffffffff***********************"
                         << ifaces;
    Q_EMIT selectedInterfacesChanged(ifaces, infos);
}

void LinkerDeviceModel::select(const QString &usn, bool on)
{
    if (m_uniqSelection && on)
        deselectOthers(usn);

    DeviceRecord *record = recordOf(usn);
    if (record && selectedByUser(*record) != on) {
        record->kv[UserKey::selected] = on;
        if (on) {
            ensureInterface(*record, usn);
            startInterface(usn);
        } else {
            deselect(usn);
        }
        announce(usn, {SelectedRole, LinkStateRole, JsonRole});
        saveToDisk();
    }
    syncSelected();
}

void LinkerDeviceModel::deselectOthers(const QString &usn)
{
    const QStringList order = m_usnOrder;
    for (const QString &other : order) {
        DeviceRecord *record = other == usn ? nullptr : recordOf(other);
        if (!record || !selectedByUser(*record))
            continue;
        record->kv[UserKey::selected] = false;
        stopInterface(other);
        announce(other, {SelectedRole, LinkStateRole, JsonRole});
    }
}

void LinkerDeviceModel::deselect(const QString &usn)
{
    stopInterface(usn);
    DeviceRecord *record = recordOf(usn);
    // A listener may have selected the row again while the device stopped.
    if (!record || selectedByUser(*record))
        return;
    releasePlaceholder(*record);
    record->iface.clear();
    record->ifaceIsStub = false;
}
