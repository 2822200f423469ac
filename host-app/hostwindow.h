// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QMainWindow>

class DeviceList;
class HostSession;
class NoCodeWatch;
class QCheckBox;

/// This host's window: the device list at the left, the selected devices live in the middle, documents and
/// signals at the right.
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    HostWindow(HostSession &session, NoCodeWatch &documents, QWidget *parent = nullptr);

    [[nodiscard]] DeviceList &list() { return *m_list; }
    /// Shows the list's properties as they are now.
    void showProperties();
    /// Shows the plugin's configuration window.
    void configure();

private:
    QWidget *deviceColumn();
    QWidget *rightColumn(NoCodeWatch &documents);

    HostSession &m_session;
    DeviceList *m_list;
    QCheckBox *m_single;
};
