// SPDX-License-Identifier: MIT
#include "signallog.h"

#include "hostsession.h"
#include "theme.h"

using namespace Qt::StringLiterals;

namespace
{
constexpr int mostLines = 500;

QString selectionText(const QList<HeldDevice> &devices)
{
    QStringList names;
    for (const HeldDevice &device : devices)
        names.append(u"#%1 %2"_s.arg(device.number).arg(device.usn));
    return u"selectedInterfacesChanged  %1"_s.arg(names.isEmpty() ? u"none"_s : names.join(u", "_s));
}
} // namespace

SignalLog::SignalLog(HostSession &session, QObject *parent)
    : QAbstractListModel(parent)
{
    m_clock.start();
    connect(&session, &HostSession::selectionReceived, this, [this](const QList<HeldDevice> &devices) {
        const QString text = selectionText(devices);
        append(text, text);
    });
    connect(&session, &HostSession::valuesReceived, this, [this](const ValueBatch &batch) {
        const QString head = u"#%1 dataChanged"_s.arg(batch.device);
        append(head + batch.keys.join(u' '), u"%1  %2"_s.arg(head, batchText(batch.keys, batch.values)));
    });
    connect(&session, &HostSession::statusReceived, this, [this](int device, int status) {
        append({}, u"#%1 statusChanged  %2"_s.arg(device).arg(statusWord(status)));
    });
    connect(&session, &HostSession::noCodeAppReceived, this, [this](int device, const QStringList &paths) {
        append({}, u"#%1 noCodeAppChanged  %2"_s.arg(device).arg(paths.join(u", "_s)));
    });
    connect(&session, &HostSession::restChanged, this, [this](int device, const QJsonArray &bias) {
        QStringList numbers;
        for (const QJsonValue &value : bias)
            numbers.append(QString::number(value.toDouble()));
        append({}, u"#%1 bias  %2"_s.arg(device).arg(numbers.join(u' ')));
    });
    connect(&session, &HostSession::finishedReceived, this,
            [this](int device) { append({}, u"#%1 finished"_s.arg(device)); });
    connect(&session, &HostSession::deviceGone, this,
            [this](int device) { append({}, u"#%1 destroyed"_s.arg(device)); });
}

int SignalLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

QVariant SignalLog::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_lines.size())
        return {};
    const Line &line = m_lines.at(index.row());
    switch (role) {
    case Qt::DisplayRole: {
        const QString times = line.count > 1 ? u"%1×"_s.arg(line.count) : QString();
        return u"%1 %2  %3"_s.arg(static_cast<double>(line.time) / 1000.0, 7, 'f', 2)
            .arg(times, 5)
            .arg(line.text);
    }
    case Qt::ToolTipRole:
        return line.text;
    case Qt::ForegroundRole:
        return line.text.contains("dataChanged"_L1) ? theme::quiet : theme::text;
    default:
        return {};
    }
}

void SignalLog::append(const QString &signature, const QString &text)
{
    const qint64 now = m_clock.elapsed();
    const int last = static_cast<int>(m_lines.size()) - 1;
    if (last >= 0 && !signature.isEmpty() && m_lines.constLast().signature == signature) {
        Line &line = m_lines.last();
        line.time = now;
        line.text = text;
        ++line.count;
        Q_EMIT dataChanged(index(last), index(last));
        return;
    }
    if (m_lines.size() >= mostLines) {
        beginRemoveRows({}, 0, 0);
        m_lines.removeFirst();
        endRemoveRows();
    }
    const int row = static_cast<int>(m_lines.size());
    beginInsertRows({}, row, row);
    m_lines.append({.time = now, .signature = signature, .text = text, .count = 1});
    endInsertRows();
}
