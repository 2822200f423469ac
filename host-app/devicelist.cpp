// SPDX-License-Identifier: MIT
#include "devicelist.h"

#include "hostsession.h"
#include "theme.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractItemDelegate>

using namespace Qt::StringLiterals;

DeviceList::DeviceList(HostSession &session, QWidget *parent)
    : QListView(parent)
{
    setModel(session.model());
    setItemDelegate(session.delegate());
    setMouseTracking(true); // the cards paint themselves brighter under the mouse
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(NoEditTriggers);
    setSpacing(2);
    setFrameShape(NoFrame);
    viewport()->setAttribute(Qt::WA_Hover);
}

QSize DeviceList::sizeHint() const
{
    return {328, 500};
}

void DeviceList::click(int row)
{
    const QModelIndex index = model()->index(row, 0);
    scrollTo(index);
    const QPointF place = visualRect(index).center();
    const QPointF global = viewport()->mapToGlobal(place);
    QMouseEvent press(QEvent::MouseButtonPress, place, global, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, place, global, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QCoreApplication::sendEvent(viewport(), &press);
    QCoreApplication::sendEvent(viewport(), &release);
}

void DeviceList::paintEvent(QPaintEvent *event)
{
    QListView::paintEvent(event);
    if (model()->rowCount() > 0)
        return;
    theme::paintInvitation(*viewport(), u"No gamepad yet.\nPlug one in and it appears here."_s);
}
