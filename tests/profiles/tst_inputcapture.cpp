// SPDX-License-Identifier: MIT
// What a movement of a gamepad gives as an input, without any editor.
#include "inputcapture.h"
#include "testmain.h"

#include <limits>

using namespace Qt::StringLiterals;

class TestInputCapture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aValueIsMeantFromFortyOn_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<bool>("meant");
        QTest::newRow("rest") << 0.0 << false;
        QTest::newRow("just below") << 39.9 << false;
        QTest::newRow("forty") << 40.0 << true;
        QTest::newRow("minus forty") << -40.0 << true;
        QTest::newRow("just above minus forty") << -39.9 << false;
        QTest::newRow("end") << 100.0 << true;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << false;
    }
    void aValueIsMeantFromFortyOn()
    {
        QFETCH(double, value);
        QFETCH(bool, meant);
        QCOMPARE(isMeant(value), meant);
    }

    void atFirstNothingIsPending()
    {
        const PendingInput input;
        QVERIFY(input.isEmpty());
        QVERIFY(!input.isAmbiguous());
        QCOMPARE(input.axis, -1);
        QCOMPARE(input.axisValue, 0.0);
        QCOMPARE(input.button, -1);
        QVERIFY(!input.buttonPressed);
        QCOMPARE(input.key(TriggerUse::Axis), QString());
        QCOMPARE(input.key(TriggerUse::Button), QString());
    }

    void whatCameAloneIsTheKeyWhateverTheChoice()
    {
        PendingInput axis;
        axis.takeAxis(3, -55.0);
        QVERIFY(!axis.isEmpty() && !axis.isAmbiguous());
        QCOMPARE(axis.axisValue, -55.0);
        QCOMPARE(axis.key(TriggerUse::Axis), u"joy_3"_s);
        QCOMPARE(axis.key(TriggerUse::Button), u"joy_3"_s);

        PendingInput button;
        button.takePress(0);
        QVERIFY(!button.isEmpty() && !button.isAmbiguous());
        QVERIFY(button.buttonPressed);
        QCOMPARE(button.key(TriggerUse::Axis), u"but_0"_s);
        QCOMPARE(button.key(TriggerUse::Button), u"but_0"_s);
    }

    void theLastAxisAndTheLastButtonWin()
    {
        PendingInput input;
        input.takeAxis(1, 50.0);
        input.takePress(7);
        input.takeAxis(5, 90.0);
        input.takePress(12);
        QVERIFY(input.isAmbiguous());
        QCOMPARE(input.key(TriggerUse::Axis), u"joy_5"_s);
        QCOMPARE(input.key(TriggerUse::Button), u"but_12"_s);
        QCOMPARE(input.axisValue, 90.0);
    }

    void choicesAreRememberedByTheExactName()
    {
        const TriggerChoices choices{{u"Pad"_s, TriggerUse::Axis}, {QString(), TriggerUse::Button}};
        QCOMPARE(choiceFor(choices, u"Pad"_s), TriggerUse::Axis);
        QCOMPARE(choiceFor(choices, u"pad"_s), std::nullopt);
        QCOMPARE(choiceFor(choices, QString()), TriggerUse::Button);
        QCOMPARE(choiceFor({}, u"Pad"_s), std::nullopt);
    }
};

GAMEPAD_TEST_MAIN(TestInputCapture)
#include "tst_inputcapture.moc"
