// SPDX-License-Identifier: MIT
// What is not deleted, for how long, and when it is in the end.
#include "deletionhold.h"
#include "testmain.h"

#include <QtTest/QSignalSpy>

namespace
{
/// Lets everything happen that waits for the event loop.
void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}
} // namespace

class TestDeletionHold : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theObjectGoesAfterTheHold()
    {
        const QPointer<QObject> object(new QObject);
        {
            const DeletionHold hold(object);
            const QSignalSpy held(&hold, &DeletionHold::deletionHeld);
            object->deleteLater();
            settle();
            QVERIFY(object);
            QCOMPARE(held.size(), 1);
        }
        QVERIFY(object); // on the next turn of the event loop
        settle();
        QVERIFY(!object);
    }

    void whatWouldTakeItAlongGoesAfterTheHold()
    {
        const QPointer<QObject> ancestor(new QObject);
        const QPointer<QObject> object(new QObject(new QObject(ancestor)));
        {
            const DeletionHold hold(object);
            const QSignalSpy held(&hold, &DeletionHold::deletionHeld);
            ancestor->deleteLater();
            settle();
            QVERIFY(object);
            QCOMPARE(held.size(), 1);
        }
        settle();
        QVERIFY(!ancestor);
        QVERIFY(!object);
    }

    void aParentThatItIsGivenLaterCountsToo()
    {
        const QPointer<QObject> parent(new QObject);
        const QPointer<QObject> object(new QObject);
        {
            const DeletionHold hold(object);
            object->setParent(parent);
            parent->deleteLater();
            settle();
            QVERIFY(object);
        }
        settle();
        QVERIFY(!parent);
    }

    void anythingElseGoesAtOnce()
    {
        QObject parent;
        QObject object(&parent);
        const QPointer<QObject> sibling(new QObject(&parent));
        const QPointer<QObject> child(new QObject(&object));
        const QPointer<QObject> stranger(new QObject);
        const DeletionHold hold(&object);
        const QSignalSpy held(&hold, &DeletionHold::deletionHeld);
        for (QObject *other : {sibling.data(), child.data(), stranger.data()})
            other->deleteLater();
        settle();
        QVERIFY(!sibling);
        QVERIFY(!child);
        QVERIFY(!stranger);
        QCOMPARE(held.size(), 0);
    }

    void aPlainDeleteIsNotPutOff()
    {
        const QPointer<QObject> object(new QObject);
        {
            const DeletionHold hold(object);
            object->deleteLater();
            settle();
            delete object;
            QVERIFY(!object);
        }
        settle();
    }

    void withoutAnObjectNothingIsHeld()
    {
        const QPointer<QObject> other(new QObject);
        const DeletionHold hold(nullptr);
        other->deleteLater();
        settle();
        QVERIFY(!other);
    }

    void whatTwoHoldsKeepGoesAfterTheOuterOne()
    {
        const QPointer<QObject> object(new QObject);
        {
            const DeletionHold outer(object);
            const QSignalSpy heldByOuter(&outer, &DeletionHold::deletionHeld);
            {
                const DeletionHold inner(object);
                object->deleteLater();
                settle();
                QVERIFY(object);
                QCOMPARE(heldByOuter.size(), 0);
            }
            settle();
            QVERIFY(object);
            QCOMPARE(heldByOuter.size(), 1);
        }
        settle();
        QVERIFY(!object);
    }

    // The window of a view and the view, say.
    void whatOnlyTheInnerHoldKeepsDoesNotWaitForTheOuterOne()
    {
        const QPointer<QObject> parent(new QObject);
        const QPointer<QObject> object(new QObject(parent));
        const DeletionHold outer(parent);
        const QSignalSpy heldByOuter(&outer, &DeletionHold::deletionHeld);
        {
            const DeletionHold inner(object);
            object->deleteLater();
            settle();
            QVERIFY(object);
        }
        settle();
        QVERIFY(!object);
        QCOMPARE(heldByOuter.size(), 0);
        delete parent;
    }

    void aHoldThatEndedIsAskedNoMore()
    {
        const QPointer<QObject> object(new QObject);
        {
            const DeletionHold hold(object);
        }
        object->deleteLater();
        settle();
        QVERIFY(!object);
    }
};

GAMEPAD_TEST_MAIN(TestDeletionHold)
#include "tst_deletionhold.moc"
