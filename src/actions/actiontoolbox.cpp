// SPDX-License-Identifier: MIT
#include "actiontoolbox.h"

#include <QtCore/QJsonArray>

ActionToolBox::ActionToolBox(QWidget *parent)
    : QFrame(parent)
{
    setFixedHeight(36);
}

ActionToolBox::~ActionToolBox() = default;
void ActionToolBox::setEditable(bool) {}
void ActionToolBox::setHeaderText(const QString &) {}
void ActionToolBox::setExternalServices(const QJsonArray &) {}
void ActionToolBox::setInputKind(int) {}
QJsonObject ActionToolBox::config() const
{
    return {};
}
void ActionToolBox::applyConfig(const QJsonObject &) {}
void ActionToolBox::openSettings() {}
void ActionToolBox::mousePressEvent(QMouseEvent *event)
{
    QFrame::mousePressEvent(event);
}
void ActionToolBox::mouseReleaseEvent(QMouseEvent *event)
{
    QFrame::mouseReleaseEvent(event);
}
void ActionToolBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    QFrame::mouseDoubleClickEvent(event);
}
void ActionToolBox::mouseMoveEvent(QMouseEvent *event)
{
    QFrame::mouseMoveEvent(event);
}
