// SPDX-License-Identifier: MIT
#include "cardelements.h"
#include "cardpixmaps.h"

#include <QtGui/QPainter>

using namespace Qt::StringLiterals;

void paintStatusDot(QPainter *painter, const QRect &dot, bool connected)
{
    const QPen outline(QColor(10, 16, 22, 200), 1.0);
    painter->setPen(outline);
    painter->setBrush(connected ? QColor(60, 200, 120) : QColor(200, 70, 70));
    painter->drawEllipse(dot);
}

void paintPicture(QPainter *painter, const QRect &area, const QVariant &image)
{
    const QPixmap pixmap = itemPixmap(image, area.size());
    if (!pixmap.isNull())
        painter->drawPixmap(area, pixmap);
}

void paintCloseButton(QPainter *painter, const QRect &button, const QString &icon)
{
    const QPen outline(QColor(49, 76, 94, 160), 1.0);
    painter->setPen(outline);
    painter->setBrush(QColor(24, 35, 45, 200));
    painter->drawEllipse(button);

    const QPixmap pixmap = cachedResourcePixmap(icon, button.size());
    if (!pixmap.isNull()) {
        painter->drawPixmap(button, pixmap);
        return;
    }
    painter->setPen(QColor(230, 240, 245));
    painter->drawText(button, Qt::AlignCenter, u"x"_s);
}

void paintCheckMark(QPainter *painter, const QRect &mark)
{
    const QPen outline(QColor(15, 24, 32, 200), 1.0);
    painter->setPen(outline);
    painter->setBrush(QColor(110, 200, 215));
    painter->drawEllipse(mark);

    const QPointF start(mark.left() + 0.28 * mark.width(), mark.center().y());
    const QPointF corner(mark.center().x() - 1, mark.bottom() - 0.28 * mark.height());
    const QPointF end(mark.right() - 0.22 * mark.width(), mark.top() + 0.28 * mark.height());
    const QPen stroke(QColor(15, 24, 32), 2.0, Qt::SolidLine, Qt::RoundCap);
    painter->setPen(stroke);
    painter->drawLine(QLineF(start, corner));
    painter->drawLine(QLineF(corner, end));
}
