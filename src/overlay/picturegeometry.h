// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundscalemode.h"

#include <QtCore/QRect>
#include <QtCore/QRectF>
#include <QtCore/QSize>

/// The largest side of a widget, and the farthest from the picture's origin that one is placed, in pixels.
/// Every sum of two such numbers is an `int`, whatever a document asks for.
inline constexpr int farthestPixel = 16777215;

/// `inner`, around the middle of the rectangle at (0, 0) with `outer`. Odd rests are cut toward zero.
[[nodiscard]] QRect centredIn(const QSize &inner, const QSize &outer);

/// The area that a picture of `pixmap` pixels covers in a widget of `widget` pixels. Its origin is negative
/// where the picture overflows. An empty `pixmap` (no picture) or `widget` yields the whole widget.
[[nodiscard]] QRect pictureRect(const QSize &pixmap, BackgroundScaleMode mode, const QSize &widget);

/// `r` in fractions of `pic`, from its top left corner. Invalid when `pic` has no area.
[[nodiscard]] QRectF toPicture(const QRect &r, const QRect &pic);

/// The pixels of `n`, given in fractions of `pic`: rounded half away from zero, at least 1 by 1, and held
/// within `farthestPixel` (what is not a number counts as 0). Null when `pic` has no area.
[[nodiscard]] QRect fromPicture(const QRectF &n, const QRect &pic);
