// SPDX-License-Identifier: MIT
#include "pastillepainter.h"

#include "pastillegeometry.h"

#include <QtGui/QPainter>
#include <QtGui/QPixmapCache>
#include <QtGui/QRadialGradient>

#include <algorithm>

using namespace Qt::StringLiterals;

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
        return {.outline = QColor(0, 0, 0, 80),
                .centre = QColor(230, 255, 230, 235),
                .edge = QColor(52, 199, 89, 235)};
    case TouchArea::Active:
        return {.outline = QColor(0, 0, 0, 100),
                .centre = QColor(235, 235, 235, 230),
                .edge = QColor(142, 142, 147, 240)};
    }
    return {.outline = QColor(0, 0, 0, 80),
            .centre = QColor(255, 255, 255, 230),
            .edge = QColor(0, 122, 255, 230)};
}

QRect rectOf(const PastilleLook &look)
{
    return {QPoint(0, 0), look.size};
}

void paintBody(QPainter &painter, const PastilleLook &look)
{
    const Colours colours = coloursOf(look.state);
    const QRectF body = rectOf(look).adjusted(2, 2, -2, -2);
    QRadialGradient gradient(body.center(), std::max(body.width(), body.height()) / 2.0);
    gradient.setColorAt(0.0, colours.centre);
    gradient.setColorAt(1.0, colours.edge);
    const QPen outline(QBrush(colours.outline), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    const QBrush fill(gradient);
    painter.setPen(outline);
    painter.setBrush(fill);
    painter.drawEllipse(body);
}

/// Above this side a body is painted each time, so that a document's huge pastille takes no memory.
constexpr int longestKeptSide = 256;

/// The body as it was painted before. Its gradient costs more than all the rest of a pastille, and one move
/// on an overlay repaints every pastille there.
void paintKeptBody(QPainter &painter, const PastilleLook &look)
{
    const QSize size = look.size;
    const bool pixelForPixel = painter.deviceTransform().type() <= QTransform::TxTranslate;
    if (!pixelForPixel || size.isEmpty() || std::max(size.width(), size.height()) > longestKeptSide) {
        paintBody(painter, look);
        return;
    }
    const QString key = u"pastille %1 %2 %3"_s.arg(look.state).arg(size.width()).arg(size.height());
    QPixmap body;
    if (!QPixmapCache::find(key, &body)) {
        body = QPixmap(size);
        body.fill(Qt::transparent);
        QPainter bodyPainter(&body);
        bodyPainter.setRenderHint(QPainter::Antialiasing);
        paintBody(bodyPainter, look);
        QPixmapCache::insert(key, body);
    }
    painter.drawPixmap(0, 0, body);
}

void paintTitle(QPainter &painter, const PastilleLook &look)
{
    QFont font = painter.font();
    font.setWeight(QFont::Bold);
    painter.setFont(font);
    painter.setPen(Qt::white);
    const int width = look.size.width();
    // More characters than pixels are not seen, and a document's title can be long enough to block.
    const QString start = look.title.left(qsizetype{4} * width);
    const QString shown = painter.fontMetrics().elidedText(start, Qt::ElideRight, width - 8);
    painter.drawText(rectOf(look), Qt::AlignCenter, shown);
}

void paintHandle(QPainter &painter, const PastilleLook &look)
{
    painter.setPen(Qt::NoPen);
    const QBrush handle(QColor(255, 255, 255, look.hovered ? 220 : 180));
    painter.setBrush(handle);
    painter.drawRect(resizeHandle(look.size));
}
} // namespace

void paintPastille(QPainter &painter, const PastilleLook &look)
{
    painter.setRenderHint(QPainter::Antialiasing);
    paintKeptBody(painter, look);
    paintTitle(painter, look);
    if (look.hasHandle)
        paintHandle(painter, look);
}
