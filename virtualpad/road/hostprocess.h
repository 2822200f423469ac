// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <optional>

/// The stand-in host as a process of its own, driven by commands and heard through its report. It ends with
/// this object, and with this process however that ends. Waiting needs no event loop.
class HostProcess
{
public:
    using Condition = std::function<bool(const QJsonObject &line)>;

    explicit HostProcess(const QString &program);
    ~HostProcess();

    /// Starts the host with its report and commands on, and waits until it has loaded the plugin. What it
    /// writes to standard error is appended to `logFile`.
    [[nodiscard]] bool start(const QStringList &arguments, const QString &logFile);
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }

    /// Sends one command and waits for its answer: what was wrong, empty when it was carried out.
    [[nodiscard]] QString command(const QString &text);
    /// Ends the host as its window's close does; true when it left with 0.
    [[nodiscard]] bool quit();
    /// Ends it without giving it a chance.
    void kill();

    /// How many lines there are so far, to wait for later ones only.
    [[nodiscard]] qsizetype mark();
    /// The first line at or after `from` that `condition` takes, when it is there or comes in time.
    [[nodiscard]] std::optional<QJsonObject> waitFor(const Condition &condition, qsizetype from = 0);
    /// The last line of that kind so far; empty when there is none.
    [[nodiscard]] QJsonObject last(QLatin1StringView what) const;
    [[nodiscard]] const QList<QJsonObject> &lines() const { return m_lines; }

private:
    void takeLines();

    QProcess m_process;
    QList<QJsonObject> m_lines;
};
