// SPDX-License-Identifier: MIT
// When a gamepad begins and ceases to publish, and what its listeners may do to it meanwhile.
#include "controlmanette.h"
#include "devicelog.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QPointer>

using namespace Qt::StringLiterals;

namespace
{
scripted::Pad padWithAxes(std::initializer_list<std::size_t> present)
{
    scripted::Pad pad;
    for (const std::size_t axis : present)
        pad.axes.at(axis) = 0.0F;
    pad.buttonCount = 32;
    return pad;
}

double biasOf(ControlManette &device, int axis)
{
    const QJsonObject object = QJsonDocument::fromJson(device.deviceJson().toUtf8()).object();
    return object["bias"_L1].toArray().at(axis).toDouble(-1.0);
}

bool has(const QStringList &lines, const QString &beginning)
{
    return std::ranges::any_of(lines, [&](const QString &line) { return line.startsWith(beginning); });
}
} // namespace

class TestPublishing : public QObject
{
    Q_OBJECT

    QPointer<ControlManette> m_device;

    ControlManette *started(const scripted::Pad &pad, int ticks)
    {
        scripted::plug(0, pad);
        m_device = new ControlManette(0, this);
        m_device->start({});
        tick(*m_device, ticks);
        return m_device;
    }

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
    }
    void cleanup() { delete m_device; }

    void nothingGoesOutWhileAnyAxisIsUncalibrated()
    {
        scripted::Pad pad = padWithAxes({0, 1});
        pad.axes[1] = 60.0F; // held away from its rest
        auto *device = started(pad, 0);
        DeviceLog log(*device);
        tick(*device, 40);
        scripted::pad(0).axes[0] = 50.0F;
        scripted::pad(0).buttons.set(0);
        tick(*device, 1000);
        QCOMPARE(log.take(), QStringList());
        // What was accepted meanwhile is stored all the same.
        QCOMPARE(device->axes().at(0).toDouble(), 50.0);
        QCOMPARE(device->axes().at(1).toDouble(), 0.0);
        QCOMPARE(device->buttons().at(0), QVariant(true));
    }

    void theTickThatOpensTellsItsButtonsButNotItsAxes()
    {
        scripted::Pad pad = padWithAxes({0, 1});
        pad.axes[0] = -100.0F; // a trigger: known after 8 ticks
        auto *device = started(pad, 29);
        DeviceLog log(*device);
        scripted::pad(0).axes[0] = 0.0F;
        scripted::pad(0).buttons.set(3);
        tick(*device);
        QCOMPARE(log.take(), QStringList({u"buttonChanged 3 true"_s, u"dataChanged 0 1 but_3=bool:true"_s,
                                          u"dataChanged gamepad gamepad but_3=bool:true"_s, u"axesChanged"_s,
                                          u"buttonsChanged"_s}));
        QCOMPARE(device->axes().at(0).toDouble(), 50.0);
        tick(*device);
        QCOMPARE(log.take().value(0), u"axisChanged 0 50"_s);
    }

    void aDeviceWithoutAxesPublishesFromItsFirstTick()
    {
        auto *device = started(padWithAxes({}), 0);
        DeviceLog log(*device);
        scripted::pad(0).buttons.set(1);
        tick(*device);
        QCOMPARE(log.take().value(0), u"buttonChanged 1 true"_s);
    }

    void aButtonHeldThroughCalibrationMakesNoPress()
    {
        scripted::Pad pad = padWithAxes({0});
        pad.buttons.set(2);
        auto *device = started(pad, 0);
        DeviceLog log(*device);
        tick(*device, 60);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(device->buttons().at(2), QVariant(true));
        scripted::pad(0).buttons.reset(2);
        tick(*device);
        QCOMPARE(log.take().value(0), u"buttonChanged 2 false"_s);
    }

    void anAxisThatAppearsLaterDoesNotCloseTheOthers()
    {
        auto *device = started(padWithAxes({0}), 30);
        DeviceLog log(*device);
        scripted::pad(0).axes[5] = 60.0F;
        scripted::pad(0).axes[0] = 20.0F;
        tick(*device);
        const QStringList lines = log.take();
        QVERIFY(has(lines, u"axisChanged 0 20"_s));
        QVERIFY(!has(lines, u"axisChanged 5"_s));
        scripted::pad(0).axes[0] = 0.0F;
        scripted::pad(0).axes[5] = 4.0F;
        tick(*device, 30);
        (void)log.take();
        scripted::pad(0).axes[5] = 64.0F;
        tick(*device);
        QCOMPARE(log.take().value(0), u"axisChanged 5 60"_s);
    }

    void anAxisThatVanishesIsSkipped()
    {
        auto *device = started(padWithAxes({0, 1}), 30);
        DeviceLog log(*device);
        scripted::pad(0).axes[0].reset();
        scripted::pad(0).axes[1] = 20.0F;
        tick(*device);
        QVERIFY(!has(log.take(), u"axisChanged 0"_s));
    }

    void resetAllBiasSilencesUntilAllAxesAreKnownAgain()
    {
        scripted::Pad pad = padWithAxes({0});
        pad.axes[0] = 5.0F;
        auto *device = started(pad, 30);
        scripted::pad(0).buttons.set(4);
        scripted::pad(0).axes[0] = 45.0F;
        tick(*device);
        QCOMPARE(biasOf(*device, 0), 5.0);
        DeviceLog log(*device);

        device->resetAllBias();
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(biasOf(*device, 0), 0.0);
        QCOMPARE(device->axes().at(0).toDouble(), 0.0);
        QCOMPARE(device->buttons().at(4), QVariant(true));
        QVERIFY(timerOf(*device).isActive());

        scripted::pad(0).axes[0] = -2.0F;
        tick(*device, 29);
        scripted::pad(0).buttons.reset(4);
        QCOMPARE(log.take(), QStringList());
        tick(*device);
        QVERIFY(has(log.take(), u"buttonChanged 4 false"_s));
        QCOMPARE(biasOf(*device, 0), -2.0);
    }

    void whatWasSeenOfTheRestIsForgotten_data()
    {
        QTest::addColumn<bool>("byStart");
        QTest::addColumn<float>("rest");
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("run");
        for (const bool byStart : {true, false}) {
            const char *how = byStart ? "start" : "resetAllBias";
            QTest::addRow("%s in the run of a trigger", how) << byStart << -100.0F << 7 << 8;
            QTest::addRow("%s in the run of a stick", how) << byStart << 3.0F << 29 << 30;
            QTest::addRow("%s of a settled trigger", how) << byStart << -100.0F << 8 << 8;
            QTest::addRow("%s of a settled stick", how) << byStart << 3.0F << 30 << 30;
        }
    }
    void whatWasSeenOfTheRestIsForgotten()
    {
        QFETCH(const bool, byStart);
        QFETCH(const float, rest);
        QFETCH(const int, before);
        QFETCH(const int, run);
        scripted::Pad pad = padWithAxes({0});
        pad.axes[0] = rest;
        auto *device = started(pad, before);
        QCOMPARE(biasOf(*device, 0), before == run ? double(rest) : 0.0);

        if (byStart)
            device->start({});
        else
            device->resetAllBias();
        DeviceLog log(*device);
        scripted::pad(0).buttons.set(0);
        tick(*device, run - 1);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(biasOf(*device, 0), 0.0);
        scripted::pad(0).buttons.reset(0);
        tick(*device);
        QCOMPARE(log.take().value(0), u"buttonChanged 0 false"_s);
        QCOMPARE(biasOf(*device, 0), double(rest));
    }

    void resetAllBiasIsTheOneInvokableMethod()
    {
        auto *device = started(padWithAxes({0}), 30);
        QVERIFY(QMetaObject::invokeMethod(device, "resetAllBias"));
        const QMetaObject &meta = ControlManette::staticMetaObject;
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() != QMetaMethod::Signal)
                methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
        }
        QCOMPARE(methods, QStringList({u"resetAllBias()"_s}));
    }

    void startWhilePublishingCalibratesAnew()
    {
        auto *device = started(padWithAxes({0}), 30);
        DeviceLog log(*device);
        device->start({});
        QCOMPARE(log.take(), QStringList());
        scripted::pad(0).axes[0] = 6.0F;
        tick(*device, 30);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(biasOf(*device, 0), 6.0);
    }

    void aListenerThatStopsTheDeviceEndsItsReports()
    {
        auto *device = started(padWithAxes({0, 1}), 30);
        DeviceLog log(*device);
        connect(device, &ControlManette::axisChanged, this, [device] { device->stop(); });
        scripted::pad(0).axes[0] = 30.0F;
        scripted::pad(0).axes[1] = 30.0F;
        scripted::pad(0).buttons.set(0);
        tick(*device);
        QCOMPARE(log.take(),
                 QStringList({u"axisChanged 0 30"_s, u"connectedChanged"_s, u"statusChanged 0"_s}));
        QVERIFY(!timerOf(*device).isActive());
        // Nothing of the stopped round leaks into the next.
        device->start({});
        (void)log.take();
        tick(*device, 29);
        QCOMPARE(log.take(), QStringList());
    }

    void aListenerThatResetsTheBiasEndsTheReports()
    {
        auto *device = started(padWithAxes({0, 1}), 30);
        DeviceLog log(*device);
        connect(device, &ControlManette::axisChanged, this, [device] { device->resetAllBias(); });
        scripted::pad(0).axes[0] = 30.0F;
        scripted::pad(0).axes[1] = 30.0F;
        tick(*device);
        QCOMPARE(log.take(), QStringList({u"axisChanged 0 30"_s}));
    }

    void aListenerThatMovesTheDeviceToNoSlotSilencesIt()
    {
        auto *device = started(padWithAxes({0}), 30);
        connect(device, &ControlManette::axisChanged, this, [device] { device->setDeviceId(99); });
        scripted::pad(0).axes[0] = 30.0F;
        tick(*device);
        DeviceLog log(*device);
        tick(*device);
        QCOMPARE(log.take(), QStringList({u"connectedChanged"_s, u"vendorIdChanged"_s, u"productIdChanged"_s,
                                          u"nameChanged"_s}));
        tick(*device);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(scripted::calls().outsideSlots, 0);
    }

    void aListenerMayDestroyTheDevice_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::newRow("connected") << QByteArray(SIGNAL(connectedChanged()));
        QTest::newRow("vendor") << QByteArray(SIGNAL(vendorIdChanged()));
        QTest::newRow("product") << QByteArray(SIGNAL(productIdChanged()));
        QTest::newRow("name") << QByteArray(SIGNAL(nameChanged()));
        QTest::newRow("axis") << QByteArray(SIGNAL(axisChanged(int, double)));
        QTest::newRow("button") << QByteArray(SIGNAL(buttonChanged(int, bool)));
        QTest::newRow("numeric batch")
            << QByteArray(SIGNAL(dataChanged(int, int, QStringList, QVariantList)));
        QTest::newRow("text batch") << QByteArray(
            SIGNAL(dataChanged(QString, QString, QStringList, QVariantList)));
        QTest::newRow("axes") << QByteArray(SIGNAL(axesChanged()));
        QTest::newRow("buttons") << QByteArray(SIGNAL(buttonsChanged()));
    }
    void aListenerMayDestroyTheDevice()
    {
        QFETCH(const QByteArray, signal);
        auto *device = started(padWithAxes({0, 1}), 30);
        if (signal.contains("connected")) {
            scripted::unplug(0);
            tick(*device);
            scripted::plug(0, padWithAxes({0, 1}));
        }
        connect(device, signal.constData(), this, SLOT(destroyDevice()));
        scripted::pad(0).name = "Other";
        scripted::pad(0).vendorId = 7;
        scripted::pad(0).productId = 7;
        scripted::pad(0).axes[0] = 30.0F;
        scripted::pad(0).axes[1] = 30.0F;
        scripted::pad(0).buttons.set(0);
        tick(*device);
        QVERIFY(!m_device);
    }

public Q_SLOTS:
    void destroyDevice() { delete m_device; }
};

GAMEPAD_TEST_MAIN(TestPublishing)
#include "tst_publishing.moc"
