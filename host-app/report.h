// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QObject>

class HostSession;
class NoCodeWatch;

/// Writes each thing that the host received as one line of compact JSON. Every line has "what" and "at",
/// milliseconds since the start; keys stand in alphabetical order. What programs read stays as it is:
///
///   plugin       file, provider, family
///   rows         rows: usn, name, product, ip, modelString, selected, isConnected, linkState,
///   videoInterfaces selection    devices: device, usn, name, type, status, json (the device's own); infos
///   data         device, form "numeric" with deviceId, catId, or "text" with deviceName, catName; keys,
///   values status       device, status ("noCom", "connected") calibration  device, bias (8 numbers; 0 stands
///   for not learned, too) noCodeApp    device, paths fires        device, action, key, tasks (text)
///   finished, gone   device
///   done         command, ok, problem
///
/// A "device" is the number of an interface object, counted from 1 in the order in which the host met them.
class Report : public QObject
{
    Q_OBJECT

public:
    /// `output` is open for writing and outlives the report.
    Report(HostSession &session, NoCodeWatch &documents, QFile &output, QObject *parent = nullptr);

    void tellPlugin(const QString &file);
    void tellDone(const QString &command, const QString &problem);

private:
    void tellRows();
    void write(const char *what, QJsonObject line);
    void writeOf(const char *what, int device, QJsonObject line = {});

    HostSession &m_session;
    QFile &m_output;
    QElapsedTimer m_clock;
    QJsonArray m_rows;
    bool m_rowsTold = false;
};
