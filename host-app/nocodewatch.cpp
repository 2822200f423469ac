// SPDX-License-Identifier: MIT
#include "nocodewatch.h"

#include "hostsession.h"

NoCodeWatch::NoCodeWatch(HostSession &session, QObject *parent)
    : QObject(parent)
    , m_session(session)
{
    connect(&session, &HostSession::selectionReceived, this, &NoCodeWatch::readAll);
    connect(&session, &HostSession::noCodeAppReceived, this, &NoCodeWatch::read);
    connect(&session, &HostSession::valuesReceived, this, &NoCodeWatch::match);
}

void NoCodeWatch::readAll()
{
    m_entries.clear();
    for (const HeldDevice &device : m_session.devices()) {
        if (!device.interface)
            continue;
        const QStringList paths = device.interface->noCodeApp();
        for (const QString &path : paths) {
            m_entries.append(
                {.device = device.number, .deviceName = device.name, .document = readNoCodeDocument(path)});
        }
    }
    Q_EMIT documentsChanged();
}

void NoCodeWatch::read(int device, const QStringList &paths)
{
    const HeldDevice *held = m_session.device(device);
    if (!held)
        return;
    m_entries.removeIf([device](const Entry &entry) { return entry.device == device; });
    for (const QString &path : paths)
        m_entries.append({.device = device, .deviceName = held->name, .document = readNoCodeDocument(path)});
    Q_EMIT documentsChanged();
}

void NoCodeWatch::match(const ValueBatch &batch)
{
    for (qsizetype entry = 0; entry < m_entries.size(); ++entry) {
        if (m_entries.at(entry).device != batch.device)
            continue;
        const auto &bridges = m_entries.at(entry).document.bridges;
        for (qsizetype bridge = 0; bridge < bridges.size(); ++bridge) {
            if (firesOn(bridges.at(bridge), batch))
                Q_EMIT fires(entry, bridge);
        }
    }
}
