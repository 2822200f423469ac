// SPDX-License-Identifier: MIT
#include "buttonlamps.h"

#include "theme.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace
{
constexpr int diameter = 30;
constexpr int pitch = 38;
} // namespace

ButtonLamps::ButtonLamps(QWidget *parent)
    : QWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void ButtonLamps::setCount(int count)
{
    if (count == m_count)
        return;
    m_count = count;
    updateGeometry();
    update();
}

void ButtonLamps::setPressed(int button, bool pressed)
{
    if (pressed)
        m_pressed.insert(button);
    else
        m_pressed.remove(button);
    setCount(std::max(m_count, button + 1));
    update();
}

void ButtonLamps::clear()
{
    m_pressed.clear();
    update();
}

int ButtonLamps::columns(int width) const
{
    return std::max(1, (width + pitch - diameter) / pitch);
}

int ButtonLamps::heightForWidth(int width) const
{
    const int rows = (m_count + columns(width) - 1) / columns(width);
    return std::max(1, rows) * pitch - (pitch - diameter);
}

QSize ButtonLamps::sizeHint() const
{
    const int width = std::max(1, std::min(m_count, 16)) * pitch;
    return {width, heightForWidth(width)};
}

void ButtonLamps::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(theme::figures(font()));
    for (int button = 0; button < m_count; ++button) {
        const int row = button / columns(width());
        const int column = button % columns(width());
        const QRectF lamp(column * pitch + 1.0, row * pitch + 1.0, diameter - 2.0, diameter - 2.0);
        const bool lit = m_pressed.contains(button);
        if (lit) {
            QColor glow = theme::good;
            glow.setAlpha(60);
            painter.setPen(Qt::NoPen);
            painter.setBrush(glow);
            painter.drawEllipse(lamp.adjusted(-3, -3, 3, 3));
        }
        painter.setPen(QPen(lit ? theme::good : theme::line, 1.2));
        painter.setBrush(lit ? theme::good : theme::raised);
        painter.drawEllipse(lamp);
        painter.setPen(lit ? theme::ground : theme::quiet);
        painter.drawText(lamp, Qt::AlignCenter, QString::number(button));
    }
}
