// SPDX-License-Identifier: MIT
#include "deletionhold.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

namespace
{
bool takesAlong(const QObject *owner, const QObject *object)
{
    while (object && object != owner)
        object = object->parent();
    return object;
}
} // namespace

DeletionHold::DeletionHold(const QObject *object)
    : m_object(object)
{
    // At the application, since an owner may be a parent that the object is given only later.
    QCoreApplication::instance()->installEventFilter(this);
}

DeletionHold::~DeletionHold()
{
    // A second deleteLater would be ignored: Qt remembers that the first was called.
    for (QObject *object : std::as_const(m_held))
        if (object)
            QMetaObject::invokeMethod(object, [object] { delete object; }, Qt::QueuedConnection);
}

bool DeletionHold::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::DeferredDelete || !takesAlong(watched, m_object))
        return false;
    m_held.append(watched);
    Q_EMIT deletionHeld();
    return true;
}
