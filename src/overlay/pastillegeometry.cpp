// SPDX-License-Identifier: MIT
#include "pastillegeometry.h"

#include <algorithm>

QRect resizeHandle(const QSize &size)
{
    return {size.width() - 12, size.height() - 12, 10, 10};
}

QSize pulled(const QSize &start, const QPoint &delta, bool oval, const QSize &least)
{
    if (oval)
        return (start + QSize(delta.x(), delta.y())).expandedTo(least);
    const int side = std::max(start.width(), start.height()) + std::max(delta.x(), delta.y());
    return QSize(1, 1) * std::max(side, least.width());
}

QRect clampedInto(QRect geometry, const QRect &limits)
{
    if (geometry.right() > limits.right())
        geometry.moveRight(limits.right());
    if (geometry.bottom() > limits.bottom())
        geometry.moveBottom(limits.bottom());
    // Last, so that these two corners win where the limits are too small.
    if (geometry.left() < limits.left())
        geometry.moveLeft(limits.left());
    if (geometry.top() < limits.top())
        geometry.moveTop(limits.top());
    return geometry;
}
