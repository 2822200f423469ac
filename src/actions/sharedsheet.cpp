// SPDX-License-Identifier: MIT
#include "sharedsheet.h"

#include <QtWidgets/QWidget>

namespace
{
bool isCarried(const QWidget *widget, const QString &sheet)
{
    for (; widget; widget = widget->parentWidget()) {
        if (widget->styleSheet().contains(sheet))
            return true;
    }
    return false;
}
} // namespace

void carrySheet(QWidget *surface, const QString &sheet)
{
    if (!surface->styleSheet().contains(sheet))
        surface->setStyleSheet(surface->styleSheet() + sheet);
}

void wearSheet(QWidget *widget, const QString &sheet)
{
    if (!isCarried(widget, sheet))
        widget->setStyleSheet(sheet);
}
