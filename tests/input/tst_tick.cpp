// SPDX-License-Identifier: MIT
// One tick of a started gamepad: what it asks SFML, what it stores, what it emits and in which order.
#include "controlmanette.h"
#include "devicelog.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

using namespace Qt::StringLiterals;

namespace
{
constexpr int slot = 5;
constexpr int ticksToSettle = 30;

scripted::Pad padWithAxes(std::initializer_list<std::size_t> present)
{
    scripted::Pad pad;
    for (const std::size_t axis : present)
        pad.axes.at(axis) = 0.0F;
    pad.buttonCount = 32;
    return pad;
}

/// A device in `slot` that has learned the rest of `pad` and publishes.
struct Publishing
{
    explicit Publishing(const scripted::Pad &pad = scripted::restingPad())
    {
        scripted::plug(slot, pad);
        device.emplace(slot, nullptr);
        device->start({});
        tick(*device, ticksToSettle);
        log.emplace(*device);
    }

    scripted::Pad &pad() { return scripted::pad(slot); }
    QStringList tickOnce()
    {
        tick(*device);
        return log->take();
    }

    std::optional<ControlManette> device;
    std::optional<DeviceLog> log;
};

QStringList lines(std::initializer_list<QString> texts)
{
    return texts;
}
} // namespace

