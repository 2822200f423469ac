// SPDX-License-Identifier: MIT
#include "cardcontent.h"
#include "cardelements.h"

#include <QtGui/QFontInfo>
#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>

using namespace Qt::StringLiterals;

namespace
{
QFont titleFont(const QFont &font)
{
    // A font that a style sheet gave in pixels has no point size to raise: its pointSizeF is -1.
    const qreal size = font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
    QFont title(font);
    title.setPointSizeF(size + 2.0);
    title.setWeight(QFont::Bold);
    return title;
}

QFont addressFont(const QFont &font)
{
    QFont address(font);
    address.setFamily(u"Consolas"_s);
    address.setStyleHint(QFont::Monospace, QFont::PreferDefault);
    return address;
}

void paintLine(QPainter *painter, const QRect &area, const QFont &font, const QFontMetrics &metrics,
               const QColor &colour, const QString &text)
{
    painter->setFont(font);
    painter->setPen(colour);
    painter->drawText(area, Qt::AlignTop | Qt::AlignHCenter,
                      metrics.elidedText(text, Qt::ElideRight, area.width()));
}
} // namespace

void paintTexts(QPainter *painter, const QRect &block, const CardContent &content, const QFont &font)
{
    const QFont title = titleFont(font);
    const QFontMetrics titleMetrics(title);
    paintLine(painter, block, title, titleMetrics, QColor(232, 240, 245), cardTitle(content));

    const QFontMetrics metrics(font);
    const QRect subLine(block.left(), block.top() + 4 + titleMetrics.height(), block.width(),
                        metrics.height());
    paintLine(painter, subLine, font, metrics, QColor(138, 163, 182), cardSubLine(content));

    if (content.ip.isEmpty())
        return;
    const QFont address = addressFont(font);
    const QFontMetrics addressMetrics(address);
    const QRect addressLine(block.left(), subLine.top() + subLine.height() + 6, block.width(),
                            addressMetrics.height());
    paintLine(painter, addressLine, address, addressMetrics, QColor(96, 120, 135), content.ip);
}
