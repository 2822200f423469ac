// SPDX-License-Identifier: MIT
#pragma once

#include "received.h"

#include <QtWidgets/QScrollArea>

class DevicePanel;
class HostSession;
class QLabel;
class QVBoxLayout;

/// The selected devices, one below the other, or a word on how to select one.
class LivePanel : public QScrollArea
{
    Q_OBJECT

public:
    explicit LivePanel(HostSession &session, QWidget *parent = nullptr);

private:
    void showDevices(const QList<HeldDevice> &devices);
    void showRows();
    [[nodiscard]] DevicePanel *panel(int device) const;

    HostSession &m_session;
    QVBoxLayout *m_layout;
    QLabel *m_invitation;
    QList<DevicePanel *> m_panels;
};
