// SPDX-License-Identifier: MIT
// Listeners of the manager that run an event loop, as a message box does, while pads come and go.
#include "gamepadmanager.h"
#include "managertest.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QEventLoop>
#include <QtTest/QSignalSpy>

#include <functional>

using namespace Qt::StringLiterals;

namespace
{
/// An event loop that is left when `reached` holds; true then.
bool waitInside(const std::function<bool()> &reached)
{
    QEventLoop loop;
    QTimer look;
    bool timely = false;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        timely = reached();
        if (timely)
            loop.quit();
    });
    look.start(1);
    QTimer::singleShot(5000, &loop, &QEventLoop::quit);
    loop.exec();
    return timely;
}
} // namespace

class TestDiscoveryDialogs : public ManagerTest
{
    Q_OBJECT

    /// How the discovery began in which the listener's event loop runs. Qt does not let a timer expire inside
    /// itself, so that below the poll the pump alone finds what happens.
    static void begunRows()
    {
        QTest::addColumn<bool>("byThePoll");
        QTest::newRow("by the poll") << true;
        QTest::newRow("by a call") << false;
    }
    /// Discovery under an event loop, as in an application: Qt keeps a device whose deletion was asked for
    /// there from being deleted in loops below. Until `done`.
    bool discover(bool byThePoll, const bool &done)
    {
        if (!byThePoll)
            QTimer::singleShot(0, manager(), [this] { manager()->setPollIntervalMs(100); });
        return waitInside([&done] { return done; });
    }

private Q_SLOTS:
    void padsComeAndGoInsideGamepadAdded_data() { begunRows(); }
    void padsComeAndGoInsideGamepadAdded()
    {
        QFETCH(const bool, byThePoll);
        const QSignalSpy come(manager(), &GamepadManager::gamepadAdded);
        const QSignalSpy gone(manager(), &GamepadManager::gamepadRemoved);
        if (!byThePoll)
            timerOf(*manager(), u"pollTimer"_s).stop();
        bool found = false;
        bool done = false;
        connect(
            manager(), &GamepadManager::gamepadAdded, this,
            [&](const ControlManette *device) {
                QCOMPARE(device->deviceId(), 2);
                timerOf(*manager(), u"pollTimer"_s).start();
                scripted::unplug(2);
                scripted::plug(5, scripted::restingPad());
                scripted::post(scripted::WindowEvent::JoystickDisconnected);
                found = waitInside([this] { return listedSlots() == QList<int>{5}; });
                done = true;
            },
            Qt::SingleShotConnection);
        scripted::plug(2, scripted::restingPad());
        QVERIFY(discover(byThePoll, done));
        QVERIFY(found);
        QCOMPARE(listedSlots(), QList<int>{5});
        QCOMPARE(come.size(), 2);
        QCOMPARE(gone.size(), 1);
        QCOMPARE(gone.first().first(), QVariant(2));
        QCOMPARE(manager()->findChildren<ControlManette *>().size(), 1);
        // Discovery goes on as ever.
        scripted::plug(1, scripted::restingPad());
        QTRY_COMPARE(listedSlots(), (QList<int>{5, 1}));
    }

    void padsComeAndGoInsideGamepadRemoved_data() { begunRows(); }
    void padsComeAndGoInsideGamepadRemoved()
    {
        QFETCH(const bool, byThePoll);
        scripted::plug(0, scripted::restingPad());
        scripted::plug(1, scripted::restingPad());
        QCOMPARE(listedSlots(), (QList<int>{0, 1}));
        const QPointer<ControlManette> before = manager()->gamepads().constFirst();
        if (!byThePoll)
            timerOf(*manager(), u"pollTimer"_s).stop();
        QList<int> gone;
        bool found = false;
        bool alive = false;
        bool done = false;
        connect(manager(), &GamepadManager::gamepadRemoved, this, [&](int slot) {
            gone << slot;
            if (done)
                return;
            timerOf(*manager(), u"pollTimer"_s).start();
            // The pad is back already, the other one goes too, and a third comes.
            scripted::plug(0, scripted::restingPad());
            scripted::unplug(1);
            scripted::plug(6, scripted::restingPad());
            scripted::post(scripted::WindowEvent::JoystickConnected);
            found = waitInside([this] { return listedSlots().contains(6); });
            alive = before && manager()->gamepads().contains(before);
            done = true;
        });
        scripted::unplug(0);
        QVERIFY(discover(byThePoll, done));
        QVERIFY(found);
        QVERIFY(alive);
        QCOMPARE(gone, (QList<int>{0, 1}));
        QTRY_COMPARE(listedSlots(), (QList<int>{6, 0}));
        QTRY_VERIFY(!before);
        QCOMPARE(gone, (QList<int>{0, 1}));
        QCOMPARE(manager()->findChildren<ControlManette *>().size(), 2);
    }

    void theManagerMayDieInsideADialog_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<bool>("pluggedBefore");
        QTest::newRow("added") << QByteArray(SIGNAL(gamepadAdded(ControlManette *))) << false;
        QTest::newRow("removed") << QByteArray(SIGNAL(gamepadRemoved(int))) << true;
    }
    void theManagerMayDieInsideADialog()
    {
        QFETCH(const QByteArray, signal);
        QFETCH(const bool, pluggedBefore);
        if (pluggedBefore)
            scripted::plug(0, scripted::restingPad());
        const QPointer<GamepadManager> watched = manager();
        connect(watched, signal.constData(), this, SLOT(letGoInADialog()));
        if (pluggedBefore)
            scripted::unplug(0);
        else
            scripted::plug(0, scripted::restingPad());
        QTRY_VERIFY(!watched);
        QVERIFY(!m_parent);
    }

public Q_SLOTS:
    void letGoInADialog()
    {
        QTimer::singleShot(0, m_parent, &QObject::deleteLater);
        QVERIFY(waitInside([this] { return !m_parent; }));
    }
};

GAMEPAD_TEST_MAIN(TestDiscoveryDialogs)
#include "tst_discoverydialogs.moc"
