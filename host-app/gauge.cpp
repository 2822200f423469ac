// SPDX-License-Identifier: MIT
#include "gauge.h"

#include "theme.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr std::array axisNames{"X", "Y", "Z", "R", "U", "V", "PovX", "PovY"};
constexpr int barHeight = 8;
constexpr double triggerRest = 99.5;
} // namespace

Gauge::Gauge(int axis, QWidget *parent)
    : QWidget(parent)
    , m_axis(axis)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Gauge::setValue(double value)
{
    if (m_value == value)
        return;
    m_value = value;
    update();
}

void Gauge::setRest(double rest)
{
    m_rest = rest;
    update();
}

void Gauge::silence()
{
    m_value.reset();
    update();
}

QSize Gauge::sizeHint() const
{
    return {104, fontMetrics().height() + barHeight + 14};
}

void Gauge::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour = theme::axisColour(m_axis);
    const int textHeight = fontMetrics().height();
    const QRect texts(0, 0, width(), textHeight);

    painter.setPen(m_value ? theme::text : theme::faint);
    painter.drawText(texts, Qt::AlignLeft | Qt::AlignVCenter, u"joy_%1"_s.arg(m_axis));
    const int keyWidth = fontMetrics().horizontalAdvance(u"joy_0  "_s);
    painter.setPen(theme::faint);
    painter.drawText(texts.adjusted(keyWidth, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     QString::fromLatin1(axisNames.at(static_cast<std::size_t>(m_axis) % axisNames.size())));
    painter.setFont(theme::figures(font()));
    painter.setPen(m_value ? colour : theme::faint);
    painter.drawText(texts, Qt::AlignRight | Qt::AlignVCenter,
                     m_value ? QString::number(*m_value, 'f', 1) : u"–"_s);

    const QRectF bar(0.5, textHeight + 6.5, width() - 1.0, barHeight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::ground);
    painter.drawRoundedRect(bar, barHeight / 2.0, barHeight / 2.0);

    const bool isTrigger = std::abs(m_rest) >= triggerRest;
    const double from = isTrigger ? 0.0 : -100.0;
    const auto place = [&](double value) {
        return bar.left() + (std::clamp(value, from, 100.0) - from) / (100.0 - from) * bar.width();
    };
    if (m_value) {
        const double zero = place(0.0);
        const double end = place(*m_value);
        painter.setBrush(colour);
        painter.setClipRect(QRectF(std::min(zero, end), bar.top(), std::abs(end - zero), bar.height()));
        painter.drawRoundedRect(bar, barHeight / 2.0, barHeight / 2.0);
        painter.setClipping(false);
    }
    if (!isTrigger) {
        painter.setBrush(theme::faint);
        painter.drawRect(QRectF(place(0.0) - 0.75, bar.top() - 2, 1.5, bar.height() + 4));
    }
}
