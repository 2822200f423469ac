// SPDX-License-Identifier: MIT
#include "actiontaskblockwidget.h"

#include <QtCore/QJsonArray>

ActionTaskBlockWidget::ActionTaskBlockWidget(QWidget *parent)
    : QFrame(parent)
{}
void ActionTaskBlockWidget::setFunctions(const QJsonArray &) {}
QJsonObject ActionTaskBlockWidget::config() const
{
    return {};
}
bool ActionTaskBlockWidget::applyConfig(const QJsonObject &)
{
    return false;
}
