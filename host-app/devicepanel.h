// SPDX-License-Identifier: MIT
#pragma once

#include "received.h"

#include <QtCore/QJsonArray>
#include <QtWidgets/QFrame>

class ButtonLamps;
class Gauge;
class QLabel;
class StripChart;

/// One selected row, live: its state, a gauge per axis, a lamp per button, and the last seconds. The
/// interface behind a row changes when its pad is pulled and returns.
class DevicePanel : public QFrame
{
    Q_OBJECT

public:
    explicit DevicePanel(const HeldDevice &device, QWidget *parent = nullptr);

    [[nodiscard]] int number() const { return m_device.number; }
    [[nodiscard]] QString usn() const { return m_device.usn; }
    void setDevice(const HeldDevice &device);
    /// The row's own words, and how many buttons it says the device has (0 when it does not say).
    void setRow(const QString &name, const QString &ids, int buttonCount);
    void take(const ValueBatch &batch);
    void setStatus(int status);
    /// `bias` as the device tells it; all of it 0 means that it has learned nothing yet.
    void setRest(const QJsonArray &bias);

private:
    void showState();

    HeldDevice m_device;
    QList<Gauge *> m_gauges;
    ButtonLamps *m_lamps;
    StripChart *m_chart;
    QLabel *m_name;
    QLabel *m_ids;
    QLabel *m_state;
    int m_status = 0;
    bool m_hasRest = false;
    bool m_hasValues = false;
};
