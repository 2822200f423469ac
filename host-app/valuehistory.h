// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QtTypes>

/// The last seconds of some values that hold until the next one comes. Times are in milliseconds and rise.
class ValueHistory
{
public:
    struct Sample
    {
        qint64 time = 0;
        double value = 0.0;
        bool operator==(const Sample &) const = default;
    };

    explicit ValueHistory(qint64 span)
        : m_span(span)
    {}

    void append(int line, qint64 time, double value);
    /// From `time` on, no line has a value until its next one: each gets a sample that is not a number.
    void interrupt(qint64 time);
    /// Drops what no longer shows at `now`. The last sample before the span stays: its value still holds.
    void forgetBefore(qint64 now);
    void clear() { m_lines.clear(); }

    [[nodiscard]] qint64 span() const { return m_span; }
    [[nodiscard]] const QMap<int, QList<Sample>> &lines() const { return m_lines; }

private:
    qint64 m_span;
    QMap<int, QList<Sample>> m_lines;
};
