// SPDX-License-Identifier: MIT
#include "connectorgeometry.h"
#include "overlaylines.h"
#include "picturegeometry.h"

#include <QtGui/QPainter>

namespace
{
/// The most that a scaled picture may hold. A narrow picture that covers a wide widget is scaled to hundreds
/// of times its size, nearly all of it cut away.
constexpr qint64 mostScaledPixels = qint64{64} * 1024 * 1024;

void paintCover(QPainter &painter, const QPixmap &picture, const QSize &widget)
{
    const QRect covered = pictureRect(picture.size(), BackgroundScaleMode::Cover, widget);
    if (qint64{covered.width()} * covered.height() <= mostScaledPixels) {
        const QPixmap scaled =
            picture.scaled(widget, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
        painter.drawPixmap(centredIn(scaled.size(), widget), scaled);
        return;
    }
    const QRectF shown = toPicture(QRect(QPoint(0, 0), widget), covered);
    const QRectF source(shown.x() * picture.width(), shown.y() * picture.height(),
                        shown.width() * picture.width(), shown.height() * picture.height());
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    painter.drawPixmap(QRectF(QPointF(0, 0), widget), picture, source);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
}
} // namespace

void OverlayLines::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintPicture(painter);
    for (const OverlayLine &line : std::as_const(m_lines))
        paintLine(painter, line);
}

void OverlayLines::paintPicture(QPainter &painter) const
{
    if (m_backgroundPixmap.isNull())
        return;
    if (m_backgroundScaleMode == BackgroundScaleMode::Cover) {
        paintCover(painter, m_backgroundPixmap, size());
        return;
    }
    // Into a rectangle in every mode: at a point, a picture that Qt took for a dense one by its name, as in
    // "pad@2x.png", would be drawn at half its size.
    painter.drawPixmap(pictureRect(m_backgroundPixmap.size(), m_backgroundScaleMode, size()),
                       m_backgroundPixmap);
}

void OverlayLines::paintLine(QPainter &painter, const OverlayLine &line) const
{
    const QWidget *from = line.from;
    const QWidget *to = line.to;
    if (!to || !to->isVisible())
        return;
    const QPoint start = from && from->isVisible() ? from->mapTo(this, startBelow(from->rect(), line.gap))
                                                   : pointAt(line.fallbackStart, size());
    const QPoint left = to->mapTo(this, leftBelow(to->rect(), line.gap));
    const QPoint right = to->mapTo(this, rightBelow(to->rect(), line.gap));
    const Connector connector = connectorTo(start, left, right, line.sideBias);

    const QPen pen(QBrush(line.color), line.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(pen);
    painter.drawLine(QLine(connector.start, connector.nearCorner));
    painter.drawLine(QLine(connector.nearCorner, connector.farCorner));
}
