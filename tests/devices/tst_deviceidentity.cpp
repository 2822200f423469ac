// SPDX-License-Identifier: MIT
#include "deviceidentity.h"

#include "controlmanette.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <limits>

using namespace Qt::StringLiterals;

class TestDeviceIdentity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
        clearTemporaryHome();
    }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void usnIsMadeOfTheSlot()
    {
        QCOMPARE(usnOfSlot(0), u"gp:0"_s);
        QCOMPARE(usnOfSlot(7), u"gp:7"_s);
        QCOMPARE(usnOfSlot(-1), u"gp:-1"_s);
    }

    void hexIsLowerCaseWithoutPrefixOrPadding()
    {
        QCOMPARE(hexText(0), u"0"_s);
        QCOMPARE(hexText(0x45E), u"45e"_s);
        QCOMPARE(hexText(0xFFFFFFFF), u"ffffffff"_s);
    }

    void identityHasFiveTexts()
    {
        scripted::Pad pad = scripted::restingPad("Manette é");
        pad.vendorId = 0x054C;
        pad.productId = 0x0CE6;
        scripted::plug(3, pad);
        const ControlManette device(3, nullptr);
        const QJsonObject expected{
            {u"deviceId"_s, u"3"_s},
            {u"vendorIdHex"_s, u"54c"_s},
            {u"productIdHex"_s, u"ce6"_s},
            {u"name"_s, u"Manette é"_s},
            {u"imagePath"_s, u":/new/prefix1/ressources/menette_id_3302.png"_s},
        };
        QCOMPARE(identityOf(device), expected);
    }

    void placeholderSlotIsTheNumberInTheText_data()
    {
        QTest::addColumn<QJsonValue>("deviceId");
        QTest::addColumn<int>("slot");
        constexpr int most = std::numeric_limits<int>::max();
        QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << -1;
        QTest::newRow("empty") << QJsonValue(u""_s) << -1;
        QTest::newRow("slot 0 like a missing one") << QJsonValue(u"0"_s) << -1;
        QTest::newRow("slot 1") << QJsonValue(u"1"_s) << 1;
        QTest::newRow("slot 7") << QJsonValue(u"7"_s) << 7;
        QTest::newRow("no slot of SFML's") << QJsonValue(u"42"_s) << 42;
        QTest::newRow("negative") << QJsonValue(u"-7"_s) << -1;
        QTest::newRow("far negative") << QJsonValue(u"-99999999999"_s) << -1;
        QTest::newRow("beyond int") << QJsonValue(u"99999999999"_s) << most;
        QTest::newRow("beyond 64 bits") << QJsonValue(QString(40, u'9')) << most;
        QTest::newRow("the largest") << QJsonValue(u"2147483647"_s) << most;
        QTest::newRow("zeros") << QJsonValue(u"00000000000000000000"_s) << -1;
        QTest::newRow("leading zeros") << QJsonValue(u"0000000000003"_s) << 3;
        QTest::newRow("spaces and sign") << QJsonValue(u" +3 "_s) << 3;
        QTest::newRow("a sign alone") << QJsonValue(u"+"_s) << -1;
        QTest::newRow("fraction") << QJsonValue(u"1.5"_s) << -1;
        QTest::newRow("hexadecimal") << QJsonValue(u"0x3"_s) << -1;
        QTest::newRow("words") << QJsonValue(u"three"_s) << -1;
        QTest::newRow("a number is no text") << QJsonValue(3) << -1;
        QTest::newRow("an object is no text") << QJsonValue(QJsonObject{}) << -1;
    }
    void placeholderSlotIsTheNumberInTheText()
    {
        QFETCH(const QJsonValue, deviceId);
        QJsonObject identity;
        if (!deviceId.isUndefined())
            identity[u"deviceId"_s] = deviceId;
        QTEST(placeholderSlot(identity), "slot");
    }

    void capabilitiesCountAxesThenButtons()
    {
        scripted::Pad pad;
        pad.axes[0] = 0.0F;
        pad.axes[1] = 0.0F;
        pad.axes[6] = 0.0F;
        pad.buttonCount = 12;
        scripted::plug(2, pad);
        const ControlManette device(2, nullptr);
        QCOMPARE(capabilitiesOf(device), (QStringList{u"Axes|axis://3"_s, u"Buttons|btn://12"_s}));
    }

    void capabilitiesLeaveOutWhatThePadHasNotGot()
    {
        scripted::Pad pad;
        pad.buttonCount = 4;
        scripted::plug(0, pad);
        scripted::Pad sticks;
        sticks.axes.fill(0.0F);
        scripted::plug(1, sticks);
        scripted::plug(2, {});
        QCOMPARE(capabilitiesOf(ControlManette(0, nullptr)), QStringList{u"Buttons|btn://4"_s});
        QCOMPARE(capabilitiesOf(ControlManette(1, nullptr)), QStringList{u"Axes|axis://8"_s});
        QCOMPARE(capabilitiesOf(ControlManette(2, nullptr)), QStringList());
    }

    void capabilitiesOfASlotThatSfmlDoesNotHaveAreEmpty()
    {
        for (const int slot : {-1, 8, 42, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
            QCOMPARE(capabilitiesOf(ControlManette(slot, nullptr)), QStringList());
    }
};

GAMEPAD_TEST_MAIN(TestDeviceIdentity)
#include "tst_deviceidentity.moc"
