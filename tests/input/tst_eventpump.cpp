// SPDX-License-Identifier: MIT
// Joystick events of the hidden window, and the discovery that follows them.
#include "gamepadmanager.h"
#include "managertest.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QElapsedTimer>
#include <QtTest/QSignalSpy>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using scripted::WindowEvent;

class TestEventPump : public ManagerTest
{
    Q_OBJECT

    void pump()
    {
        QTimer &timer = timerOf(*manager(), u"pumpTimer"_s);
        timer.start();
        expire(timer);
        timer.stop();
    }

private Q_SLOTS:
    void init()
    {
        ManagerTest::init();
        manager()->stopTimers(); // what is discovered now is discovered by events
        scripted::calls() = {};
    }

    void aJoystickEventLeadsToADiscoveryAQuarterOfASecondLater_data()
    {
        QTest::addColumn<bool>("connected");
        QTest::newRow("connected") << true;
        QTest::newRow("disconnected") << false;
    }
    void aJoystickEventLeadsToADiscoveryAQuarterOfASecondLater()
    {
        QFETCH(const bool, connected);
        scripted::plug(2, scripted::restingPad());
        scripted::post(connected ? WindowEvent::JoystickConnected : WindowEvent::JoystickDisconnected);
        QElapsedTimer waited;
        waited.start();
        pump();
        // Timers expire in their order, however busy the machine is.
        std::optional<qsizetype> listedByThen;
        QTimer::singleShot(400ms, this, [&] { listedByThen = manager()->gamepads().size(); });
        QCOMPARE(scripted::waitingEvents(), 0U);
        QVERIFY(manager()->gamepads().isEmpty());
        QTRY_COMPARE(manager()->gamepads().size(), 1);
        QVERIFY2(waited.elapsed() >= 230,
                 qPrintable(QString::number(waited.elapsed()))); // coarse timers: 5 %
        QTRY_VERIFY(listedByThen);
        QCOMPARE(*listedByThen, 1);
    }

    void everyEventIsConsumedAndOnlyJoysticksCount()
    {
        for (int i = 0; i < 100; ++i)
            scripted::post(WindowEvent::Other);
        pump();
        QCOMPARE(scripted::waitingEvents(), 0U);
        pump(); // nothing waits at all
        // Whatever those had scheduled would come before this one's discovery.
        scripted::post(WindowEvent::Other);
        scripted::post(WindowEvent::JoystickConnected);
        scripted::post(WindowEvent::JoystickDisconnected);
        scripted::post(WindowEvent::Other);
        pump();
        QCOMPARE(scripted::waitingEvents(), 0U);
        QTRY_VERIFY(scripted::calls().update > 0);
        QCOMPARE(scripted::calls().update, 1); // one discovery, for all events of the pump
    }

    void severalPumpsEachScheduleADiscovery()
    {
        for (int i = 0; i < 3; ++i) {
            scripted::post(WindowEvent::JoystickConnected);
            pump();
        }
        QCOMPARE(scripted::calls().update, 0);
        QTRY_COMPARE(scripted::calls().update, 3);
    }

    void aSecondDiscoveryFindsNothingAndTellsNothing()
    {
        scripted::plug(0, scripted::restingPad());
        QSignalSpy changed(manager(), &GamepadManager::gamepadsChanged);
        QSignalSpy added(manager(), &GamepadManager::gamepadAdded);
        scripted::post(WindowEvent::JoystickConnected);
        pump();
        scripted::post(WindowEvent::JoystickConnected);
        pump();
        QTRY_COMPARE(scripted::calls().update, 3); // two discoveries, and the new device's own update
        QCOMPARE(changed.size(), 2);
        QCOMPARE(added.size(), 1);
    }

    void aScheduledDiscoveryDiesWithTheManager()
    {
        scripted::post(WindowEvent::JoystickConnected);
        pump();
        delete std::exchange(m_parent, new QObject);
        scripted::calls() = {};
        manager()->stopTimers();
        const int updates = scripted::calls().update;
        scripted::post(WindowEvent::JoystickConnected);
        pump();
        QTRY_VERIFY(scripted::calls().update > updates);
        QCOMPARE(scripted::calls().update, updates + 1);
    }

    void theRunningPumpFindsEventsByItself()
    {
        QTimer &timer = timerOf(*manager(), u"pumpTimer"_s);
        timer.start();
        scripted::plug(1, scripted::restingPad());
        scripted::post(WindowEvent::JoystickConnected);
        QTRY_COMPARE(manager()->gamepads().size(), 1);
    }
};

GAMEPAD_TEST_MAIN(TestEventPump)
#include "tst_eventpump.moc"
