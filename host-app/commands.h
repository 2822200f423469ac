// SPDX-License-Identifier: MIT
#pragma once

#include "hand.h"

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>

class HostSession;
class HostWindow;
class QSocketNotifier;

/// Carries out the commands that the program's help lists. Where the platform allows it, they are read from
/// standard input, whose end quits the program.
class Commands : public QObject
{
    Q_OBJECT

public:
    Commands(HostSession &session, HostWindow &window, QObject *parent = nullptr);

    /// Begins to read standard input. False where that is not possible.
    [[nodiscard]] bool listen();
    /// One line; `done` follows.
    void run(const QString &line);

Q_SIGNALS:
    /// `problem` is empty when the command was carried out.
    void done(const QString &command, const QString &problem);

private:
    void readInput();
    void work(const QString &line, const QString &gesture);
    [[nodiscard]] QString carryOut(const QString &word, const QString &rest);

    HostSession &m_session;
    HostWindow &m_window;
    Hand m_hand;
    QSocketNotifier *m_notifier = nullptr;
    QByteArray m_pending;
};
