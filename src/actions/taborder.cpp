// SPDX-License-Identifier: MIT
#include "taborder.h"

#include <QtWidgets/QWidget>

#include <algorithm>
#include <utility>

namespace
{
bool isTabStop(const QWidget *widget)
{
    return widget->focusPolicy() & Qt::TabFocus;
}
} // namespace

void moveTabStops(QWidget *group, QWidget *before)
{
    const QWidgetList members = group->findChildren<QWidget *>();
    const auto oldest = std::ranges::find_if(members, isTabStop);
    if (oldest == members.end())
        return;
    QWidgetList stops;
    for (QWidget *widget = *oldest; group->isAncestorOf(widget); widget = widget->nextInFocusChain()) {
        if (isTabStop(widget))
            stops.append(widget);
    }
    for (QWidget *stop : std::as_const(stops)) {
        QWidget::setTabOrder(before, stop);
        before = stop;
    }
}
