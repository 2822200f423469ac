// SPDX-License-Identifier: MIT
#include "connectorgeometry.h"

#include <cmath>

Connector connectorTo(const QPoint &start, const QPoint &left, const QPoint &right, double sideBias)
{
    const bool startIsRight = right.x() < start.x();
    const bool startIsLeft = left.x() > start.x();
    const bool leadsRight = startIsRight || (!startIsLeft && sideBias >= 0.0);
    return {.start = start, .nearCorner = leadsRight ? right : left, .farCorner = leadsRight ? left : right};
}

QPoint startBelow(const QRect &widget, int gap)
{
    return {widget.center().x(), widget.bottom() + gap};
}

QPoint leftBelow(const QRect &widget, int gap)
{
    return {widget.left(), widget.bottom() + gap};
}

QPoint rightBelow(const QRect &widget, int gap)
{
    return {widget.right(), widget.bottom() + gap};
}

QPoint pointAt(const QPointF &fraction, const QSize &canvas)
{
    return {static_cast<int>(std::lround(canvas.width() * fraction.x())),
            static_cast<int>(std::lround(canvas.height() * fraction.y()))};
}
