// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtCore/QSize>

/// A connector's two strokes: a lead from the start to the nearer lower corner of its target, and an
/// underline from there to the other corner.
struct Connector
{
    QPoint start;
    QPoint nearCorner;
    QPoint farCorner;

    bool operator==(const Connector &) const = default;
};

/// The connector from `start` to the corners below a target. Above the target's span, which includes both
/// corners, a `sideBias` of 0 or more leads to the right corner and a negative one to the left.
[[nodiscard]] Connector connectorTo(const QPoint &start, const QPoint &left, const QPoint &right,
                                    double sideBias);

/// Where a line starts below a widget: `gap` pixels under the middle of its lowest row.
[[nodiscard]] QPoint startBelow(const QRect &widget, int gap);

/// `gap` pixels under the first and the last pixel of a widget's lowest row.
[[nodiscard]] QPoint leftBelow(const QRect &widget, int gap);
[[nodiscard]] QPoint rightBelow(const QRect &widget, int gap);

/// The pixel at a fraction of a canvas, rounded half away from zero.
[[nodiscard]] QPoint pointAt(const QPointF &fraction, const QSize &canvas);
