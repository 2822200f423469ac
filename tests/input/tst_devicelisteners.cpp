// SPDX-License-Identifier: MIT
// Listeners that start, stop, reset and renumber the device that speaks to them.
#include "controlmanette.h"
#include "devicelog.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QPointer>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{
scripted::Pad padWithTwoAxes()
{
    scripted::Pad pad;
    pad.name = "Blue Pad";
    pad.axes[0] = 0.0F;
    pad.axes[1] = 0.0F;
    pad.buttonCount = 32;
    return pad;
}

/// Past calibration.
std::unique_ptr<ControlManette> publishingDevice()
{
    scripted::plug(0, padWithTwoAxes());
    auto device = std::make_unique<ControlManette>(0, nullptr);
    device->start({});
    tick(*device, 30);
    return device;
}
} // namespace

class TestDeviceListeners : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
    }

    void startInsideAxisChangedCalibratesAnew()
    {
        const auto device = publishingDevice();
        device->setValue(0, 1, u"pollingInterval"_s, 40);
        DeviceLog log(*device);
        connect(
            device.get(), &ControlManette::axisChanged, this, [&device] { device->start({}); },
            Qt::SingleShotConnection);
        scripted::pad(0).axes[0] = 30.0F;
        scripted::pad(0).axes[1] = 30.0F;
        scripted::pad(0).buttons.set(0);
        tick(*device);
        // The rest of that tick is part of the new calibration, and its batch goes nowhere.
        QCOMPARE(log.take(), QStringList({u"axisChanged 0 30"_s}));
        QCOMPARE(device->axes().at(0).toDouble(), 0.0);
        QCOMPARE(device->buttons().at(0), QVariant(true));
        QCOMPARE(device->status(), 3);
        QVERIFY(timerOf(*device).isActive());
        QCOMPARE(timerOf(*device).interval(), 10);

        scripted::pad(0).axes[0] = 2.0F;
        scripted::pad(0).axes[1] = -3.0F;
        tick(*device, 29);
        QCOMPARE(log.take(), QStringList());
        tick(*device);
        scripted::pad(0).axes[0] = 32.0F;
        tick(*device);
        QCOMPARE(log.take().value(0), u"axisChanged 0 30"_s);
    }

    void startInsideTheBatchCalibratesAnew()
    {
        const auto device = publishingDevice();
        connect(
            device.get(),
            qOverload<int, int, const QStringList &, const QVariantList &>(&ControlManette::dataChanged),
            this, [&device] { device->start({}); }, Qt::SingleShotConnection);
        scripted::pad(0).axes[0] = 30.0F;
        DeviceLog log(*device);
        tick(*device);
        // Both forms carry the same lists, so the second still goes out.
        QCOMPARE(log.take(), QStringList({u"axisChanged 0 30"_s, u"dataChanged 0 1 joy_0=double:30"_s,
                                          u"dataChanged gamepad gamepad joy_0=double:30"_s, u"axesChanged"_s,
                                          u"buttonsChanged"_s}));
        tick(*device);
        QCOMPARE(log.take(), QStringList());
    }

    void stopInsideConnectedChangedOfStartStopsIt()
    {
        scripted::plug(0, padWithTwoAxes());
        ControlManette device(0, nullptr);
        DeviceLog log(device);
        connect(&device, &ControlManette::connectedChanged, this, [&device] { device.stop(); });
        device.start({});
        QCOMPARE(log.take(),
                 QStringList({u"connectedChanged"_s, u"connectedChanged"_s, u"statusChanged 0"_s}));
        QCOMPARE(device.status(), 0);
        QVERIFY(!timerOf(device).isActive());
    }

    void stopInsideConnectedChangedOfATickEndsTheTick()
    {
        ControlManette device(0, nullptr);
        device.start({});
        scripted::plug(0, padWithTwoAxes());
        scripted::pad(0).buttons.set(3);
        DeviceLog log(device);
        connect(&device, &ControlManette::connectedChanged, this, [&device] { device.stop(); });
        tick(device);
        QCOMPARE(log.take(),
                 QStringList({u"connectedChanged"_s, u"connectedChanged"_s, u"statusChanged 0"_s}));
        QVERIFY(!timerOf(device).isActive());
        QCOMPARE(device.buttons().at(3), QVariant(false));
    }

    void stopInsideConnectedChangedOfStopTellsOnce()
    {
        const auto device = publishingDevice();
        DeviceLog log(*device);
        connect(device.get(), &ControlManette::connectedChanged, this, [&device] { device->stop(); });
        device->stop();
        QCOMPARE(log.take(), QStringList({u"connectedChanged"_s, u"statusChanged 0"_s}));
    }

    // The last that the host hears is what holds.
    void startInsideConnectedChangedOfStopRunsOn()
    {
        const auto device = publishingDevice();
        DeviceLog log(*device);
        connect(device.get(), &ControlManette::connectedChanged, this, [&device] {
            if (!device->isConnected())
                device->start({});
        });
        device->stop();
        QCOMPARE(log.take(),
                 QStringList({u"connectedChanged"_s, u"connectedChanged"_s, u"statusChanged 3"_s}));
        QCOMPARE(device->status(), 3);
        QVERIFY(timerOf(*device).isActive());
        scripted::pad(0).buttons.set(1);
        tick(*device, 30);
        scripted::pad(0).buttons.set(2);
        tick(*device);
        QCOMPARE(log.take().value(0), u"buttonChanged 2 true"_s);
    }

    void resetInsideButtonChangedSilencesTheRestOfTheTick()
    {
        const auto device = publishingDevice();
        DeviceLog log(*device);
        connect(device.get(), &ControlManette::buttonChanged, this, [&device] { device->resetAllBias(); });
        scripted::pad(0).axes[1] = 50.0F;
        scripted::pad(0).buttons.set(4);
        scripted::pad(0).buttons.set(5);
        tick(*device);
        QCOMPARE(log.take(), QStringList({u"axisChanged 1 50"_s, u"buttonChanged 4 true"_s}));
        QCOMPARE(device->buttons().at(5), QVariant(true));
        QCOMPARE(device->axes().at(1).toDouble(), 0.0);

        // Silent until all axes are known again, and what is held by then makes no press.
        scripted::pad(0).axes[1] = 4.0F;
        tick(*device, 29);
        QCOMPARE(log.take(), QStringList());
        scripted::pad(0).buttons.reset(5);
        tick(*device);
        QCOMPARE(log.take(), QStringList({u"buttonChanged 5 false"_s}));
    }

    void aDeviceThatIsMovedToNoSlotHasNoNameAndNoIds_data()
    {
        QTest::addColumn<int>("slot");
        QTest::newRow("99") << 99;
        QTest::newRow("ninth") << 8;
        QTest::newRow("placeholder's") << -1;
        QTest::newRow("below the placeholder's") << -2;
        QTest::newRow("largest") << std::numeric_limits<int>::max();
        QTest::newRow("smallest") << std::numeric_limits<int>::min();
    }
    void aDeviceThatIsMovedToNoSlotHasNoNameAndNoIds()
    {
        QFETCH(const int, slot);
        const auto device = publishingDevice();
        DeviceLog log(*device);
        QVERIFY(device->setProperty("deviceId", slot));
        scripted::pad(0).axes[0] = 30.0F;
        tick(*device, 40);
        QCOMPARE(log.take(), QStringList({u"deviceIdChanged"_s, u"connectedChanged"_s, u"vendorIdChanged"_s,
                                          u"productIdChanged"_s, u"nameChanged"_s}));
        QCOMPARE(device->property("connected"), QVariant(false));
        QCOMPARE(device->status(), 0);
        QCOMPARE(device->name(), QString());
        QCOMPARE(device->vendorId(), 0U);
        QCOMPARE(device->productId(), 0U);
        QVERIFY(device->deviceJson().contains(u"\"deviceId\":%1,\"name\":\"\""_s.arg(slot)));
        device->start({});
        tick(*device, 40);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(scripted::calls().outsideSlots, 0);

        // Moved back, it is itself again.
        scripted::pad(0).axes[0] = 0.0F;
        QVERIFY(device->setProperty("deviceId", 0));
        tick(*device, 30);
        QCOMPARE(log.take(), QStringList({u"deviceIdChanged"_s, u"connectedChanged"_s, u"vendorIdChanged"_s,
                                          u"productIdChanged"_s, u"nameChanged"_s}));
        QCOMPARE(device->name(), u"Blue Pad"_s);
        scripted::pad(0).axes[0] = 30.0F;
        tick(*device);
        QCOMPARE(log.take().value(0), u"axisChanged 0 30"_s);
    }

    // A pad that is away is still known by its name.
    void aPadThatIsAwayKeepsItsNameAndIds()
    {
        const auto device = publishingDevice();
        scripted::unplug(0);
        DeviceLog log(*device);
        tick(*device, 3);
        QCOMPARE(log.take(), QStringList({u"connectedChanged"_s}));
        QCOMPARE(device->name(), u"Blue Pad"_s);
        QCOMPARE(device->vendorId(), 0x1234U);
        QCOMPARE(device->productId(), 0xabcdU);
    }
};

GAMEPAD_TEST_MAIN(TestDeviceListeners)
#include "tst_devicelisteners.moc"
