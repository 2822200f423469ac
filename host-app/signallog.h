// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QElapsedTimer>
#include <QtCore/QList>

class HostSession;

/// Every signal of the plugin as one line of text, newest last. A line that repeats the one before it takes
/// its place and counts. Values do so within the last few lines, since several held controls repeat
/// themselves a hundred times a second each. Old lines go.
class SignalLog : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit SignalLog(HostSession &session, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    enum class Kind { Event, Value };

    /// `signature` says what makes two lines the same but for their values; empty for a line that never is.
    void append(Kind kind, const QString &signature, const QString &text);

private:
    struct Line
    {
        qint64 time = 0;
        Kind kind = Kind::Event;
        QString signature;
        QString text;
        int count = 1;
    };

    [[nodiscard]] qsizetype repeated(Kind kind, const QString &signature) const;

    QList<Line> m_lines;
    QElapsedTimer m_clock;
};
