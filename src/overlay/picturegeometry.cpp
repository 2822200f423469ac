// SPDX-License-Identifier: MIT
#include "picturegeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
bool hasArea(const QRect &rect)
{
    return rect.width() > 0 && rect.height() > 0;
}

/// The pixel that is nearest to a number of any size.
int pixel(double number)
{
    if (std::isnan(number))
        return 0;
    const double limit = farthestPixel;
    // Not std::lround: the last double below 0.5 counts as 1 here, as it does in every stored document.
    return static_cast<int>(std::clamp(number < 0 ? number - 0.5 : number + 0.5, -limit, limit));
}

/// `QSize::scaled`, whose product leaves `int` when a document asks for a huge widget.
QSize scaledSize(const QSize &size, const QSize &into, Qt::AspectRatioMode mode)
{
    const qint64 widthAtFullHeight = qint64{into.height()} * size.width() / size.height();
    const bool fullHeight =
        mode == Qt::KeepAspectRatio ? widthAtFullHeight <= into.width() : widthAtFullHeight >= into.width();
    const auto side = [](qint64 length) {
        return static_cast<int>(std::min<qint64>(length, std::numeric_limits<int>::max()));
    };
    if (fullHeight)
        return {side(widthAtFullHeight), into.height()};
    return {into.width(), side(qint64{into.width()} * size.height() / size.width())};
}
} // namespace

QRect centredIn(const QSize &inner, const QSize &outer)
{
    const QPoint origin((outer.width() - inner.width()) / 2, (outer.height() - inner.height()) / 2);
    return {origin, inner};
}

QRect pictureRect(const QSize &pixmap, BackgroundScaleMode mode, const QSize &widget)
{
    if (pixmap.isEmpty() || widget.isEmpty())
        return {QPoint(0, 0), widget};
    switch (mode) {
    case BackgroundScaleMode::Stretch:
        break;
    case BackgroundScaleMode::Contain:
        return centredIn(scaledSize(pixmap, widget, Qt::KeepAspectRatio), widget);
    case BackgroundScaleMode::Cover:
        return centredIn(scaledSize(pixmap, widget, Qt::KeepAspectRatioByExpanding), widget);
    case BackgroundScaleMode::Center:
        return centredIn(pixmap, widget);
    }
    return {QPoint(0, 0), widget};
}

QRectF toPicture(const QRect &r, const QRect &pic)
{
    if (!hasArea(pic))
        return {};
    const double width = pic.width();
    const double height = pic.height();
    // Subtracted as doubles, since two far corners may lie more than an int apart.
    return {(double(r.x()) - pic.left()) / width, (double(r.y()) - pic.top()) / height, r.width() / width,
            r.height() / height};
}

QRect fromPicture(const QRectF &n, const QRect &pic)
{
    if (!hasArea(pic))
        return {};
    const double width = pic.width();
    const double height = pic.height();
    return {pixel(pic.left() + n.x() * width), pixel(pic.top() + n.y() * height),
            std::max(1, pixel(n.width() * width)), std::max(1, pixel(n.height() * height))};
}
