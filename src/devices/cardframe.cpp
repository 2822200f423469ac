// SPDX-License-Identifier: MIT
#include "cardelements.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>

namespace
{
void paintBody(QPainter *painter, const QRect &card, bool hover)
{
    QLinearGradient fill(card.topLeft(), card.bottomLeft());
    fill.setColorAt(0, hover ? QColor(20, 32, 42) : QColor(18, 28, 37));
    fill.setColorAt(1, hover ? QColor(11, 18, 24) : QColor(9, 14, 19));
    const QBrush brush(fill);
    const QPen outline(QColor(48, 76, 94, hover ? 210 : 160), 1.0);
    painter->setBrush(brush);
    painter->setPen(outline);
    painter->drawRoundedRect(card, 12, 12);
}

void paintTopLight(QPainter *painter, const QRect &card, bool hover)
{
    QLinearGradient light(card.topLeft(), card.topRight());
    light.setColorAt(0, QColor(110, 200, 215, 0));
    light.setColorAt(0.5, QColor(110, 200, 215, hover ? 160 : 120));
    light.setColorAt(1, QColor(110, 200, 215, 0));
    const QPen pen(light, 1.2, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    painter->setPen(pen);
    painter->drawLine(card.left() + 12, card.top() + 1, card.right() - 12, card.top() + 1);
}
} // namespace

void paintFrame(QPainter *painter, const QRect &card, bool hover)
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(0, 0, 0, 40));
    painter->drawRoundedRect(card.translated(0, 2), 13, 13);

    paintBody(painter, card, hover);

    painter->setPen(QColor(255, 255, 255, hover ? 18 : 12));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(card.adjusted(1, 1, -1, -1), 11, 11);

    paintTopLight(painter, card, hover);
}

void paintHighlightBorder(QPainter *painter, const QRect &card)
{
    const QPen border(QColor(110, 200, 215, 140), 2.0);
    painter->setPen(border);
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(card.adjusted(-1, -1, 1, 1), 13, 13);
}
