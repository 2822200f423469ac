// SPDX-License-Identifier: MIT
// What listeners do to the manager while it discovers.
#include "gamepadmanager.h"
#include "managertest.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
QList<int> numbers(const QSignalSpy &removed)
{
    QList<int> ids;
    for (const QVariantList &arguments : removed)
        ids.append(arguments.first().toInt());
    return ids;
}
} // namespace

class TestDiscoveryReentry : public ManagerTest
{
    Q_OBJECT

    void poll() { expire(timerOf(*manager(), u"pollTimer"_s)); }

private Q_SLOTS:
    void discoveryInsideAnyOfItsSignalsEndsWithOneDeviceForEachPad_data()
    {
        QTest::addColumn<bool>("added");
        QTest::addColumn<bool>("changed");
        QTest::addColumn<bool>("removed");
        QTest::newRow("added") << true << false << false;
        QTest::newRow("changed") << false << true << false;
        QTest::newRow("removed") << false << false << true;
        QTest::newRow("all") << true << true << true;
    }
    void discoveryInsideAnyOfItsSignalsEndsWithOneDeviceForEachPad()
    {
        QFETCH(const bool, added);
        QFETCH(const bool, changed);
        QFETCH(const bool, removed);
        for (const unsigned slot : {0U, 1U, 2U, 3U})
            scripted::plug(slot, scripted::restingPad());
        const auto again = [this] { manager()->setPollIntervalMs(100); };
        if (added)
            connect(manager(), &GamepadManager::gamepadAdded, this, again);
        if (changed)
            connect(manager(), &GamepadManager::gamepadsChanged, this, again);
        if (removed)
            connect(manager(), &GamepadManager::gamepadRemoved, this, again);
        const QSignalSpy gone(manager(), &GamepadManager::gamepadRemoved);
        const QSignalSpy come(manager(), &GamepadManager::gamepadAdded);
        scripted::unplug(0);
        scripted::unplug(2);
        scripted::plug(5, scripted::restingPad());
        scripted::plug(6, scripted::restingPad());
        poll();
        QCOMPARE(listedSlots(), QList<int>({1, 3, 5, 6}));
        QCOMPARE(numbers(gone), QList<int>({0, 2}));
        QCOMPARE(come.size(), 2);
    }

    void aDeadPointerIsToldOnceAlthoughDiscoveryRunsInside()
    {
        scripted::plug(0, scripted::restingPad());
        delete manager()->gamepads().constFirst().data();
        connect(manager(), &GamepadManager::gamepadRemoved, this,
                [this] { manager()->setPollIntervalMs(100); });
        const QSignalSpy gone(manager(), &GamepadManager::gamepadRemoved);
        poll();
        QCOMPARE(numbers(gone), QList<int>({-1}));
        QCOMPARE(listedSlots(), QList<int>({0}));
    }

    void aPadFoundWhileAnotherIsAnnouncedGoneStays()
    {
        scripted::plug(0, scripted::restingPad());
        connect(manager(), &GamepadManager::gamepadRemoved, this, [this] {
            scripted::plug(7, scripted::restingPad());
            manager()->setPollIntervalMs(100);
        });
        QCOMPARE(listedSlots(), QList<int>({0}));
        const QPointer<ControlManette> lost = manager()->gamepads().constFirst();
        scripted::unplug(0);
        poll();
        QCOMPARE(listedSlots(), QList<int>({7}));
        const QPointer<ControlManette> found = manager()->gamepads().constFirst();
        poll();
        QCOMPARE(manager()->gamepads().constFirst(), found);
        QCOMPARE(manager()->findChildren<ControlManette *>().size(), 1);
        QVERIFY(lost); // waits for its deletion, no child of the manager any more
        QTRY_VERIFY(!lost);
    }

    void aDeviceThatDiesInsideGamepadsChangedIsNotAnnounced()
    {
        connect(manager(), &GamepadManager::gamepadsChanged, this, [this] {
            if (!manager()->gamepads().isEmpty())
                delete manager()->gamepads().constFirst().data();
        });
        const QSignalSpy come(manager(), &GamepadManager::gamepadAdded);
        scripted::plug(0, scripted::restingPad());
        poll();
        QCOMPARE(come.size(), 0);
    }

    void aDeviceDestroyedByItsOwnRemovalDoesNoHarm()
    {
        scripted::plug(0, scripted::restingPad());
        scripted::plug(1, scripted::restingPad());
        connect(manager(), &GamepadManager::gamepadRemoved, this, [this] {
            for (const auto &gamepad : manager()->gamepads())
                delete gamepad.data();
        });
        const QSignalSpy gone(manager(), &GamepadManager::gamepadRemoved);
        scripted::unplug(0);
        scripted::unplug(1);
        poll();
        QCOMPARE(numbers(gone), QList<int>({0, -1}));
        QVERIFY(manager()->gamepads().isEmpty());
    }

    void theManagerMayDieInsideAnyOfItsSignals_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<bool>("pluggedBefore");
        QTest::newRow("added") << QByteArray(SIGNAL(gamepadAdded(ControlManette *))) << false;
        QTest::newRow("changed by an addition") << QByteArray(SIGNAL(gamepadsChanged())) << false;
        QTest::newRow("changed by a removal") << QByteArray(SIGNAL(gamepadsChanged())) << true;
        QTest::newRow("removed") << QByteArray(SIGNAL(gamepadRemoved(int))) << true;
    }
    void theManagerMayDieInsideAnyOfItsSignals()
    {
        QFETCH(const QByteArray, signal);
        QFETCH(const bool, pluggedBefore);
        if (pluggedBefore)
            scripted::plug(0, scripted::restingPad());
        const QPointer<GamepadManager> watched = manager();
        if (pluggedBefore)
            scripted::unplug(0);
        else
            scripted::plug(0, scripted::restingPad());
        connect(watched, signal.constData(), this, SLOT(destroyParent()));
        watched->setPollIntervalMs(100);
        QVERIFY(!watched);
    }

    void theManagerMayDieWhenAutoDetectionIsSwitchedOn()
    {
        const QPointer<GamepadManager> watched = manager();
        watched->setAutoDetectGamePad(false);
        scripted::plug(0, scripted::restingPad());
        connect(watched, &GamepadManager::gamepadAdded, this, &TestDiscoveryReentry::destroyParent);
        watched->setAutoDetectGamePad(true);
        QVERIFY(!watched);
    }

    void askingForTheManagerWhileOneDiesMakesANewOne()
    {
        scripted::plug(0, scripted::restingPad());
        QObject *old = manager();
        QObject *made = nullptr;
        connect(manager()->gamepads().constFirst(), &QObject::destroyed, this,
                [&] { made = GamepadManager::instance(this); });
        delete m_parent;
        QVERIFY(made);
        QVERIFY(made != old);
        delete made;
    }

public Q_SLOTS:
    void destroyParent() { delete m_parent; }
};

GAMEPAD_TEST_MAIN(TestDiscoveryReentry)
#include "tst_discoveryreentry.moc"
