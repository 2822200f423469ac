// SPDX-License-Identifier: MIT
// What a gamepad answers to the host.
#include "controlmanette.h"
#include "devicelog.h"
#include "profilefolder.h"
#include "profilesroot.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

class TestHostSurface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
        clearTemporaryHome();
    }

    void answersThatNeverChange()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        IComInterface &asHost = device;
        const auto check = [&] {
            QCOMPARE(asHost.reservedFlag(), 0);
            asHost.reservedHook();
            QCOMPARE(asHost.deviceType(), 4);
            QVERIFY(!asHost.value().isValid());
            QCOMPARE(asHost.fonctions(), QJsonArray());
        };
        check();
        DeviceLog log(device);
        asHost.start({});
        (void)log.take();
        check();
        QCOMPARE(log.take(), QStringList());
    }

    void deviceJsonOfAPlaceholder()
    {
        ControlManette device(-1, nullptr);
        const QString zeros = u"[0,0,0,0,0,0,0,0]"_s;
        QString released = u"["_s;
        for (int i = 0; i < 32; ++i)
            released += i == 31 ? u"false]"_s : u"false,"_s;
        QCOMPARE(device.deviceJson(),
                 u"{\"axes\":"_s + zeros + u",\"bias\":"_s + zeros + u",\"buttons\":"_s + released +
                     u",\"connected\":false,\"deviceId\":-1,\"name\":\"\",\"productId\":\"0x0\","
                     "\"vendorId\":\"0x0\"}"_s);
    }

    void deviceJsonTellsTheLiveState()
    {
        scripted::Pad pad = scripted::restingPad("Pad \"été\" 🎮");
        pad.vendorId = 0x00AB;
        pad.productId = 0xFFFFFFFF;
        pad.axes[1] = 3.0F;
        scripted::plug(6, pad);
        ControlManette device(6, nullptr);
        device.start({});
        tick(device, 30);
        scripted::pad(6).axes[1] = 15.5F;
        scripted::pad(6).buttons.set(31);
        tick(device);
        const QString text = device.deviceJson();
        QVERIFY(!text.contains(u'\n'));
        const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
        QCOMPARE(object.keys(), QStringList({u"axes"_s, u"bias"_s, u"buttons"_s, u"connected"_s,
                                             u"deviceId"_s, u"name"_s, u"productId"_s, u"vendorId"_s}));
        QCOMPARE(object["deviceId"_L1], QJsonValue(6));
        QCOMPARE(object["name"_L1], QJsonValue(u"Pad \"été\" 🎮"_s));
        QCOMPARE(object["vendorId"_L1], QJsonValue(u"0xab"_s));
        QCOMPARE(object["productId"_L1], QJsonValue(u"0xffffffff"_s));
        QCOMPARE(object["connected"_L1], QJsonValue(true));
        QCOMPARE(object["axes"_L1], QJsonValue(QJsonArray{0, 12.5, 0, 0, 0, 0, 0, 0}));
        QCOMPARE(object["bias"_L1], QJsonValue(QJsonArray{0, 3, 0, 0, 0, 0, 0, 0}));
        QCOMPARE(object["buttons"_L1].toArray().size(), 32);
        QCOMPARE(object["buttons"_L1].toArray().at(31), QJsonValue(true));
        QCOMPARE(object["buttons"_L1].toArray().at(30), QJsonValue(false));
    }

    void setValueOfAnotherDeviceChangesNothing()
    {
        scripted::Pad pad = scripted::restingPad();
        pad.axes[0] = 4.0F;
        scripted::plug(2, pad);
        ControlManette device(2, nullptr);
        device.start({});
        tick(device, 30);
        const QString before = device.deviceJson();
        device.setValue(0, 1, u"pollingInterval"_s, 20);
        device.setValue(0, 1, u"resetBias"_s, true);
        QCOMPARE(timerOf(device).interval(), 10);
        QCOMPARE(device.deviceJson(), before);
    }

    void pollingIntervalOnAStoppedDeviceStartsNothing()
    {
        scripted::plug(2, scripted::restingPad());
        ControlManette device(2, nullptr);
        device.setValue(2, 77, u"pollingInterval"_s, 20); // any category
        QCOMPARE(timerOf(device).interval(), 20);
        QVERIFY(!timerOf(device).isActive());
        device.start({});
        QCOMPARE(timerOf(device).interval(), 10);
    }

    void pollingIntervalOnARunningDeviceTakesEffect()
    {
        scripted::plug(2, scripted::restingPad());
        ControlManette device(2, nullptr);
        device.start({});
        device.setValue(2, 1, u"pollingInterval"_s, 250);
        QCOMPARE(timerOf(device).interval(), 250);
        QVERIFY(timerOf(device).isActive());
    }

    void pollingIntervalOfZeroTicksAsOftenAsCanBeAndLetsOthersRun()
    {
        scripted::plug(2, scripted::restingPad());
        ControlManette device(2, nullptr);
        device.start({});
        device.setValue(2, 1, u"pollingInterval"_s, 0);
        QCOMPARE(timerOf(device).interval(), 0);
        QVERIFY(timerOf(device).isActive());
        const int updates = scripted::calls().update;
        int others = 0;
        QTimer other;
        connect(&other, &QTimer::timeout, this, [&others] { ++others; });
        other.start(1);
        QTRY_VERIFY(scripted::calls().update > updates + 30 && others > 3);
        device.start({});
        QCOMPARE(timerOf(device).interval(), 10);
    }

    void aPlaceholderIsWrittenByItsOwnNumber()
    {
        ControlManette device(-1, nullptr);
        DeviceLog log(device);
        const QString before = device.deviceJson();
        device.setValue(-1, 1, u"pollingInterval"_s, 20);
        QCOMPARE(timerOf(device).interval(), 20);
        QVERIFY(!timerOf(device).isActive());
        device.setValue(-1, 1, u"resetBias"_s, true);
        device.setValue(0, 1, u"pollingInterval"_s, 30);
        QCOMPARE(timerOf(device).interval(), 20);
        QCOMPARE(device.deviceJson(), before);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(scripted::calls().update, 0);
    }

    void pollingIntervalTakesWhatConvertsToANumber_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("interval");
        const int largest = std::numeric_limits<int>::max();
        QTest::newRow("number") << QVariant(20) << 20;
        QTest::newRow("text of a number") << QVariant(u"35"_s) << 35;
        QTest::newRow("text that is no number") << QVariant(u"fast"_s) << 0;
        QTest::newRow("empty text") << QVariant(u""_s) << 0;
        QTest::newRow("fraction") << QVariant(19.75) << 20;
        QTest::newRow("bool") << QVariant(true) << 1;
        QTest::newRow("negative") << QVariant(-5) << 0;
        QTest::newRow("beyond int") << QVariant(5'000'000'000LL) << largest;
        QTest::newRow("not a number at all") << QVariant(QVariantMap()) << 40;
        QTest::newRow("invalid") << QVariant() << 40;
    }
    void pollingIntervalTakesWhatConvertsToANumber()
    {
        QFETCH(const QVariant, value);
        ControlManette device(2, nullptr);
        device.setValue(2, 1, u"pollingInterval"_s, 40);
        device.setValue(2, 1, u"pollingInterval"_s, value);
        QTEST(timerOf(device).interval(), "interval");
    }

    void pollingIntervalSurvivesFractionsBeyondEverything_data()
    {
        QTest::addColumn<double>("value");
        QTest::newRow("huge") << 1e300;
        QTest::newRow("negative huge") << -1e300;
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
        QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN();
    }
    void pollingIntervalSurvivesFractionsBeyondEverything()
    {
        QFETCH(const double, value);
        ControlManette device(2, nullptr);
        device.setValue(2, 1, u"pollingInterval"_s, value);
        QVERIFY(timerOf(device).interval() >= 0);
    }

    void resetBiasLooksAtNoValue_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("true") << QVariant(true);
        QTest::newRow("false") << QVariant(false);
        QTest::newRow("invalid") << QVariant();
    }
    void resetBiasLooksAtNoValue()
    {
        QFETCH(const QVariant, value);
        scripted::Pad pad = scripted::restingPad();
        pad.axes[0] = 4.0F;
        scripted::plug(0, pad);
        ControlManette device(0, nullptr);
        device.start({});
        tick(device, 30);
        QVERIFY(device.deviceJson().contains(u"\"bias\":[4,"_s));
        device.setValue(0, 0, u"resetBias"_s, value);
        QVERIFY(device.deviceJson().contains(u"\"bias\":[0,"_s));
    }

    void resetBiasSilencesUntilAllAxesAreKnownAgain()
    {
        scripted::plug(0, scripted::restingPad());
        ControlManette device(0, nullptr);
        device.start({});
        tick(device, 30);
        DeviceLog log(device);
        scripted::pad(0).axes[3] = 50.0F;
        tick(device);
        QCOMPARE(log.take().value(0), u"axisChanged 3 50"_s);
        device.setValue(0, 1, u"resetBias"_s, {});
        // Held away from its rest, the one axis keeps the whole device silent.
        scripted::pad(0).buttons.set(0);
        tick(device, 100);
        QCOMPARE(log.take(), QStringList());
        scripted::pad(0).axes[3] = -6.0F;
        tick(device, 29);
        QCOMPARE(log.take(), QStringList());
        scripted::pad(0).buttons.reset(0);
        tick(device);
        QCOMPARE(log.take().value(0), u"buttonChanged 0 false"_s);
        scripted::pad(0).axes[3] = 44.0F;
        tick(device);
        QCOMPARE(log.take().value(0), u"axisChanged 3 50"_s);
    }

    void otherPropertiesAreNotWritable()
    {
        ControlManette device(0, nullptr);
        DeviceLog log(device);
        const QString before = device.deviceJson();
        for (const QString &name : {u"name"_s, u"deviceId"_s, u"connected"_s, u""_s, u"PollingInterval"_s})
            device.setValue(0, 1, name, 5);
        QCOMPARE(device.deviceJson(), before);
        QCOMPARE(timerOf(device).interval(), 0);
        QCOMPARE(log.take(), QStringList());
    }

    void noCodeAppWithAnEmptyRootIsOnePathThatNeedNotExist()
    {
        ControlManette device(0, nullptr);
        const QString path = profilesRootPath() + u"/configActionGamepad.json"_s;
        QTest::ignoreMessage(QtDebugMsg, qUtf8Printable(u"no code app from gamepad: \"%1\""_s.arg(path)));
        QCOMPARE(device.noCodeApp(), QStringList({path}));
        QVERIFY(!QFile::exists(path));
    }

    void noCodeAppLooksByNameAndIds()
    {
        scripted::plug(0, scripted::restingPad("Blue Pad"));
        ControlManette device(0, nullptr);
        const QString ofIds = writeBelowRoot(u"1234_abcd/configActionGamepad.json"_s);
        QCOMPARE(device.noCodeApp(), QStringList({ofIds}));
        writeMeta(u"a"_s, {{u"deviceName"_s, u"BLUE PAD"_s}});
        const QString ofProfile = writeBelowRoot(u"a/configActionGamepad.json"_s);
        QTest::ignoreMessage(QtDebugMsg,
                             qUtf8Printable(u"no code app from gamepad: \"%1\""_s.arg(ofProfile)));
        QCOMPARE(device.noCodeApp(), QStringList({ofProfile}));
    }

    void refreshNoCodeAppTellsThePathOfTheMoment()
    {
        scripted::plug(0, scripted::restingPad("Blue Pad"));
        ControlManette device(0, nullptr);
        DeviceLog log(device);
        device.refreshNoCodeApp();
        QCOMPARE(log.take(),
                 QStringList({u"noCodeAppChanged "_s + profilesRootPath() + u"/configActionGamepad.json"_s}));
        writeMeta(u"a"_s, {{u"deviceName"_s, u"Blue Pad"_s}});
        const QString ofProfile = writeBelowRoot(u"a/configActionGamepad.json"_s);
        device.refreshNoCodeApp();
        QCOMPARE(log.take(), QStringList({u"noCodeAppChanged "_s + ofProfile}));
    }

    void thePictureIsTheProfilesOrTheBuiltInOne()
    {
        scripted::plug(0, scripted::restingPad("Blue Pad"));
        const ControlManette device(0, nullptr);
        const QString builtIn = u":/new/prefix1/ressources/menette_id_43981.png"_s; // 0xabcd
        QCOMPARE(device.imagePathForDevice(), builtIn);
        writeMeta(u"a"_s, {{u"deviceName"_s, u"Blue Pad"_s}});
        QCOMPARE(device.imagePathForDevice(), builtIn);
        const QString picture = writeBelowRoot(u"a/image.png"_s);
        QCOMPARE(device.imagePathForDevice(), picture);
    }

    void aDeviceWithoutANameHasTheBuiltInPicture()
    {
        writeMeta(u"a"_s, {{u"deviceName"_s, u""_s}});
        (void)writeBelowRoot(u"a/image.png"_s);
        const ControlManette device(-1, nullptr);
        QCOMPARE(device.imagePathForDevice(), u":/new/prefix1/ressources/menette_id_0.png"_s);
    }

    void aPlaceholderAnswersFromWhatItKnows()
    {
        writeMeta(u"a"_s, {{u"deviceName"_s, u"Blue Pad"_s}});
        const QString document = writeBelowRoot(u"a/configActionGamepad.json"_s);
        ControlManette device(-1, nullptr);
        device.setName(u"Blue Pad"_s);
        QCOMPARE(device.noCodeApp(), QStringList({document}));
        QVERIFY(device.deviceJson().contains(u"\"name\":\"Blue Pad\""_s));
        QCOMPARE(device.status(), 0);
    }
};

GAMEPAD_TEST_MAIN(TestHostSurface)
#include "tst_hostsurface.moc"
