// SPDX-License-Identifier: MIT
#include "signallog.h"

#include "hostsession.h"
#include "theme.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr int mostLines = 500;
constexpr qsizetype valueReach = 8;

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
        append(Kind::Event, text, text);
    });
    connect(&session, &HostSession::valuesReceived, this, [this](const ValueBatch &batch) {
        const QString head = u"#%1 dataChanged"_s.arg(batch.device);
        append(Kind::Value, head + batch.keys.join(u' '),
               u"%1  %2"_s.arg(head, batchText(batch.keys, batch.values)));
    });
    connect(&session, &HostSession::statusReceived, this, [this](int device, int status) {
        append(Kind::Event, {}, u"#%1 statusChanged  %2"_s.arg(device).arg(statusWord(status)));
    });
    connect(&session, &HostSession::noCodeAppReceived, this, [this](int device, const QStringList &paths) {
        append(Kind::Event, {}, u"#%1 noCodeAppChanged  %2"_s.arg(device).arg(paths.join(u", "_s)));
    });
    connect(&session, &HostSession::restChanged, this, [this](int device, const QJsonArray &bias) {
        QStringList numbers;
        for (const QJsonValue &value : bias)
            numbers.append(QString::number(value.toDouble()));
        append(Kind::Event, {}, u"#%1 bias  %2"_s.arg(device).arg(numbers.join(u' ')));
    });
    connect(&session, &HostSession::finishedReceived, this,
            [this](int device) { append(Kind::Event, {}, u"#%1 finished"_s.arg(device)); });
    connect(&session, &HostSession::deviceGone, this,
            [this](int device) { append(Kind::Event, {}, u"#%1 destroyed"_s.arg(device)); });
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
        return line.kind == Kind::Value ? theme::quiet : theme::text;
    default:
        return {};
    }
}

// The row that such a line takes the place of, or -1.
qsizetype SignalLog::repeated(Kind kind, const QString &signature) const
{
    const qsizetype reach = kind == Kind::Value ? valueReach : 1;
    for (qsizetype back = 1; !signature.isEmpty() && back <= std::min(reach, m_lines.size()); ++back) {
        const Line &line = m_lines.at(m_lines.size() - back);
        if (line.kind != kind)
            return -1;
        if (line.signature == signature)
            return m_lines.size() - back;
    }
    return -1;
}

void SignalLog::append(Kind kind, const QString &signature, const QString &text)
{
    const qint64 now = m_clock.elapsed();
    const qsizetype known = repeated(kind, signature);
    if (known >= 0) {
        Line &line = m_lines[known];
        line.time = now;
        line.text = text;
        ++line.count;
        const QModelIndex place = index(static_cast<int>(known));
        Q_EMIT dataChanged(place, place);
        return;
    }
    if (m_lines.size() >= mostLines) {
        beginRemoveRows({}, 0, 0);
        m_lines.removeFirst();
        endRemoveRows();
    }
    const int row = static_cast<int>(m_lines.size());
    beginInsertRows({}, row, row);
    m_lines.append({.time = now, .kind = kind, .signature = signature, .text = text, .count = 1});
    endInsertRows();
}
