// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QElapsedTimer>
#include <QtCore/QList>

class HostSession;

/// Every signal of the plugin as one line of text, newest last. A line that repeats the one before it, with
/// other values at most, takes its place and counts, since a held control repeats itself a hundred times a
/// second. Old lines go.
class SignalLog : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit SignalLog(HostSession &session, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    /// `signature` says what makes two lines the same but for their values.
    void append(const QString &signature, const QString &text);

private:
    struct Line
    {
        qint64 time = 0;
        QString signature;
        QString text;
        int count = 1;
    };

    QList<Line> m_lines;
    QElapsedTimer m_clock;
};
