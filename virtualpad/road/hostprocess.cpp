// SPDX-License-Identifier: MIT
#include "hostprocess.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QJsonDocument>

#include <csignal>
#include <ranges>

#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace
{
// Far beyond what anything takes on a slow machine under sanitizers: only a fault is as late.
constexpr int limitMs = 20'000;
} // namespace

HostProcess::HostProcess(const QString &program)
{
    m_process.setProgram(program);
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

// The end of its commands ends the host.
HostProcess::~HostProcess()
{
    m_process.closeWriteChannel();
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(limitMs))
        kill();
}

void HostProcess::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

bool HostProcess::start(const QStringList &arguments, const QString &logFile)
{
    m_process.setArguments(arguments + QStringList{u"--report"_s, u"--commands"_s});
    m_process.setStandardErrorFile(logFile, QIODevice::Append);
    m_process.start();
    return m_process.waitForStarted() &&
           waitFor([](const QJsonObject &line) { return line["what"_L1] == "plugin"_L1; }, mark());
}

QString HostProcess::command(const QString &text)
{
    const qsizetype from = mark();
    m_process.write(text.toUtf8() + '\n');
    const auto answer = waitFor(
        [&](const QJsonObject &line) { return line["what"_L1] == "done"_L1 && line["command"_L1] == text; },
        from);
    return answer ? (*answer)["problem"_L1].toString() : u"no answer"_s;
}

bool HostProcess::quit()
{
    if (!command(u"quit"_s).isEmpty())
        return false;
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(limitMs))
        return false;
    takeLines();
    return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}

qsizetype HostProcess::mark()
{
    takeLines();
    return m_lines.size();
}

std::optional<QJsonObject> HostProcess::waitFor(const Condition &condition, qsizetype from)
{
    const QDeadlineTimer deadline(limitMs);
    for (;;) {
        for (; from < m_lines.size(); ++from) {
            if (condition(m_lines.at(from)))
                return m_lines.at(from);
        }
        const bool wasRunning = isRunning();
        if (!m_process.waitForReadyRead(static_cast<int>(deadline.remainingTime())) &&
            (deadline.hasExpired() || !wasRunning))
            return {};
        takeLines();
    }
}

QJsonObject HostProcess::last(QLatin1StringView what) const
{
    for (const QJsonObject &line : std::views::reverse(m_lines)) {
        if (line["what"_L1] == what)
            return line;
    }
    return {};
}

void HostProcess::takeLines()
{
    // What lies in the pipe already was said before now.
    while (m_process.waitForReadyRead(0)) {}
    while (m_process.canReadLine())
        m_lines.append(QJsonDocument::fromJson(m_process.readLine()).object());
}
