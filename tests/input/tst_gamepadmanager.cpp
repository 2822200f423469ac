// SPDX-License-Identifier: MIT
// Which gamepads the manager finds and loses, when it looks, and what it tells.
#include "gamepadmanager.h"
#include "managertest.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QMetaProperty>
#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
/// Every signal of a manager as one line, with the slots in its list at that moment.
class ManagerLog : public QObject
{
public:
    explicit ManagerLog(GamepadManager *manager)
        : m_manager(manager)
    {
        connect(manager, &GamepadManager::gamepadsChanged, this, [this] { note(u"changed"_s); });
        connect(manager, &GamepadManager::gamepadAdded, this,
                [this](ControlManette *gamepad) { note(u"added %1"_s.arg(gamepad->deviceId())); });
        connect(manager, &GamepadManager::gamepadRemoved, this,
                [this](int deviceId) { note(u"removed %1"_s.arg(deviceId)); });
        connect(manager, &GamepadManager::autoDetectGamePadChanged, this, [this] { note(u"auto"_s); });
    }

    QStringList take() { return std::exchange(m_lines, {}); }

private:
    void note(const QString &what)
    {
        QStringList slots;
        for (const auto &gamepad : m_manager->gamepads())
            slots.append(gamepad ? QString::number(gamepad->deviceId()) : u"dead"_s);
        m_lines.append(what + " ["_L1 + slots.join(u' ') + u']');
    }

    GamepadManager *m_manager;
    QStringList m_lines;
};
} // namespace

class TestGamepadManager : public ManagerTest
{
    Q_OBJECT

    QTimer &pollTimer() { return timerOf(*manager(), u"pollTimer"_s); }
    QTimer &pumpTimer() { return timerOf(*manager(), u"pumpTimer"_s); }

private Q_SLOTS:
    void withoutAJoystickTheListIsEmptyAndBothTimersRun()
    {
        QVERIFY(manager()->gamepads().isEmpty());
        QVERIFY(manager()->autoDetectGamePad());
        QVERIFY(pollTimer().isActive());
        QCOMPARE(pollTimer().interval(), 100);
        QVERIFY(pumpTimer().isActive());
        QCOMPARE(pumpTimer().interval(), 50);
    }

    void instanceIsOneForTheProcess()
    {
        GamepadManager *first = manager();
        QCOMPARE(first->parent(), m_parent);
        QObject other;
        QCOMPARE(GamepadManager::instance(&other), first);
        QCOMPARE(GamepadManager::instance(), first);
        QCOMPARE(first->parent(), m_parent);
    }

    void aManagerThatNobodyOwnsStaysSo()
    {
        GamepadManager *first = GamepadManager::instance(nullptr);
        QVERIFY(!first->parent());
        QObject other;
        QCOMPARE(GamepadManager::instance(&other), first);
        QVERIFY(!first->parent());
        delete first;
    }

    void afterItsParentDiedTheNextCallMakesANewOne()
    {
        scripted::plug(2, scripted::restingPad());
        const QPointer<GamepadManager> first = manager();
        const QPointer<ControlManette> device = first->gamepads().constFirst();
        delete std::exchange(m_parent, new QObject);
        QVERIFY(!first);
        QVERIFY(!device);
        QCOMPARE(manager()->parent(), m_parent);
        QCOMPARE(manager()->gamepads().size(), 1);
        QVERIFY(pollTimer().isActive());
    }

    void theFirstCallDiscovers()
    {
        scripted::plug(6, scripted::restingPad("Six"));
        scripted::plug(1, scripted::restingPad("One"));
        const auto gamepads = manager()->gamepads();
        QCOMPARE(gamepads.size(), 2);
        QCOMPARE(gamepads.at(0)->deviceId(), 1);
        QCOMPARE(gamepads.at(1)->deviceId(), 6);
        QCOMPARE(gamepads.at(1)->name(), u"Six"_s);
        QCOMPARE(gamepads.at(0)->parent(), manager());
        QVERIFY(!gamepads.at(0)->isConnected());
        QVERIFY(!timerOf(*gamepads.at(0)).isActive());
    }

