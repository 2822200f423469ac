// SPDX-License-Identifier: MIT
#include "livepanel.h"

#include "devicepanel.h"
#include "hostsession.h"
#include "theme.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
// A row tells its controls as entries like "Buttons|btn://11".
int buttonCount(const QStringList &controls)
{
    for (const QString &entry : controls) {
        const qsizetype at = entry.indexOf("|btn://"_L1);
        if (at >= 0)
            return entry.sliced(at + 7).toInt();
    }
    return 0;
}
} // namespace

LivePanel::LivePanel(HostSession &session, QWidget *parent)
    : QScrollArea(parent)
    , m_session(session)
    , m_invitation(new QLabel(u"Click a gamepad at the left to see it live."_s))
{
    auto *content = new QWidget;
    m_layout = new QVBoxLayout(content);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(14);
    m_invitation->setObjectName("quiet"_L1);
    m_invitation->setAlignment(Qt::AlignCenter);
    m_layout->addWidget(m_invitation, 1);
    setWidget(content);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    connect(&session, &HostSession::selectionReceived, this, &LivePanel::showDevices);
    connect(&session, &HostSession::rowsChanged, this, &LivePanel::showRows);
    connect(&session, &HostSession::valuesReceived, this, [this](const ValueBatch &batch) {
        if (DevicePanel *found = panel(batch.device))
            found->take(batch);
    });
    connect(&session, &HostSession::statusReceived, this, [this](int device, int status) {
        if (DevicePanel *found = panel(device))
            found->setStatus(status);
    });
    connect(&session, &HostSession::restChanged, this, [this](int device, const QJsonArray &bias) {
        if (DevicePanel *found = panel(device))
            found->setRest(bias);
    });
}

// The selection is announced often without being another one, so panels of rows that stay are kept.
void LivePanel::showDevices(const QList<HeldDevice> &devices)
{
    QList<DevicePanel *> panels;
    for (const HeldDevice &device : devices) {
        const auto known = std::ranges::find(m_panels, device.usn, &DevicePanel::usn);
        DevicePanel *shown =
            known == m_panels.end() ? new DevicePanel(device) : m_panels.takeAt(known - m_panels.begin());
        shown->setDevice(device);
        panels.append(shown);
    }
    for (DevicePanel *gone : std::as_const(m_panels)) {
        m_layout->removeWidget(gone);
        gone->hide();
        gone->deleteLater();
    }
    m_panels = panels;
    for (DevicePanel *shown : std::as_const(m_panels))
        m_layout->addWidget(shown, 1);
    m_invitation->setVisible(m_panels.isEmpty());
    showRows();
}

void LivePanel::showRows()
{
    for (const HeldDevice &device : m_session.devices()) {
        DevicePanel *found = panel(device.number);
        const int row = m_session.rowOf(device.usn);
        if (!found || row < 0)
            continue;
        found->setRow(m_session.rowData(row, "name").toString(), m_session.rowData(row, "ip").toString(),
                      buttonCount(m_session.rowData(row, "videoInterfaces").toStringList()));
    }
}

DevicePanel *LivePanel::panel(int device) const
{
    const auto found = std::ranges::find(m_panels, device, &DevicePanel::number);
    return found == m_panels.end() ? nullptr : *found;
}