class TestTick : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
    }

    void aTickAsksSfmlForEverything()
    {
        Publishing publishing(padWithAxes({0, 6}));
        scripted::calls() = {};
        tick(*publishing.device);
        const scripted::Calls &calls = scripted::calls();
        QCOMPARE(calls.update, 1);
        QCOMPARE(calls.isConnected, 1);
        QCOMPARE(calls.getIdentification, 1);
        QCOMPARE(calls.hasAxis, 8);
        QCOMPARE(calls.getAxisPosition, 2);
        QCOMPARE(calls.isButtonPressed, 32);
    }

    void aLostJoystickIsToldByConnectedChangedAlone()
    {
        Publishing publishing;
        scripted::unplug(slot);
        scripted::calls() = {};
        QCOMPARE(publishing.tickOnce(), lines({u"connectedChanged"_s}));
        QVERIFY(!publishing.device->isConnected());
        QCOMPARE(publishing.device->status(), 0);
        QVERIFY(timerOf(*publishing.device).isActive());
        QCOMPARE(scripted::calls().getIdentification, 0);
        QCOMPARE(scripted::calls().hasAxis, 0);
        QCOMPARE(scripted::calls().isButtonPressed, 0);
        QCOMPARE(publishing.tickOnce(), QStringList());
    }

    void aJoystickThatIsBackIsToldByConnectedChangedAlone()
    {
        Publishing publishing;
        const scripted::Pad pad = publishing.pad();
        scripted::unplug(slot);
        tick(*publishing.device);
        scripted::plug(slot, pad);
        (void)publishing.log->take();
        QCOMPARE(publishing.tickOnce(), lines({u"connectedChanged"_s}));
        QCOMPARE(publishing.device->status(), 3);
        publishing.pad().axes[0] = 20.0F;
        QVERIFY(!publishing.tickOnce().isEmpty());
    }

    void aJoystickThatIsBackAsAnotherIsToldInTheOrderOfTheTick()
    {
        Publishing publishing;
        scripted::unplug(slot);
        tick(*publishing.device);
        scripted::Pad other = scripted::restingPad("Other");
        other.vendorId = 1;
        other.productId = 2;
        other.axes[0] = 20.0F;
        other.buttons.set(1);
        scripted::plug(slot, other);
        (void)publishing.log->take();
        const QString pairs = u"joy_0=double:20,but_1=bool:true"_s;
        QCOMPARE(publishing.tickOnce(),
                 lines({u"connectedChanged"_s, u"vendorIdChanged"_s, u"productIdChanged"_s, u"nameChanged"_s,
                        u"axisChanged 0 20"_s, u"buttonChanged 1 true"_s, u"dataChanged 0 1 "_s + pairs,
                        u"dataChanged gamepad gamepad "_s + pairs, u"axesChanged"_s, u"buttonsChanged"_s}));
    }

    void identificationIsReadAgainAtEachTick()
    {
        Publishing publishing;
        publishing.pad().vendorId = 1;
        publishing.pad().productId = 2;
        publishing.pad().name = "Wählbar 🎮";
        QCOMPARE(publishing.tickOnce(),
                 lines({u"vendorIdChanged"_s, u"productIdChanged"_s, u"nameChanged"_s}));
        QCOMPARE(publishing.device->vendorId(), 1U);
        QCOMPARE(publishing.device->productId(), 2U);
        QCOMPARE(publishing.device->name(), u"Wählbar 🎮"_s);
        QCOMPARE(publishing.tickOnce(), QStringList());

        publishing.pad().name = "Other";
        QCOMPARE(publishing.tickOnce(), lines({u"nameChanged"_s}));
    }

    void aNameThatHoldsWhatIsNoCharacterIsToldOnce()
    {
        Publishing publishing;
        publishing.pad().name = "a\xED\xA0\x80"
                                "b"; // half a surrogate pair
        QCOMPARE(publishing.tickOnce(), lines({u"nameChanged"_s}));
        QCOMPARE(publishing.device->name(), u"ab"_s);
        QCOMPARE(publishing.tickOnce(), QStringList());
    }

    void aNameWrittenFromOutsideGivesWayToSfmls()
    {
        Publishing publishing;
        publishing.device->setName(u"mine"_s);
        (void)publishing.log->take();
        QCOMPARE(publishing.tickOnce(), lines({u"nameChanged"_s}));
        QCOMPARE(publishing.device->name(), u"Scripted Pad"_s);
    }

    void oneStickMovementGoesOutInBothForms()
    {
        scripted::Pad pad = padWithAxes({0});
        pad.axes[0] = 2.0F;
        Publishing publishing(pad);
        publishing.pad().axes[0] = 37.75F;
        QCOMPARE(publishing.tickOnce(),
                 lines({u"axisChanged 0 35.75"_s, u"dataChanged 0 1 joy_0=double:35.75"_s,
                        u"dataChanged gamepad gamepad joy_0=double:35.75"_s, u"axesChanged"_s,
                        u"buttonsChanged"_s}));
        QCOMPARE(publishing.device->axes().at(0).toDouble(), 35.75);
    }

    void axesAndButtonsGoOutInPassOrderAsOneBatch()
    {
        Publishing publishing;
        publishing.pad().buttons.set(3);
        publishing.pad().axes[1] = -12.25F;
        publishing.pad().axes[0] = 37.5F;
        const QString pairs = u"joy_0=double:37.5,joy_1=double:-12.25,but_3=bool:true"_s;
        QCOMPARE(publishing.tickOnce(),
                 lines({u"axisChanged 0 37.5"_s, u"axisChanged 1 -12.25"_s, u"buttonChanged 3 true"_s,
                        u"dataChanged 0 1 "_s + pairs, u"dataChanged gamepad gamepad "_s + pairs,
                        u"axesChanged"_s, u"buttonsChanged"_s}));
    }

    void axisChangedComesInsideThePass()
    {
        Publishing publishing;
        QVariantList seen;
        connect(&*publishing.device, &ControlManette::axisChanged, this,
                [&] { seen.append(publishing.device->axes().at(1)); });
        publishing.pad().axes[0] = 50.0F;
        publishing.pad().axes[1] = 60.0F;
        tick(*publishing.device);
        QCOMPARE(seen, QVariantList({0.0, 60.0}));
    }

    void twoButtonsInOneTickMakeOneBatch()
    {
        Publishing publishing;
        publishing.pad().buttons.set(0);
        publishing.pad().buttons.set(31);
        const QString pairs = u"but_0=bool:true,but_31=bool:true"_s;
        QCOMPARE(publishing.tickOnce(),
                 lines({u"buttonChanged 0 true"_s, u"buttonChanged 31 true"_s, u"dataChanged 0 1 "_s + pairs,
                        u"dataChanged gamepad gamepad "_s + pairs, u"axesChanged"_s, u"buttonsChanged"_s}));
        QCOMPARE(publishing.tickOnce(), QStringList()); // held buttons are not repeated
        publishing.pad().buttons.reset(0);
        QCOMPARE(publishing.tickOnce().first(), u"buttonChanged 0 false"_s);
        QCOMPARE(publishing.device->buttons().at(31), QVariant(true));
    }

    void aTickInWhichNothingChangesEmitsNothing()
    {
        Publishing publishing;
        for (int i = 0; i < 10; ++i)
            QCOMPARE(publishing.tickOnce(), QStringList());
    }

    void aHeldStickIsRepeatedAtEveryTick_data()
    {
        QTest::addColumn<float>("reading");
        QTest::newRow("far out") << 50.0F;
        QTest::newRow("just outside the band") << 8.25F;
        QTest::newRow("below the band") << -8.25F;
    }
    void aHeldStickIsRepeatedAtEveryTick()
    {
        QFETCH(const float, reading);
        Publishing publishing(padWithAxes({4}));
        publishing.pad().axes[4] = reading;
        const QStringList first = publishing.tickOnce();
        QCOMPARE(first.size(), 5);
        QCOMPARE(first.first(), u"axisChanged 4 %1"_s.arg(double(reading)));
        for (int i = 0; i < 20; ++i)
            QCOMPARE(publishing.tickOnce(), first);
    }

    void insideTheBandOnlyMovementIsTold()
    {
        Publishing publishing(padWithAxes({0}));
        publishing.pad().axes[0] = 0.5F; // not more than half a unit
        QCOMPARE(publishing.tickOnce(), QStringList());
        publishing.pad().axes[0] = 8.0F; // the band's own edge
        QCOMPARE(publishing.tickOnce().first(), u"axisChanged 0 8"_s);
        QCOMPARE(publishing.tickOnce(), QStringList());
        publishing.pad().axes[0] = -8.0F;
        QCOMPARE(publishing.tickOnce().first(), u"axisChanged 0 -8"_s);
        QCOMPARE(publishing.tickOnce(), QStringList());
        publishing.pad().axes[0] = 0.25F;
        QCOMPARE(publishing.tickOnce().first(), u"axisChanged 0 0.25"_s);
        publishing.pad().axes[0] = 0.0F; // no snap to zero: the last accepted value stays
        QCOMPARE(publishing.tickOnce(), QStringList());
        QCOMPARE(publishing.device->axes().at(0).toDouble(), 0.25);
    }

    void aTriggerIsReadFromItsRest_data()
    {
        QTest::addColumn<float>("rest");
        QTest::addColumn<float>("reading");
        QTest::addColumn<QString>("told");
        QTest::newRow("from the bottom to the middle") << -100.0F << 0.0F << u"axisChanged 2 50"_s;
        QTest::newRow("from the bottom to the top") << -100.0F << 100.0F << u"axisChanged 2 100"_s;
        QTest::newRow("from the top to the middle") << 100.0F << 0.0F << u"axisChanged 2 50"_s;
        QTest::newRow("from the top to the bottom") << 100.0F << -100.0F << u"axisChanged 2 100"_s;
    }
    void aTriggerIsReadFromItsRest()
    {
        QFETCH(const float, rest);
        QFETCH(const float, reading);
        QFETCH(const QString, told);
        scripted::Pad pad = padWithAxes({2});
        pad.axes[2] = rest;
        scripted::plug(slot, pad);
        ControlManette device(slot, nullptr);
        device.start({});
        tick(device, 8);
        DeviceLog log(device);
        tick(device);
        QCOMPARE(log.take(), QStringList());
        scripted::pad(slot).axes[2] = reading;
        tick(device);
        QCOMPARE(log.take().value(0), told);
    }

    void aReadingThatIsNotFiniteCountsAsZero()
    {
        Publishing publishing(padWithAxes({0}));
        publishing.pad().axes[0] = 30.0F;
        tick(*publishing.device);
        publishing.pad().axes[0] = std::numeric_limits<float>::quiet_NaN();
        (void)publishing.log->take();
        QCOMPARE(publishing.tickOnce().first(), u"axisChanged 0 0"_s);
    }

    // The diagnostic lines are for people who look for a fault; their literals are fixed.
    void theDiagnosticLinesTellCalibrationReadinessAndValues()
    {
        scripted::Pad pad = padWithAxes({0, 2});
        pad.axes[0] = 3.0F;
        pad.axes[2] = -100.0F;
        scripted::plug(slot, pad);
        ControlManette device(slot, nullptr);
        device.start({});
        QTest::ignoreMessage(QtDebugMsg, "[calib] axis 2 HARD bias = -100 (trigger)");
        tick(device, 8);
        QTest::ignoreMessage(QtDebugMsg, "[calib] axis 0 SOFT bias = 3");
        QTest::ignoreMessage(QtDebugMsg, "[ready] all present axes calibrated → start publishing");
        tick(device, 22);
        scripted::pad(slot).axes[0] = 40.5F;
        scripted::pad(slot).buttons.set(7);
        QTest::ignoreMessage(QtDebugMsg, "\"joy_0\" 37.5");
        QTest::ignoreMessage(QtDebugMsg, "\"but_7\" true");
        QTest::ignoreMessage(QtDebugMsg, "[flush] \"joy_0=37.5, but_7=true\"");
        tick(device);
    }
};

GAMEPAD_TEST_MAIN(TestTick)
#include "tst_tick.moc"
