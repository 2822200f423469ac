// SPDX-License-Identifier: MIT
#pragma once

class QColor;
class QPainter;
class QPoint;

/// The arrow of a combo. A style sheet that draws the combo's frame draws none without a picture.
void paintChevron(QPainter *painter, const QPoint &centre, const QColor &colour);
