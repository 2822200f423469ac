// SPDX-License-Identifier: MIT
#include "linkerdevicemodel.h"

#include "gamepadmanager.h"

#include <QtCore/QTimer>

// NOLINTNEXTLINE(modernize-pass-by-value): a shared text is copied by counting
LinkerDeviceModel::LinkerDeviceModel(const QString &context, QObject *parent)
    : QAbstractListModel(parent)
    , m_context(context)
{
    loadFromDisk();
    QTimer::singleShot(0, this, &LinkerDeviceModel::syncWithManager);
}

LinkerDeviceModel::~LinkerDeviceModel()
{
    saveToDisk();
}

void LinkerDeviceModel::setUniqSelection(bool uniqSelection)
{
    if (m_uniqSelection == uniqSelection)
        return;
    m_uniqSelection = uniqSelection;
    Q_EMIT uniqSelectionChanged();
}

void LinkerDeviceModel::setAutoDetect(bool autoDetect)
{
    if (m_autoDetect == autoDetect)
        return;
    const QPointer<LinkerDeviceModel> self(this);
    m_autoDetect = autoDetect;
    Q_EMIT autoDetectChanged();
    // A listener that turned it back has seen to the timers already.
    if (!self || m_autoDetect != autoDetect)
        return;
    if (!autoDetect) {
        manager()->stopTimers();
        return;
    }
    manager()->setPollIntervalMs(100);
    if (!self)
        return;
    // One that turned it off during the discovery in there was too early for the timers.
    if (m_autoDetect)
        syncWithManager();
    else
        manager()->stopTimers();
}

void LinkerDeviceModel::setContext(const QString &context)
{
    if (m_context == context)
        return;
    const QPointer<LinkerDeviceModel> self(this);
    m_context = context;
    Q_EMIT contextChanged();
    if (self)
        loadFromDisk();
    if (self)
        Q_EMIT previousCountChanged();
    if (self)
        syncSelected();
}

int LinkerDeviceModel::indexOfUsn(const QString &usn) const
{
    return static_cast<int>(m_usnOrder.indexOf(usn));
}

QString LinkerDeviceModel::usnForRow(int row) const
{
    return m_usnOrder.value(row);
}

QObject *LinkerDeviceModel::interfaceForRow(int row) const
{
    const DeviceRecord *record = recordAt(row);
    return record ? record->iface.data() : nullptr;
}

DeviceRecord *LinkerDeviceModel::recordOf(const QString &usn)
{
    const auto found = m_records.find(usn);
    return found == m_records.end() ? nullptr : &*found;
}

const DeviceRecord *LinkerDeviceModel::recordAt(int row) const
{
    if (row < 0 || row >= m_usnOrder.size())
        return nullptr;
    const auto found = m_records.constFind(m_usnOrder.at(row));
    return found == m_records.cend() ? nullptr : &*found;
}

void LinkerDeviceModel::announce(const QString &usn, const QList<int> &roles)
{
    const int row = indexOfUsn(usn);
    if (row >= 0)
        Q_EMIT dataChanged(index(row), index(row), roles);
}
