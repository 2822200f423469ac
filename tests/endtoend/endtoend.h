// SPDX-License-Identifier: MIT
#pragma once

#include "keptdocuments.h"
#include "reportlines.h"
#include "testmain.h"
#include "virtualbench.h"

#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <optional>

/// A host on data of its own, started as often as a test needs it.
class HostRuns
{
public:
    HostRuns() = default;
    ~HostRuns()
    {
        m_host.reset();
        keepDocuments(m_data.path());
    }
    Q_DISABLE_COPY_MOVE(HostRuns)

    /// Starts the host; one that runs is ended first.
    [[nodiscard]] bool start(const QStringList &more = {})
    {
        m_host.emplace(QStringLiteral(GAMEPAD_HOST));
        const QStringList arguments{QStringLiteral("--plugin"), QStringLiteral(GAMEPAD_PLUGIN),
                                    QStringLiteral("--data"), m_data.path()};
        return m_host->start(arguments + more, log());
    }

    HostProcess *operator->() { return &*m_host; }
    [[nodiscard]] QString data() const { return m_data.path(); }
    [[nodiscard]] QString log() const { return m_data.filePath(QStringLiteral("host.log")); }

    /// Selects the row with a click and gives the device's number once it is connected; 0 when it is not.
    [[nodiscard]] int select(const QString &usn)
    {
        if (!m_host->waitFor(reported::row(usn, {{QLatin1StringView("isConnected"), true}})))
            return 0;
        const qsizetype from = m_host->mark();
        if (!m_host->command(QStringLiteral("click ") + usn).isEmpty())
            return 0;
        const auto line = m_host->waitFor(
            [&](const QJsonObject &candidate) { return deviceIn(candidate, usn) != 0; }, from);
        return line ? deviceIn(*line, usn) : 0;
    }

    /// Waits until the device has learned a rest that is not zero everywhere and `axis` among it.
    [[nodiscard]] bool learns(int device, int axis, int rest, qsizetype from = 0)
    {
        return m_host
            ->waitFor(
                [=](const QJsonObject &line) {
                    return reported::of(QLatin1StringView("calibration"), device)(line) &&
                           line[QLatin1StringView("bias")].toArray().at(axis).toInt() == rest;
                },
                from)
            .has_value();
    }

private:
    static int deviceIn(const QJsonObject &line, const QString &usn)
    {
        for (const QJsonValue &device : line[QLatin1StringView("devices")].toArray()) {
            if (device[QLatin1StringView("usn")] == usn &&
                device[QLatin1StringView("status")] == QLatin1StringView("connected"))
                return device[QLatin1StringView("device")].toInt();
        }
        return 0;
    }

    QTemporaryDir m_data;
    std::optional<HostProcess> m_host;
};

/// A pad whose left stick rests at 2, so that a test sees when the device has learned it.
inline PadShape testPad(const std::string &name = "Pad")
{
    PadShape shape = twoStickPad(name);
    shape.axes.at(0).rest = 2.0;
    return shape;
}
