// SPDX-License-Identifier: MIT
#include "devicecombobox.h"

#include "chevron.h"

#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionComboBox>

void DeviceComboBox::paintEvent(QPaintEvent *event)
{
    QComboBox::paintEvent(event);
    if (!style()->inherits("QStyleSheetStyle"))
        return; // every other style has an arrow
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect arrow = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this);
    QPainter painter(this);
    paintChevron(&painter, arrow.center(), palette().color(QPalette::Text));
}
