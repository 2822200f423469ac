// SPDX-License-Identifier: MIT
#include "formscrollarea.h"

#include <QtGui/QFontMetrics>
#include <QtWidgets/QScrollBar>

QSize FormScrollArea::sizeHint() const
{
    if (!widget())
        return QScrollArea::sizeHint();
    const int line = fontMetrics().height();
    const QSize bounds(36 * line, 24 * line);
    QSize hint = widget()->sizeHint() + QSize(2, 2) * frameWidth();
    if (hint.height() > bounds.height())
        hint.rwidth() += verticalScrollBar()->sizeHint().width();
    return hint.boundedTo(bounds);
}
