// SPDX-License-Identifier: MIT
#include "report.h"

#include "hostsession.h"
#include "icominterfacemodelprovider.h"
#include "nocodewatch.h"

#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

namespace
{
QJsonObject rowJson(const HostSession &session, int row)
{
    QJsonObject json;
    for (const char *role : {"usn", "name", "product", "ip", "modelString", "selected", "isConnected",
                             "linkState", "videoInterfaces"})
        json.insert(QLatin1StringView(role), QJsonValue::fromVariant(session.rowData(row, role)));
    return json;
}

QJsonObject deviceJson(const HeldDevice &device)
{
    QJsonObject json{{"device"_L1, device.number}, {"usn"_L1, device.usn}, {"name"_L1, device.name}};
    if (device.interface) {
        json.insert("type"_L1, deviceTypeWord(device.interface->deviceType()));
        json.insert("status"_L1, statusWord(device.interface->status()));
        json.insert("json"_L1, QJsonDocument::fromJson(device.interface->deviceJson().toUtf8()).object());
    }
    return json;
}
} // namespace

Report::Report(HostSession &session, NoCodeWatch &documents, QFile &output, QObject *parent)
    : QObject(parent)
    , m_session(session)
    , m_output(output)
{
    m_clock.start();
    connect(&session, &HostSession::rowsChanged, this, &Report::tellRows);
    connect(&session, &HostSession::selectionReceived, this,
            [this](const QList<HeldDevice> &devices, const QJsonArray &infos) {
                QJsonArray told;
                for (const HeldDevice &device : devices)
                    told.append(deviceJson(device));
                write("selection", {{"devices"_L1, told}, {"infos"_L1, infos}});
            });
    connect(&session, &HostSession::valuesReceived, this, [this](const ValueBatch &batch) {
        writeOf("data", batch.device,
                {{"form"_L1, "numeric"_L1},
                 {"deviceId"_L1, batch.deviceId},
                 {"catId"_L1, batch.catId},
                 {"keys"_L1, QJsonArray::fromStringList(batch.keys)},
                 {"values"_L1, QJsonArray::fromVariantList(batch.values)}});
    });
    connect(&session, &HostSession::namedValuesReceived, this,
            [this](int device, const QString &deviceName, const QString &catName, const QStringList &keys,
                   const QVariantList &values) {
                writeOf("data", device,
                        {{"form"_L1, "text"_L1},
                         {"deviceName"_L1, deviceName},
                         {"catName"_L1, catName},
                         {"keys"_L1, QJsonArray::fromStringList(keys)},
                         {"values"_L1, QJsonArray::fromVariantList(values)}});
            });
    connect(&session, &HostSession::statusReceived, this, [this](int device, int status) {
        writeOf("status", device, {{"status"_L1, statusWord(status)}});
    });
    connect(&session, &HostSession::restChanged, this, [this](int device, const QJsonArray &bias) {
        writeOf("calibration", device, {{"bias"_L1, bias}});
    });
    connect(&session, &HostSession::noCodeAppReceived, this, [this](int device, const QStringList &paths) {
        writeOf("noCodeApp", device, {{"paths"_L1, QJsonArray::fromStringList(paths)}});
    });
    connect(&session, &HostSession::finishedReceived, this,
            [this](int device) { writeOf("finished", device); });
    connect(&session, &HostSession::deviceGone, this, [this](int device) { writeOf("gone", device); });
    connect(&documents, &NoCodeWatch::fires, this, [this, &documents](qsizetype entry, qsizetype index) {
        const auto &from = documents.entries().at(entry);
        const Bridge &bridge = from.document.bridges.at(index);
        writeOf(
            "fires", from.device,
            {{"action"_L1, bridge.action}, {"key"_L1, bridge.key}, {"tasks"_L1, tasksText(bridge.tasks)}});
    });
}

void Report::tellPlugin(const QString &file)
{
    write("plugin", {{"file"_L1, file},
                     {"provider"_L1, m_session.provider()->providerName()},
                     {"family"_L1, m_session.provider()->interfaceName()}});
    tellRows();
}

void Report::tellDone(const QString &command, const QString &problem)
{
    write("done", {{"command"_L1, command}, {"ok"_L1, problem.isEmpty()}, {"problem"_L1, problem}});
}

void Report::tellRows()
{
    QJsonArray rows;
    for (int row = 0; row < m_session.model()->rowCount(); ++row)
        rows.append(rowJson(m_session, row));
    if (m_rowsTold && rows == m_rows)
        return;
    m_rows = rows;
    m_rowsTold = true;
    write("rows", {{"rows"_L1, rows}});
}

void Report::writeOf(const char *what, int device, QJsonObject line)
{
    line.insert("device"_L1, device);
    write(what, std::move(line));
}

void Report::write(const char *what, QJsonObject line)
{
    line.insert("what"_L1, QLatin1StringView(what));
    line.insert("at"_L1, m_clock.elapsed());
    m_output.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    m_output.flush();
}
