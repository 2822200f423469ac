// SPDX-License-Identifier: MIT
#include "deletionhold.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <utility>

namespace
{
DeletionHold *innermost = nullptr;

bool takesAlong(const QObject *owner, const QObject *object)
{
    while (object && object != owner)
        object = object->parent();
    return object;
}
} // namespace

DeletionHold::DeletionHold(const QObject *object)
    : m_object(object)
    , m_outer(std::exchange(innermost, this))
{
    // At the application, since an owner may be a parent that the object is given only later.
    QCoreApplication::instance()->installEventFilter(this);
}

DeletionHold::~DeletionHold()
{
    innermost = m_outer;
    // A second deleteLater would be ignored: Qt remembers that the first was called.
    for (QObject *object : std::as_const(m_held))
        if (object)
            QMetaObject::invokeMethod(object, [object] { deleteUnlessHeld(object); }, Qt::QueuedConnection);
}

// No event filter is asked about this deletion, so the holds around the one that put it off are.
void DeletionHold::deleteUnlessHeld(QObject *object)
{
    for (DeletionHold *hold = innermost; hold; hold = hold->m_outer)
        if (hold->holds(object))
            return;
    delete object;
}

bool DeletionHold::holds(QObject *object)
{
    if (!takesAlong(object, m_object))
        return false;
    m_held.append(object);
    Q_EMIT deletionHeld();
    return true;
}

bool DeletionHold::eventFilter(QObject *watched, QEvent *event)
{
    return event->type() == QEvent::DeferredDelete && holds(watched);
}
