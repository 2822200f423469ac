// SPDX-License-Identifier: MIT
#pragma once

#include "toucharea.h"

#include <QtCore/QRect>
#include <QtCore/QString>

class QPainter;

/// All that shows of a pastille.
struct PastilleLook
{
    QRect rect; ///< the whole widget; the body stands 2 pixels inside
    TouchArea::State state = TouchArea::Normal;
    QString title;
    bool hasHandle = false;
    bool hovered = false; ///< brightens the handle
};

/// Paints a pastille in the painter's font. Leaves the painter's pen, brush and font changed.
void paintPastille(QPainter &painter, const PastilleLook &look);
