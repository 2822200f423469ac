// SPDX-License-Identifier: MIT
#include "devicepanel.h"

#include "buttonlamps.h"
#include "gauge.h"
#include "stripchart.h"
#include "theme.h"

#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr int axisCount = 8;
constexpr int gaugeColumns = 4;

QLabel *heading(const QString &text)
{
    auto *label = new QLabel(text);
    label->setObjectName("quiet"_L1);
    return label;
}
} // namespace

DevicePanel::DevicePanel(const HeldDevice &device, QWidget *parent)
    : QFrame(parent)
    , m_device(device)
    , m_lamps(new ButtonLamps)
    , m_chart(new StripChart)
    , m_name(new QLabel(device.name))
    , m_ids(new QLabel)
    , m_state(new QLabel)
{
    setObjectName("panel"_L1);
    m_name->setObjectName("title"_L1);
    m_name->setFont(theme::resized(font(), 5, true));
    m_name->setTextFormat(Qt::PlainText);
    m_ids->setObjectName("quiet"_L1);
    m_ids->setTextFormat(Qt::PlainText);

    auto *gauges = new QGridLayout;
    gauges->setHorizontalSpacing(22);
    gauges->setVerticalSpacing(12);
    for (int axis = 0; axis < axisCount; ++axis) {
        m_gauges.append(new Gauge(axis));
        gauges->addWidget(m_gauges.constLast(), axis / gaugeColumns, axis % gaugeColumns);
    }

    auto *title = new QHBoxLayout;
    title->addWidget(m_name);
    title->addStretch();
    title->addWidget(m_state);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->setSpacing(4);
    layout->addLayout(title);
    layout->addWidget(m_ids);
    layout->addSpacing(14);
    layout->addLayout(gauges);
    layout->addSpacing(14);
    layout->addWidget(heading(u"Buttons"_s));
    layout->addWidget(m_lamps);
    layout->addSpacing(12);
    layout->addWidget(heading(u"Last ten seconds"_s));
    layout->addWidget(m_chart, 1);

    setDevice(device);
}

void DevicePanel::setDevice(const HeldDevice &device)
{
    if (device.number != m_device.number)
        m_hasRest = false;
    m_device = device;
    setStatus(device.interface ? device.interface->status() : IComInterface::noCom);
}

void DevicePanel::setRow(const QString &name, const QString &ids, int buttonCount)
{
    m_name->setText(name);
    m_ids->setText(u"%1   ·   %2   ·   interface #%3"_s.arg(m_device.usn, ids).arg(m_device.number));
    m_lamps->setCount(std::max(buttonCount, m_lamps->count())); // a pad that is away tells no count
}

void DevicePanel::take(const ValueBatch &batch)
{
    for (qsizetype i = 0; i < batch.keys.size(); ++i) {
        const auto key = parseInputKey(batch.keys.at(i));
        if (!key)
            continue;
        const QVariant value = batch.values.value(i);
        if (key->isAxis && key->index < axisCount) {
            m_gauges.at(key->index)->setValue(value.toDouble());
            m_chart->addAxis(key->index, value.toDouble());
        } else if (!key->isAxis) {
            m_lamps->setPressed(key->index, value.toBool());
            m_chart->addButton(key->index, value.toBool());
        }
    }
    if (!m_hasValues) {
        m_hasValues = true;
        showState();
    }
}

void DevicePanel::setStatus(int status)
{
    m_status = status;
    if (status != IComInterface::connected) {
        m_hasValues = false;
        m_chart->interrupt();
        m_lamps->clear();
        for (Gauge *gauge : std::as_const(m_gauges))
            gauge->silence();
    }
    showState();
}

void DevicePanel::setRest(const QJsonArray &bias)
{
    m_hasRest = std::ranges::any_of(bias, [](const QJsonValue &value) { return value.toDouble() != 0.0; });
    for (int axis = 0; axis < axisCount; ++axis)
        m_gauges.at(axis)->setRest(bias.at(axis).toDouble());
    showState();
}

void DevicePanel::showState()
{
    QColor colour = theme::good;
    QString words;
    if (m_status != IComInterface::connected) {
        colour = theme::faint;
        words = u"no link"_s;
    } else if (m_hasValues) {
        words = u"values flow"_s;
    } else if (m_hasRest) {
        words = u"rest learned, no movement yet"_s;
    } else {
        colour = theme::warm;
        words = u"learning its rest: leave the sticks alone"_s;
    }
    m_state->setText(u"<span style='color:%1'>●</span>&nbsp; %2"_s.arg(colour.name(), words));
}