    void allEightSlotsAreLookedAtAndNoMore()
    {
        for (unsigned slot = 0; slot < 8; ++slot)
            scripted::plug(slot, scripted::restingPad());
        QCOMPARE(manager()->gamepads().size(), 8);
        expire(pollTimer());
        QCOMPARE(manager()->gamepads().size(), 8);
        QCOMPARE(scripted::calls().outsideSlots, 0);
    }

    void aPollUpdatesTwiceAndReadsNoAxisOrButton()
    {
        scripted::plug(0, scripted::restingPad());
        (void)manager();
        scripted::calls() = {};
        expire(pollTimer());
        QCOMPARE(scripted::calls().update, 2);
        QCOMPARE(scripted::calls().hasAxis, 0);
        QCOMPARE(scripted::calls().getAxisPosition, 0);
        QCOMPARE(scripted::calls().isButtonPressed, 0);
    }

    void aPluggedPadIsAddedToTheListAndTold()
    {
        ManagerLog log(manager());
        scripted::plug(3, scripted::restingPad());
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList({u"changed [3]"_s, u"added 3 [3]"_s, u"changed [3]"_s}));
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList());
    }

    void twoPluggedPadsAreToldInSlotOrder()
    {
        ManagerLog log(manager());
        scripted::plug(5, scripted::restingPad());
        scripted::plug(4, scripted::restingPad());
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList({u"changed [4]"_s, u"added 4 [4]"_s, u"changed [4 5]"_s,
                                          u"added 5 [4 5]"_s, u"changed [4 5]"_s}));
    }

    void devicesStandInTheOrderInWhichTheyWereFound()
    {
        scripted::plug(5, scripted::restingPad());
        (void)manager();
        scripted::plug(0, scripted::restingPad());
        expire(pollTimer());
        QCOMPARE(manager()->gamepads().at(0)->deviceId(), 5);
        QCOMPARE(manager()->gamepads().at(1)->deviceId(), 0);
    }

    void aLostPadIsToldWhileStillListedAndAlive()
    {
        scripted::plug(3, scripted::restingPad());
        const QPointer<ControlManette> device = manager()->gamepads().constFirst();
        ManagerLog log(manager());
        scripted::unplug(3);
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList({u"removed 3 [3]"_s, u"changed []"_s, u"changed []"_s}));
        QVERIFY(device); // it goes by deleteLater
        QTRY_VERIFY(!device);
    }

    void severalLostPadsAreAllToldBeforeTheListChanges()
    {
        for (const unsigned slot : {0U, 1U, 2U})
            scripted::plug(slot, scripted::restingPad());
        ManagerLog log(manager());
        scripted::unplug(0);
        scripted::unplug(2);
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList({u"removed 0 [0 1 2]"_s, u"removed 2 [0 1 2]"_s, u"changed [1]"_s,
                                          u"changed [1]"_s}));
    }

    void onePadComesWhileAnotherGoes()
    {
        scripted::plug(0, scripted::restingPad());
        ManagerLog log(manager());
        scripted::unplug(0);
        scripted::plug(7, scripted::restingPad());
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList({u"changed [0 7]"_s, u"added 7 [0 7]"_s, u"removed 0 [0 7]"_s,
                                          u"changed [7]"_s, u"changed [7]"_s}));
    }

    void aPadThatReturnsIsANewDevice()
    {
        scripted::plug(3, scripted::restingPad());
        const QPointer<ControlManette> first = manager()->gamepads().constFirst();
        scripted::unplug(3);
        expire(pollTimer());
        scripted::plug(3, scripted::restingPad());
        expire(pollTimer());
        QCOMPARE(manager()->gamepads().size(), 1);
        QVERIFY(manager()->gamepads().constFirst() != first);
    }

    // A slot is the only identity: nobody looks at what sits in it.
    void aPadThatWasSwappedBetweenTwoLooksIsTheSameDevice()
    {
        scripted::plug(3, scripted::restingPad("First"));
        const QPointer<ControlManette> device = manager()->gamepads().constFirst();
        scripted::plug(3, scripted::restingPad("Second"));
        ManagerLog log(manager());
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(manager()->gamepads().constFirst(), device);
    }

    void aDeadPointerIsPurgedAsMinusOneAndItsPadFoundAgain()
    {
        scripted::plug(3, scripted::restingPad());
        delete manager()->gamepads().constFirst().data();
        ManagerLog log(manager());
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList({u"changed [dead 3]"_s, u"added 3 [dead 3]"_s,
                                          u"removed -1 [dead 3]"_s, u"changed [3]"_s, u"changed [3]"_s}));
    }

    void aDeadPointerWithoutItsPadIsPurged()
    {
        scripted::plug(3, scripted::restingPad());
        delete manager()->gamepads().constFirst().data();
        scripted::unplug(3);
        ManagerLog log(manager());
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList({u"removed -1 [dead]"_s, u"changed []"_s, u"changed []"_s}));
    }

    void aDeviceMovedToNoSlotIsLostAndItsPadFoundAgain()
    {
        scripted::plug(3, scripted::restingPad());
        manager()->gamepads().constFirst()->setDeviceId(99);
        ManagerLog log(manager());
        expire(pollTimer());
        QCOMPARE(log.take(), QStringList({u"changed [99 3]"_s, u"added 3 [99 3]"_s, u"removed 99 [99 3]"_s,
                                          u"changed [3]"_s, u"changed [3]"_s}));
        QCOMPARE(scripted::calls().outsideSlots, 0);
    }

    void setPollIntervalDiscoversAtOnce()
    {
        ManagerLog log(manager());
        scripted::plug(0, scripted::restingPad());
        manager()->setPollIntervalMs(100);
        QCOMPARE(log.take().size(), 3);
    }

    void aRunningTimerKeepsItsInterval()
    {
        (void)manager();
        manager()->setPollIntervalMs(400);
        QCOMPARE(pollTimer().interval(), 100);
        manager()->stopTimers();
        QVERIFY(!pollTimer().isActive());
        QVERIFY(!pumpTimer().isActive());
        manager()->setPollIntervalMs(400);
        QVERIFY(pollTimer().isActive());
        QCOMPARE(pollTimer().interval(), 400);
        QVERIFY(pumpTimer().isActive());
        QCOMPARE(pumpTimer().interval(), 50);
    }

    void aNegativePollIntervalIsAsShortAsCanBe()
    {
        manager()->stopTimers();
        manager()->setPollIntervalMs(-7);
        QVERIFY(pollTimer().isActive());
        QCOMPARE(pollTimer().interval(), 0);
    }

    void withoutAutoDetectionSetPollIntervalStartsNothing()
    {
        manager()->setAutoDetectGamePad(false);
        scripted::plug(0, scripted::restingPad());
        manager()->setPollIntervalMs(100);
        QCOMPARE(manager()->gamepads().size(), 1);
        QVERIFY(!pollTimer().isActive());
        QVERIFY(!pumpTimer().isActive());
    }

    void stopTimersStopsBoth()
    {
        manager()->stopTimers();
        QVERIFY(!pollTimer().isActive());
        QVERIFY(!pumpTimer().isActive());
        manager()->stopTimers();
        QVERIFY(manager()->autoDetectGamePad());
    }

    void autoDetectionOffStopsBothTimers()
    {
        ManagerLog log(manager());
        manager()->setAutoDetectGamePad(false);
        QCOMPARE(log.take(), QStringList({u"auto []"_s}));
        QVERIFY(!pollTimer().isActive());
        QVERIFY(!pumpTimer().isActive());
        scripted::plug(0, scripted::restingPad());
        manager()->setAutoDetectGamePad(false);
        QCOMPARE(log.take(), QStringList());
        QVERIFY(manager()->gamepads().isEmpty());
    }

    void autoDetectionOnDiscoversAndStarts()
    {
        manager()->setAutoDetectGamePad(false);
        scripted::plug(0, scripted::restingPad());
        ManagerLog log(manager());
        manager()->setAutoDetectGamePad(true);
        // The manager's own handler is connected first.
        QCOMPARE(log.take(),
                 QStringList({u"changed [0]"_s, u"added 0 [0]"_s, u"changed [0]"_s, u"auto [0]"_s}));
        QVERIFY(pollTimer().isActive());
        QVERIFY(pumpTimer().isActive());
    }

    void autoDetectionOnWhileTheTimersRunChangesNothing()
    {
        ManagerLog log(manager());
        const int updates = scripted::calls().update;
        manager()->setAutoDetectGamePad(true);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(scripted::calls().update, updates);
        QVERIFY(pollTimer().isActive());
    }

    void aListenerThatSwitchesAutoDetectionOffAgainKeepsTheTimersStopped()
    {
        manager()->setAutoDetectGamePad(false);
        scripted::plug(0, scripted::restingPad());
        connect(manager(), &GamepadManager::gamepadAdded, this,
                [this] { manager()->setAutoDetectGamePad(false); });
        manager()->setAutoDetectGamePad(true);
        QVERIFY(!pollTimer().isActive());
        QVERIFY(!pumpTimer().isActive());
    }

    void aListIsAssignedOnlyWhenItDiffers()
    {
        scripted::plug(0, scripted::restingPad());
        scripted::plug(1, scripted::restingPad());
        const auto both = manager()->gamepads();
        ManagerLog log(manager());
        manager()->setGamepads(GamepadManager::Gamepads{both.at(0).data(), both.at(1).data()});
        QCOMPARE(log.take(), QStringList());
        manager()->setGamepads({both.at(1), both.at(0)});
        QCOMPARE(log.take(), QStringList({u"changed [1 0]"_s}));
        manager()->setGamepads({both.at(1)});
        QCOMPARE(log.take(), QStringList({u"changed [1]"_s}));
    }

    void theListTravelsThroughThePropertySystem()
    {
        scripted::plug(4, scripted::restingPad());
        const QVariant property = manager()->property("gamepads");
        QCOMPARE(property.value<GamepadManager::Gamepads>(), manager()->gamepads());
        const QVariantList elements = property.value<QVariantList>();
        QCOMPARE(elements.size(), 1);
        QVERIFY(elements.first().canConvert<QObject *>());
        QCOMPARE(elements.first().value<QObject *>(), manager()->gamepads().constFirst().data());

        QSignalSpy changed(manager(), &GamepadManager::gamepadsChanged);
        QVERIFY(manager()->setProperty("gamepads", QVariant::fromValue(GamepadManager::Gamepads())));
        QCOMPARE(changed.size(), 1);
        QVERIFY(manager()->gamepads().isEmpty());
    }

    void theTypesOfTheListAreKnownByName()
    {
        (void)manager();
        QVERIFY(QMetaType::fromName("QPointer<ControlManette>").isValid());
        QVERIFY(QMetaType::fromName("QList<QPointer<ControlManette>>").isValid());
    }

    void signalsAndSlotsAreDeclaredInOrder()
    {
        const QMetaObject &meta = GamepadManager::staticMetaObject;
        QStringList declared;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            declared.append(QString::fromLatin1(meta.method(i).methodSignature()));
        QCOMPARE(declared, QStringList({u"gamepadsChanged()"_s, u"gamepadAdded(ControlManette*)"_s,
                                        u"gamepadRemoved(int)"_s, u"autoDetectGamePadChanged()"_s,
                                        u"poll()"_s, u"discoverDevices()"_s}));
        QCOMPARE(meta.property(meta.indexOfProperty("gamepads")).notifySignal().name(), "gamepadsChanged");
        QCOMPARE(meta.property(meta.indexOfProperty("autoDetectGamePad")).notifySignal().name(),
                 "autoDetectGamePadChanged");
    }

    void aPluggedPadIsFoundByThePollAlone()
    {
        manager()->setPollIntervalMs(100);
        pumpTimer().stop();
        scripted::plug(0, scripted::restingPad());
        QTRY_COMPARE_WITH_TIMEOUT(manager()->gamepads().size(), 1, 2000);
    }
};

GAMEPAD_TEST_MAIN(TestGamepadManager)
#include "tst_gamepadmanager.moc"
