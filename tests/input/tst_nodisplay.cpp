// SPDX-License-Identifier: MIT
// Where SFML can make no window, the process lives and joysticks are found by polling.
#include "gamepadmanager.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

using namespace Qt::StringLiterals;

class TestNoDisplay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
    }

    void theManagerPollsWithoutAWindow()
    {
        QObject parent;
        GamepadManager *manager = GamepadManager::instance(&parent);
        QTimer &pumpTimer = timerOf(*manager, u"pumpTimer"_s);
        QVERIFY(pumpTimer.isActive());
        scripted::post(scripted::WindowEvent::JoystickConnected);
        expire(pumpTimer);
        QCOMPARE(scripted::waitingEvents(), 1U); // no window asked for it

        scripted::plug(0, scripted::restingPad());
        QTRY_COMPARE(manager->gamepads().size(), 1);
        scripted::unplug(0);
        QTRY_VERIFY(manager->gamepads().isEmpty());
    }
};

GAMEPAD_TEST_MAIN(TestNoDisplay)
#include "tst_nodisplay.moc"
