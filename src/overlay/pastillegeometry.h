// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>

/// The square that resizes a pastille of `size`, in its lower right corner.
[[nodiscard]] QRect resizeHandle(const QSize &size);

/// The size after a pull of `delta` pixels at the handle of a pastille that was `start`. A round one takes
/// its longer side and the greater of the two pulls for both sides, down to the least width; an oval takes
/// each by itself, down to `least`.
[[nodiscard]] QSize pulled(const QSize &start, const QPoint &delta, bool oval, const QSize &least);

/// `geometry` moved into `limits`. What is larger than they are sticks to their top left corner.
[[nodiscard]] QRect clampedInto(QRect geometry, const QRect &limits);
