// SPDX-License-Identifier: MIT
// Construction, start, stop and quit of a gamepad, and its properties.
#include "controlmanette.h"
#include "devicelog.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QMetaProperty>
#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

class TestDeviceLifecycle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
    }

    void aNewDeviceKnowsWhatSfmlKnowsAndIsStopped()
    {
        scripted::Pad pad = scripted::restingPad("Manette d'été");
        pad.buttons.set(0);
        scripted::plug(3, pad);
        const ControlManette device(3, nullptr);
        QCOMPARE(device.deviceId(), 3);
        QCOMPARE(device.name(), u"Manette d'été"_s);
        QCOMPARE(device.vendorId(), 0x1234U);
        QCOMPARE(device.productId(), 0xabcdU);
        QVERIFY(!device.isConnected());
        QCOMPARE(device.axes(), QVariantList(8, QVariant(0.0)));
        QCOMPARE(device.buttons(), QVariantList(32, QVariant(false)));
        QVERIFY(!timerOf(device).isActive());
        QCOMPARE(scripted::calls().update, 1);
        QCOMPARE(scripted::calls().getIdentification, 1);
        QCOMPARE(scripted::calls().isConnected, 0);
    }

    void aPlaceholderNeverAsksSfml()
    {
        ControlManette device(-1, nullptr);
        QCOMPARE(device.deviceId(), -1);
        QVERIFY(device.name().isEmpty());
        QCOMPARE(device.vendorId(), 0U);
        QCOMPARE(device.productId(), 0U);
        QCOMPARE(device.axes(), QVariantList(8, QVariant(0.0)));
        QCOMPARE(device.buttons(), QVariantList(32, QVariant(false)));
        device.stop();
        QCOMPARE(device.status(), 0);
        QCOMPARE(scripted::calls().update, 0);
        QCOMPARE(scripted::calls().getIdentification, 0);
    }

    void aPlaceholdersTimerRunsNothing()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(-1, nullptr);
        device.start({});
        QVERIFY(timerOf(device).isActive());
        const int updates = scripted::calls().update;
        tick(device, 40);
        QCOMPARE(scripted::calls().update, updates);
        QCOMPARE(scripted::calls().outsideSlots, 0);
    }

    void aDeviceOutsideTheSlotsIsNotConnected_data()
    {
        QTest::addColumn<int>("slot");
        QTest::newRow("ninth") << 8;
        QTest::newRow("99") << 99;
        QTest::newRow("below the placeholder") << -2;
        QTest::newRow("largest") << std::numeric_limits<int>::max();
        QTest::newRow("smallest") << std::numeric_limits<int>::min();
    }
    void aDeviceOutsideTheSlotsIsNotConnected()
    {
        QFETCH(const int, slot);
        ControlManette device(slot, nullptr);
        QVERIFY(device.name().isEmpty());
        QCOMPARE(device.vendorId(), 0U);
        DeviceLog log(device);
        device.start({});
        tick(device, 40);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(device.status(), 0);
        QCOMPARE(scripted::calls().outsideSlots, 0);
    }

    void startWithAJoystickConnectsAndTicks()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        DeviceLog log(device);
        QVERIFY(device.status() == IComInterface::noCom);
        scripted::calls() = {};
        device.start(u"ignored"_s);
        QCOMPARE(log.take(), QStringList({u"connectedChanged"_s, u"statusChanged 3"_s}));
        QCOMPARE(device.status(), 3);
        QVERIFY(device.isConnected());
        QVERIFY(timerOf(device).isActive());
        QCOMPARE(timerOf(device).interval(), 10);
        QCOMPARE(scripted::calls().update, 1);
        QCOMPARE(scripted::calls().hasAxis, 8);
        QCOMPARE(scripted::calls().getAxisPosition, 0);
    }

    // Listeners of `statusChanged` find a device that ticks already.
    void statusChangedIsTheLastThingOfStart()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        bool ticking = false;
        connect(&device, &IComInterface::statusChanged, this, [&] { ticking = timerOf(device).isActive(); });
        device.start({});
        QVERIFY(ticking);
    }

    void startWithoutAJoystickTicksAndTellsNothing()
    {
        ControlManette device(0, nullptr);
        DeviceLog log(device);
        device.start({});
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(device.status(), 0);
        QVERIFY(timerOf(device).isActive());
        scripted::calls() = {};
        tick(device, 3);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(scripted::calls().isConnected, 3);
        QCOMPARE(scripted::calls().getIdentification, 0);
    }

    void aSecondStartTellsNothing()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        device.start({});
        DeviceLog log(device);
        device.start({});
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(device.status(), 3);
    }

    void startOfADeviceWhoseJoystickVanishedTellsTheLossOnly()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        device.start({});
        scripted::unplug(0);
        DeviceLog log(device);
        device.start({});
        QCOMPARE(log.take(), QStringList({u"connectedChanged"_s}));
        QCOMPARE(device.status(), 0);
    }

    void startKeepsTheButtonsAndForgetsTheAxes()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        device.start({});
        scripted::pad(0).buttons.set(6);
        tick(device, 30);
        scripted::pad(0).axes[0] = 40.0F;
        tick(device);
        QCOMPARE(device.axes().at(0).toDouble(), 40.0);
        device.start({});
        QCOMPARE(device.axes(), QVariantList(8, QVariant(0.0)));
        QCOMPARE(device.buttons().at(6), QVariant(true));
    }

    void stopOfAConnectedDevice()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        device.start({});
        tick(device, 30);
        scripted::pad(0).axes[0] = 40.0F;
        tick(device);
        const QString before = device.deviceJson();
        DeviceLog log(device);
        device.stop();
        QCOMPARE(log.take(), QStringList({u"connectedChanged"_s, u"statusChanged 0"_s}));
        QVERIFY(!timerOf(device).isActive());
        QCOMPARE(device.status(), 0);
        // Axes and bias stay as they were.
        QCOMPARE(device.deviceJson(),
                 QString(before).replace("\"connected\":true"_L1, "\"connected\":false"_L1));
        device.stop();
        QCOMPARE(log.take(), QStringList());
    }

    void theTimerStandsBeforeConnectedChangedOfStop()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        device.start({});
        bool ticking = true;
        connect(&device, &ControlManette::connectedChanged, this,
                [&] { ticking = timerOf(device).isActive(); });
        device.stop();
        QVERIFY(!ticking);
    }

    // A vanished pad keeps ticking, so that its return is seen.
    void stopOfADeviceThatIsNotConnectedLeavesItsTimer()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        device.start({});
        scripted::unplug(0);
        tick(device);
        DeviceLog log(device);
        device.stop();
        QCOMPARE(log.take(), QStringList());
        QVERIFY(timerOf(device).isActive());
        scripted::plug(0, scripted::restingPad());
        tick(device);
        QCOMPARE(log.take(), QStringList({u"connectedChanged"_s}));
    }

    void quitStopsAndFinishes()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        device.start({});
        DeviceLog log(device);
        device.quit();
        QCOMPARE(log.take(), QStringList({u"connectedChanged"_s, u"statusChanged 0"_s, u"finished"_s}));
        device.quit();
        QCOMPARE(log.take(), QStringList({u"finished"_s}));
    }

    void quitStopsThroughTheVirtualTable()
    {
        class Own : public ControlManette
        {
        public:
            Own()
                : ControlManette(-1, nullptr)
            {}
            void stop() override { stopped = true; }
            bool stopped = false;
        };
        Own device;
        device.quit();
        QVERIFY(device.stopped);
    }

    void aListenerMayDestroyTheDevice_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<bool>("running");
        QTest::newRow("connected by start") << QByteArray(SIGNAL(connectedChanged())) << false;
        QTest::newRow("status by start") << QByteArray(SIGNAL(statusChanged(ComStatus))) << false;
        QTest::newRow("connected by quit") << QByteArray(SIGNAL(connectedChanged())) << true;
        QTest::newRow("status by quit") << QByteArray(SIGNAL(statusChanged(ComStatus))) << true;
        QTest::newRow("finished by quit") << QByteArray(SIGNAL(finished())) << true;
    }
    void aListenerMayDestroyTheDevice()
    {
        QFETCH(const QByteArray, signal);
        QFETCH(const bool, running);
        scripted::plug(0, scripted::restingPad());
        m_device = new ControlManette(0, this);
        if (running)
            m_device->start({});
        connect(m_device, signal.constData(), this, SLOT(destroyDevice()));
        if (running)
            m_device->quit();
        else
            m_device->start({});
        QVERIFY(!m_device);
    }

    void propertiesAreWrittenAndTold_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("told");
        QTest::newRow("deviceId") << QByteArray("deviceId") << QVariant(99) << u"deviceIdChanged"_s;
        QTest::newRow("name") << QByteArray("name") << QVariant(u"other"_s) << u"nameChanged"_s;
        QTest::newRow("vendorId") << QByteArray("vendorId") << QVariant(7U) << u"vendorIdChanged"_s;
        QTest::newRow("productId") << QByteArray("productId") << QVariant(8U) << u"productIdChanged"_s;
        QTest::newRow("connected") << QByteArray("connected") << QVariant(true) << u"connectedChanged"_s;
    }
    void propertiesAreWrittenAndTold()
    {
        QFETCH(const QByteArray, property);
        QFETCH(const QVariant, value);
        QFETCH(const QString, told);
        ControlManette device(0, nullptr);
        DeviceLog log(device);
        QVERIFY(device.property(property.constData()) != value);
        QVERIFY(device.setProperty(property.constData(), value));
        QCOMPARE(device.property(property.constData()), value);
        QCOMPARE(log.take(), QStringList({told}));
        QVERIFY(device.setProperty(property.constData(), value));
        QCOMPARE(log.take(), QStringList());
    }

    void theStatesOfAxesAndButtonsAreReadOnlyLists_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("told");
        QTest::newRow("axes") << QByteArray("axes") << 8 << int(QMetaType::Double)
                              << QByteArray("axesChanged");
        QTest::newRow("buttons") << QByteArray("buttons") << 32 << int(QMetaType::Bool)
                                 << QByteArray("buttonsChanged");
    }
    void theStatesOfAxesAndButtonsAreReadOnlyLists()
    {
        QFETCH(const QByteArray, property);
        QFETCH(const int, count);
        QFETCH(const int, type);
        QFETCH(const QByteArray, told);
        ControlManette device(0, nullptr);
        const QMetaObject &meta = ControlManette::staticMetaObject;
        const QMetaProperty described = meta.property(meta.indexOfProperty(property.constData()));
        QVERIFY(!described.isWritable());
        QCOMPARE(described.metaType().id(), int(QMetaType::QVariantList));
        QCOMPARE(described.notifySignal().name(), told);
        const QVariantList values = device.property(property.constData()).toList();
        QCOMPARE(values.size(), count);
        for (const QVariant &value : values)
            QCOMPARE(value.typeId(), type);
    }

    void signalsAreDeclaredInOrder()
    {
        const QMetaObject &meta = ControlManette::staticMetaObject;
        QStringList declared;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Signal)
                declared.append(QString::fromLatin1(meta.method(i).methodSignature()));
        }
        QCOMPARE(declared,
                 QStringList({u"axisChanged(int,double)"_s, u"buttonChanged(int,bool)"_s, u"axesChanged()"_s,
                              u"buttonsChanged()"_s, u"deviceIdChanged()"_s, u"nameChanged()"_s,
                              u"vendorIdChanged()"_s, u"productIdChanged()"_s, u"connectedChanged()"_s}));
    }

    void theObjectAnswersToBothClassNames()
    {
        ControlManette device(-1, nullptr);
        QObject *object = &device;
        QVERIFY(object->qt_metacast("ControlManette"));
        QVERIFY(object->qt_metacast("IComInterface"));
        QCOMPARE(qobject_cast<IComInterface *>(object), &device);
    }

    void aStartedDeviceTicksByItself()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        QSignalSpy pressed(&device, &ControlManette::buttonChanged);
        device.start({});
        const int updates = scripted::calls().update;
        QTRY_VERIFY(scripted::calls().update > updates + 30);
        scripted::pad(0).buttons.set(5);
        QTRY_COMPARE(pressed.size(), 1);
        QCOMPARE(pressed.first(), QVariantList({5, true}));
    }

public Q_SLOTS:
    void destroyDevice() { delete m_device; }

private:
    QPointer<ControlManette> m_device;
};

GAMEPAD_TEST_MAIN(TestDeviceLifecycle)
#include "tst_devicelifecycle.moc"
