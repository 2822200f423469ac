// SPDX-License-Identifier: MIT
#include "stripchart.h"

#include "theme.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 spanMs = 10'000;
constexpr int frameMs = 40;
constexpr int scaleWidth = 34;
constexpr int timeHeight = 18;
constexpr int buttonRow = 5;
constexpr int buttonRows = 4;
} // namespace

StripChart::StripChart(QWidget *parent)
    : QWidget(parent)
    , m_axes(spanMs)
    , m_buttons(spanMs)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_clock.start();
    connect(&m_frames, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

void StripChart::addAxis(int axis, double value)
{
    m_axes.append(axis, m_clock.elapsed(), value);
}

void StripChart::addButton(int button, bool pressed)
{
    m_buttons.append(button, m_clock.elapsed(), pressed ? 1.0 : 0.0);
}

void StripChart::interrupt()
{
    m_axes.interrupt(m_clock.elapsed());
    m_buttons.interrupt(m_clock.elapsed());
}

void StripChart::showEvent(QShowEvent *event)
{
    m_frames.start(frameMs);
    QWidget::showEvent(event);
}

void StripChart::hideEvent(QHideEvent *event)
{
    m_frames.stop();
    QWidget::hideEvent(event);
}

double StripChart::across(const QRectF &area, qint64 time) const
{
    const double age = static_cast<double>(m_now - time) / static_cast<double>(spanMs);
    return area.right() - std::clamp(age, 0.0, 1.0) * area.width();
}

void StripChart::paintEvent(QPaintEvent *)
{
    m_now = m_clock.elapsed();
    m_axes.forgetBefore(m_now);
    m_buttons.forgetBefore(m_now);

    QPainter painter(this);
    painter.setFont(theme::figures(font()));
    const QRectF area = QRectF(rect()).adjusted(scaleWidth, 8, -1, -timeHeight - buttonRows * buttonRow - 6);
    const QRectF buttons(area.left(), area.bottom() + 6, area.width(), buttonRows * buttonRow);
    paintGrid(painter, area);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(area.adjusted(0, -2, 0, buttons.height() + 8));
    paintAxes(painter, area);
    paintButtons(painter, buttons);
}

void StripChart::paintGrid(QPainter &painter, const QRectF &area) const
{
    const int textHeight = painter.fontMetrics().height();
    for (const int value : {100, 50, 0, -50, -100}) {
        const double y = area.center().y() - value / 200.0 * area.height();
        painter.setPen(QPen(theme::line, 1, value == 0 ? Qt::SolidLine : Qt::DotLine));
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        painter.setPen(theme::faint);
        painter.drawText(QRectF(0, y - textHeight / 2.0, scaleWidth - 6, textHeight),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(value));
    }
    for (int second = 0; second <= 10; second += 2) {
        const double x = area.right() - second / 10.0 * area.width();
        const Qt::Alignment side = second == 0    ? Qt::AlignRight
                                   : second == 10 ? Qt::AlignLeft
                                                  : Qt::AlignHCenter;
        const QRectF place(second == 10  ? x
                           : second == 0 ? x - 60
                                         : x - 30,
                           height() - timeHeight, 60, timeHeight);
        painter.setPen(theme::faint);
        painter.drawText(place, static_cast<int>((side | Qt::AlignVCenter).toInt()),
                         second == 0 ? u"now"_s : u"-%1 s"_s.arg(second));
    }
}

void StripChart::paintAxes(QPainter &painter, const QRectF &area) const
{
    const auto &lines = m_axes.lines();
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        if (line->isEmpty())
            continue;
        const auto point = [&](qint64 time, double value) {
            return QPointF(across(area, time), area.center().y() - value / 200.0 * area.height());
        };
        QPainterPath path;
        for (qsizetype i = 0; i < line->size(); ++i) {
            if (std::isnan(line->at(i).value))
                continue;
            const qint64 end = i + 1 < line->size() ? line->at(i + 1).time : m_now;
            const QPointF start = point(line->at(i).time, line->at(i).value);
            if (i == 0 || std::isnan(line->at(i - 1).value))
                path.moveTo(start);
            else
                path.lineTo(start);
            path.lineTo(point(end, line->at(i).value));
        }
        painter.setPen(QPen(theme::axisColour(line.key()), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(path);
    }
}

// Buttons share a few rows, so that many of them stay readable in little height.
void StripChart::paintButtons(QPainter &painter, const QRectF &area) const
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::good);
    const auto &lines = m_buttons.lines();
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        for (qsizetype i = 0; i < line->size(); ++i) {
            if (line->at(i).value != 1.0)
                continue;
            const double from = across(area, line->at(i).time);
            const double to = i + 1 < line->size() ? across(area, line->at(i + 1).time) : area.right();
            const double y = area.top() + (line.key() % buttonRows) * buttonRow;
            painter.drawRoundedRect(QRectF(from, y, std::max(2.0, to - from), buttonRow - 2), 1.5, 1.5);
        }
    }
}
