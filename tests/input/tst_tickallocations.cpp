// SPDX-License-Identifier: MIT
// A tick runs a hundred times a second in somebody else's process: what it takes from the heap is counted.
#include "allocationcounter.h"
#include "controlmanette.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QLoggingCategory>

#include <SFML/Window/Joystick.hpp>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace
{
// Long enough that SFML's own copy of the name is on the heap.
constexpr auto longName = "A gamepad with a name of ordinary length, été 🎮";

std::size_t allocationsOfTicks(const ControlManette &device, int ticks)
{
    QTimer &timer = timerOf(device);
    QTimerEvent expiry(timer.id());
    const AllocationCounter counter;
    for (int i = 0; i < ticks; ++i)
        QCoreApplication::sendEvent(&timer, &expiry);
    return counter.count();
}

std::size_t allocationsOfIdentification(int times)
{
    const AllocationCounter counter;
    for (int i = 0; i < times; ++i)
        (void)sf::Joystick::getIdentification(0);
    return counter.count();
}
} // namespace

class TestTickAllocations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
        QLoggingCategory::setFilterRules(u"default.debug=false"_s);
    }
    void cleanup() { QLoggingCategory::setFilterRules({}); }

    void theCounterCounts()
    {
        const AllocationCounter counter;
        QCOMPARE(counter.count(), 0U);
        // Volatile, since a compiler may leave out an allocation that it sees unused.
        int *volatile one = new int(1);
        QCOMPARE(counter.count(), 1U);
        void *volatile two = std::malloc(100);
        QCOMPARE(counter.count(), 2U);
        delete one;
        std::free(two);
        QCOMPARE(counter.count(), 2U);
    }

    void anIdleTickTakesWhatSfmlsIdentificationTakesAndNoMore_data()
    {
        QTest::addColumn<bool>("debugOutput");
        QTest::newRow("without debug output") << false;
        QTest::newRow("with debug output") << true;
    }
    void anIdleTickTakesWhatSfmlsIdentificationTakesAndNoMore()
    {
        QFETCH(const bool, debugOutput);
        scripted::plug(0, scripted::restingPad(longName));
        ControlManette device(0, nullptr);
        device.start({});
        tick(device, 40);
        QLoggingCategory::setFilterRules(debugOutput ? QString() : u"default.debug=false"_s);
        const std::size_t bare = allocationsOfIdentification(100);
        QVERIFY(bare >= 100);
        QCOMPARE(allocationsOfTicks(device, 100), bare);
    }

    void aTickWithoutItsJoystickTakesNothing()
    {
        ControlManette device(0, nullptr);
        device.start({});
        QCOMPARE(allocationsOfTicks(device, 100), 0U);
    }

    void aCalibratingTickTakesNoMoreThanAnIdleOne()
    {
        scripted::plug(0, scripted::restingPad(longName));
        scripted::pad(0).axes[3] = 60.0F; // held: calibration does not end
        ControlManette device(0, nullptr);
        device.start({});
        tick(device, 2);
        const std::size_t bare = allocationsOfIdentification(100);
        QCOMPARE(allocationsOfTicks(device, 100), bare);
    }

    // The two lists of the batch, and nothing for keys or for diagnostic lines that nobody reads.
    void aFullTickTakesTwoBlocksMore()
    {
        scripted::plug(0, scripted::restingPad(longName));
        ControlManette device(0, nullptr);
        device.start({});
        tick(device, 30);
        for (auto &axis : scripted::pad(0).axes)
            axis = 50.0F;
        tick(device, 2);
        const std::size_t bare = allocationsOfIdentification(100);
        QCOMPARE(allocationsOfTicks(device, 100), bare + 200);
    }
};

GAMEPAD_TEST_MAIN(TestTickAllocations)
#include "tst_tickallocations.moc"
