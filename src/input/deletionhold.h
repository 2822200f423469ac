// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

/// Puts off the deferred deletion of an object, and of those that would take it along, for as long as the
/// hold lives. For code that runs an event loop below the object's own event handler: such a handler goes on
/// afterwards, and a loop below it deletes at once what was asked for `deleteLater` within it.
class DeletionHold : public QObject
{
    Q_OBJECT

public:
    /// `object` may be null, and may still die by a plain `delete`. Holds end in the reverse order of their
    /// beginning; what two of them hold goes after both.
    explicit DeletionHold(const QObject *object);
    /// What was held goes on the next turn of the event loop.
    ~DeletionHold() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// A deletion was put off: a good moment to come to an end.
    void deletionHeld();

private:
    [[nodiscard]] bool holds(QObject *object);
    static void deleteUnlessHeld(QObject *object);

    const QPointer<const QObject> m_object;
    DeletionHold *const m_outer;
    QList<QPointer<QObject>> m_held;
};
