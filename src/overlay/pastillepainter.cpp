// SPDX-License-Identifier: MIT
#include "pastillepainter.h"

#include "pastillegeometry.h"

#include <QtGui/QPainter>
#include <QtGui/QRadialGradient>

#include <algorithm>

namespace
{
struct Colours
{
    QColor outline;
    QColor centre;
    QColor edge;
};

Colours coloursOf(TouchArea::State state)
{
    switch (state) {
    case TouchArea::Normal:
        break;
    case TouchArea::Listening:
        return {QColor(0, 0, 0, 80), QColor(230, 255, 230, 235), QColor(52, 199, 89, 235)};
    case TouchArea::Active:
        return {QColor(0, 0, 0, 100), QColor(235, 235, 235, 230), QColor(142, 142, 147, 240)};
    }
    return {QColor(0, 0, 0, 80), QColor(255, 255, 255, 230), QColor(0, 122, 255, 230)};
}

void paintBody(QPainter &painter, const PastilleLook &look)
{
    const Colours colours = coloursOf(look.state);
    const QRectF body(look.rect.adjusted(2, 2, -2, -2));
    QRadialGradient gradient(body.center(), std::max(body.width(), body.height()) / 2.0);
    gradient.setColorAt(0.0, colours.centre);
    gradient.setColorAt(1.0, colours.edge);
    painter.setPen(QPen(QBrush(colours.outline), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.setBrush(gradient);
    painter.drawEllipse(body);
}

void paintTitle(QPainter &painter, const PastilleLook &look)
{
    QFont font = painter.font();
    font.setWeight(QFont::Bold);
    painter.setFont(font);
    painter.setPen(Qt::white);
    const QString shown = painter.fontMetrics().elidedText(look.title, Qt::ElideRight, look.rect.width() - 8);
    painter.drawText(look.rect, Qt::AlignCenter, shown);
}

void paintHandle(QPainter &painter, const PastilleLook &look)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, look.hovered ? 220 : 180));
    painter.drawRect(resizeHandle(look.rect.size()));
}
} // namespace

void paintPastille(QPainter &painter, const PastilleLook &look)
{
    paintBody(painter, look);
    paintTitle(painter, look);
    if (look.hasHandle) {
        paintHandle(painter, look);
    }
}
