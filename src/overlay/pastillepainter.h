// SPDX-License-Identifier: MIT
#pragma once

#include "toucharea.h"

#include <QtCore/QSize>
#include <QtCore/QString>

class QPainter;

/// All that shows of a pastille.
struct PastilleLook
{
    QSize size; ///< of the whole widget; the body stands 2 pixels inside
    TouchArea::State state = TouchArea::Normal;
    QString title;
    bool hasHandle = false;
    bool hovered = false; ///< brightens the handle
};

/// Paints a pastille at the painter's origin, in its font. Pen, brush, font and antialiasing stay changed.
void paintPastille(QPainter &painter, const PastilleLook &look);
