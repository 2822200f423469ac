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

// The host may let go of the model inside any of these signals.
void LinkerDeviceModel::select(const QString &usn, bool on)
{
    const QPointer<LinkerDeviceModel> self(this);
    if (m_uniqSelection && on)
        deselectOthers(usn);
    if (!self)
        return;

    DeviceRecord *record = recordOf(usn);
    if (record && selectedByUser(*record) != on) {
        record->kv[UserKey::selected] = on;
        if (on) {
            ensureInterface(*record, usn);
            startInterface(usn);
        } else {
            deselect(usn);
        }
        if (self)
            announce(usn, {SelectedRole, LinkStateRole, JsonRole});
        if (self)
            saveToDisk();
    }
    if (self)
        syncSelected();
}

void LinkerDeviceModel::deselectOthers(const QString &usn)
{
    const QPointer<LinkerDeviceModel> self(this);
    // A listener may select a row that was passed already, so the walk is made again, but not for ever.
    int walksLeft = count();
    for (bool found = true; found && walksLeft > 0; --walksLeft) {
        found = false;
        const QStringList order = m_usnOrder;
        for (const QString &other : order) {
            DeviceRecord *record = other == usn ? nullptr : recordOf(other);
            if (!record || !selectedByUser(*record))
                continue;
            found = true;
            record->kv[UserKey::selected] = false;
            stopInterface(other);
            if (self)
                announce(other, {SelectedRole, LinkStateRole, JsonRole});
            if (!self)
                return;
        }
    }
}

void LinkerDeviceModel::deselect(const QString &usn)
{
    const QPointer<LinkerDeviceModel> self(this);
    stopInterface(usn);
    DeviceRecord *record = self ? recordOf(usn) : nullptr;
    // A listener may have selected the row again while the device stopped.
    if (!record || selectedByUser(*record))
        return;
    releasePlaceholder(*record);
    record->iface.clear();
    record->ifaceIsStub = false;
}
