// SPDX-License-Identifier: MIT
#include "stickpad.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <algorithm>

namespace
{
constexpr double knobRadius = 17.0;
} // namespace

StickPad::StickPad(QPointF rest, QWidget *parent)
    : QWidget(parent)
    , m_rest(rest)
    , m_position(rest)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QRectF StickPad::range() const
{
    return QRectF(rect()).marginsRemoved({knobRadius, knobRadius, knobRadius, knobRadius});
}

void StickPad::moveTo(QPointF position)
{
    const auto held = [](double value) { return std::clamp(value, -100.0, 100.0); };
    m_position = {held(position.x()), held(position.y())};
    update();
    Q_EMIT moved(m_position);
}

void StickPad::mousePressEvent(QMouseEvent *event)
{
    mouseMoveEvent(event);
}

void StickPad::mouseMoveEvent(QMouseEvent *event)
{
    const QRectF area = range();
    const QPointF offset = event->position() - area.center();
    moveTo({offset.x() / area.width() * 200.0, offset.y() / area.height() * 200.0});
}

void StickPad::mouseReleaseEvent(QMouseEvent *)
{
    moveTo(m_rest);
}

void StickPad::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().mid(), 1.5));
    painter.setBrush(palette().base());
    painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    const QRectF area = range();
    const QPointF knob(area.center().x() + m_position.x() / 200.0 * area.width(),
                       area.center().y() + m_position.y() / 200.0 * area.height());
    painter.drawLine(area.center(), knob);
    painter.setBrush(palette().highlight());
    painter.drawEllipse(knob, knobRadius, knobRadius);
}
