// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundscalemode.h"

#include <QtCore/QRect>
#include <QtCore/QRectF>
#include <QtCore/QSize>

/// The longest side of a placed rectangle and its farthest distance from 0, in pixels. One less than
/// `QWIDGETSIZE_MAX`, which a widget takes for "no fixed size", so that widgets accept whatever a document
/// asks for and no sum of two such numbers leaves `int`.
inline constexpr int farthestPixel = 16777214;

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
