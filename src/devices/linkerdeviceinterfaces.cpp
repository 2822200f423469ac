// SPDX-License-Identifier: MIT
#include "deviceidentity.h"
#include "linkerdevicemodel.h"

void LinkerDeviceModel::ensureInterface(DeviceRecord &record, const QString &usn)
{
    if (record.live) {
        releasePlaceholder(record);
        if (record.iface.data() != record.live.data())
            bindInterface(record, usn);
        return;
    }
    const bool held = record.ifaceIsStub && record.iface;
    if (held || !selectedByUser(record))
        return;
    auto *placeholder = new ControlManette(placeholderSlot(record.infoObject), this);
    placeholder->stop();
    record.iface = placeholder;
    record.ifaceIsStub = true;
    record.linkState = DeviceRecord::NoLink;
}

// A device that is bound a second time speaks twice from then on. That is harmless, since both calls look at
// the record as it is.
void LinkerDeviceModel::bindInterface(DeviceRecord &record, const QString &usn)
{
    record.iface = record.live.data();
    record.ifaceIsStub = false;
    follow(*record.live, usn);
}

void LinkerDeviceModel::follow(ControlManette &device, const QString &usn)
{
    connect(&device, &ControlManette::connectedChanged, this, [this, usn] { onLinkChanged(usn); });
    connect(&device, &QObject::destroyed, this, [this, usn] { onDeviceDestroyed(usn); });
}

// The host may hold the placeholder until it hears of the change, so it goes later.
void LinkerDeviceModel::releasePlaceholder(DeviceRecord &record)
{
    if (!record.ifaceIsStub || !record.iface)
        return;
    record.iface->deleteLater();
    record.iface.clear();
    record.ifaceIsStub = false;
}

void LinkerDeviceModel::startInterface(const QString &usn)
{
    DeviceRecord *record = recordOf(usn);
    if (!record || !record->iface || !record->live)
        return;
    const QPointer<LinkerDeviceModel> self(this);
    record->linkState = DeviceRecord::Starting;
    announce(usn, {LinkStateRole});
    // A listener may have deselected or deleted the row, or the model.
    record = self ? recordOf(usn) : nullptr;
    if (record && record->iface && record->live && selectedByUser(*record))
        record->live->start({});
}

void LinkerDeviceModel::stopInterface(const QString &usn)
{
    DeviceRecord *record = recordOf(usn);
    if (!record || !record->iface)
        return;
    const QPointer<LinkerDeviceModel> self(this);
    record->iface->stop();
    // A listener may have deleted the row or the model, or selected the row again.
    record = self ? recordOf(usn) : nullptr;
    if (record && !selectedByUser(*record))
        record->linkState = DeviceRecord::NoLink;
}

void LinkerDeviceModel::onLinkChanged(const QString &usn)
{
    const QPointer<LinkerDeviceModel> self(this);
    if (DeviceRecord *record = recordOf(usn)) {
        const bool linked = record->live && record->live->isConnected();
        record->linkState = linked ? DeviceRecord::Linked : DeviceRecord::NoLink;
        announce(usn, {LinkStateRole});
    }
    if (self)
        syncSelected();
}

void LinkerDeviceModel::onDeviceDestroyed(const QString &usn)
{
    // A record that has a living device by now has nothing to do with the one that went.
    if (DeviceRecord *record = recordOf(usn); record && !record->live) {
        record->isConnected = false;
        record->linkState = DeviceRecord::NoLink;
        ensureInterface(*record, usn);
    }
    syncSelected();
}
