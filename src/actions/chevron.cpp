// SPDX-License-Identifier: MIT
#include "chevron.h"

#include <QtGui/QPainter>
#include <QtGui/QPen>

void paintChevron(QPainter *painter, const QPoint &centre, const QColor &colour)
{
    const QPointF middle = centre.toPointF();
    const QPointF corners[] = {middle + QPointF(-4, -1.5), middle + QPointF(0, 2.5),
                               middle + QPointF(4, -1.5)};
    painter->setRenderHint(QPainter::Antialiasing);
    const QPen pen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter->setPen(pen);
    painter->drawPolyline(corners, 3);
}
