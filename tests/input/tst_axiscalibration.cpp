// SPDX-License-Identifier: MIT
#include "axiscalibration.h"
#include "testmain.h"

#include <limits>

using Outcome = AxisCalibration::Outcome;

namespace
{
/// An axis that has read `reading` that many times.
AxisCalibration after(double reading, int times)
{
    AxisCalibration axis;
    for (int i = 0; i < times; ++i)
        (void)axis.read(reading);
    return axis;
}

AxisCalibration resting(double bias, bool isTrigger)
{
    AxisCalibration axis;
    axis.bias = bias;
    axis.calibrated = true;
    axis.isTrigger = isTrigger;
    return axis;
}
} // namespace

class TestAxisCalibration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void halvesRoundAwayFromZero_data()
    {
        QTest::addColumn<double>("reading");
        QTest::addColumn<int>("rounded");
        QTest::newRow("0") << 0.0 << 0;
        QTest::newRow("-0") << -0.0 << 0;
        QTest::newRow("0.5") << 0.5 << 1;
        QTest::newRow("-0.5") << -0.5 << -1;
        QTest::newRow("below a half") << 0.49 << 0;
        QTest::newRow("above minus a half") << -0.49 << 0;
        QTest::newRow("8.4") << 8.4 << 8;
        QTest::newRow("8.6") << 8.6 << 9;
        QTest::newRow("99.4") << 99.4 << 99;
        QTest::newRow("99.6") << 99.6 << 100;
        QTest::newRow("-99.5") << -99.5 << -100;
        QTest::newRow("-100") << -100.0 << -100;
        QTest::newRow("beyond int") << 1e300 << std::numeric_limits<int>::max();
        QTest::newRow("below int") << -1e300 << -std::numeric_limits<int>::max();
    }
    void halvesRoundAwayFromZero()
    {
        QFETCH(const double, reading);
        QTEST(roundedReading(reading), "rounded");
    }

    void anEndOfTheRangeSettlesInEightTicks_data()
    {
        QTest::addColumn<double>("reading");
        QTest::addColumn<double>("bias");
        QTest::newRow("bottom") << -100.0 << -100.0;
        QTest::newRow("top") << 100.0 << 100.0;
        QTest::newRow("99.6 counts as the top") << 99.6 << 100.0;
        QTest::newRow("99.5 counts as the top") << 99.5 << 100.0;
        QTest::newRow("-99.6 counts as the bottom") << -99.6 << -100.0;
    }
    void anEndOfTheRangeSettlesInEightTicks()
    {
        QFETCH(const double, reading);
        QFETCH(const double, bias);
        AxisCalibration axis = after(reading, 7);
        QVERIFY(!axis.calibrated);
        QCOMPARE(axis.extremeTicks, 7);
        QCOMPARE(axis.read(reading), Outcome::HardBias);
        QVERIFY(axis.calibrated);
        QVERIFY(axis.isTrigger);
        QCOMPARE(axis.bias, bias);
        QCOMPARE(axis.raw, reading);
        QCOMPARE(axis.value, 0.0);
    }

    void aRunAtTheEndBreaksOnAnyOtherReading_data()
    {
        QTest::addColumn<double>("reading");
        QTest::newRow("99.4 rounds to 99") << 99.4;
        QTest::newRow("101 is not the end") << 101.0;
        QTest::newRow("centre") << 0.0;
        QTest::newRow("half way") << -50.0;
    }
    void aRunAtTheEndBreaksOnAnyOtherReading()
    {
        QFETCH(const double, reading);
        AxisCalibration axis = after(100.0, 7);
        QCOMPARE(axis.read(reading), Outcome::Nothing);
        QCOMPARE(axis.extremeTicks, 0);
        for (int i = 0; i < 7; ++i)
            QCOMPARE(axis.read(100.0), Outcome::Nothing);
        QCOMPARE(axis.read(100.0), Outcome::HardBias);
    }

    // Both ends count into one run, and the last reading decides.
    void bothEndsCountIntoOneRun()
    {
        AxisCalibration axis = after(100.0, 7);
        QCOMPARE(axis.read(-100.0), Outcome::HardBias);
        QCOMPARE(axis.bias, -100.0);
    }

    void aSteadyReadingNearTheCentreSettlesInThirtyTicks_data()
    {
        QTest::addColumn<double>("reading");
        QTest::addColumn<double>("bias");
        QTest::newRow("centre") << 0.0 << 0.0;
        QTest::newRow("3") << 3.0 << 3.0;
        QTest::newRow("-7.5 rounds to -8") << -7.5 << -8.0;
        QTest::newRow("8.4 rounds to 8") << 8.4 << 8.0;
        QTest::newRow("-8.4 rounds to -8") << -8.4 << -8.0;
    }
    void aSteadyReadingNearTheCentreSettlesInThirtyTicks()
    {
        QFETCH(const double, reading);
        QFETCH(const double, bias);
        AxisCalibration axis = after(reading, 29);
        QVERIFY(!axis.calibrated);
        QCOMPARE(axis.stableTicks, 29);
        QCOMPARE(axis.read(reading), Outcome::SoftBias);
        QVERIFY(axis.calibrated);
        QVERIFY(!axis.isTrigger);
        QCOMPARE(axis.bias, bias);
        QCOMPARE(axis.restReading, int(bias));
    }

    void readingsThatRoundAlikeAreOneRun()
    {
        AxisCalibration axis;
        for (int i = 0; i < 29; ++i)
            QCOMPARE(axis.read(i % 2 == 0 ? 2.6 : 3.4), Outcome::Nothing);
        QCOMPARE(axis.read(2.5), Outcome::SoftBias);
        QCOMPARE(axis.bias, 3.0);
    }

    void aStickBetweenTwoReadingsNeverSettles()
    {
        AxisCalibration axis;
        for (int i = 0; i < 1000; ++i) {
            QCOMPARE(axis.read(i % 2 == 0 ? 3.0 : 4.0), Outcome::Nothing);
            QCOMPARE(axis.stableTicks, 1);
        }
        QVERIFY(!axis.calibrated);
    }

    void aChangedReadingRestartsTheRunAtOne()
    {
        AxisCalibration axis = after(3.0, 29);
        QCOMPARE(axis.read(4.0), Outcome::Nothing);
        QCOMPARE(axis.stableTicks, 1);
        QCOMPARE(axis.restReading, 4);
        for (int i = 0; i < 28; ++i)
            QCOMPARE(axis.read(4.0), Outcome::Nothing);
        QCOMPARE(axis.read(4.0), Outcome::SoftBias);
    }

    void aReadingOutsideTheBandEndsTheRunAndKeepsItsReading_data()
    {
        QTest::addColumn<double>("reading");
        QTest::newRow("8.6 rounds to 9") << 8.6;
        QTest::newRow("-8.5 rounds to -9") << -8.5;
        QTest::newRow("held") << 60.0;
        QTest::newRow("an end") << 100.0;
    }
    void aReadingOutsideTheBandEndsTheRunAndKeepsItsReading()
    {
        QFETCH(const double, reading);
        AxisCalibration axis = after(5.0, 29);
        QCOMPARE(axis.read(reading), Outcome::Nothing);
        QCOMPARE(axis.stableTicks, 0);
        QCOMPARE(axis.restReading, 5);
        for (int i = 0; i < 29; ++i)
            QCOMPARE(axis.read(5.0), Outcome::Nothing);
        QCOMPARE(axis.read(5.0), Outcome::SoftBias);
    }

    void aHeldStickNeverSettles()
    {
        const AxisCalibration axis = after(60.0, 5000);
        QVERIFY(!axis.calibrated);
        QCOMPARE(axis.raw, 60.0);
    }

    void aKnownRestIsNotLearnedAgain()
    {
        AxisCalibration axis = after(0.0, 30);
        for (int i = 0; i < 50; ++i)
            QCOMPARE(axis.read(100.0), Outcome::Nothing);
        QCOMPARE(axis.bias, 0.0);
        QVERIFY(!axis.isTrigger);
    }

    void aReadingIsCorrectedByTheRest_data()
    {
        QTest::addColumn<double>("bias");
        QTest::addColumn<bool>("isTrigger");
        QTest::addColumn<double>("raw");
        QTest::addColumn<double>("corrected");
        const auto row = [](const char *name, double bias, bool isTrigger, double raw, double corrected) {
            QTest::newRow(name) << bias << isTrigger << raw << corrected;
        };
        row("stick with bias 8 pushed to 100", 8.0, false, 100.0, 92.0);
        row("stick with bias 8 pulled to -100 is clamped", 8.0, false, -100.0, -100.0);
        row("stick with bias -8 pushed to 100 is clamped", -8.0, false, 100.0, 100.0);
        row("stick at its rest", 3.0, false, 3.0, 0.0);
        row("trigger from the bottom, released", -100.0, true, -100.0, 0.0);
        row("trigger from the bottom, half", -100.0, true, 0.0, 50.0);
        row("trigger from the bottom, pulled", -100.0, true, 100.0, 100.0);
        row("trigger from the bottom is floored", -100.0, true, -101.0, 0.0);
        row("trigger from the bottom has no ceiling", -100.0, true, 102.0, 101.0);
        row("trigger from the top, released", 100.0, true, 100.0, 0.0);
        row("trigger from the top, half", 100.0, true, 0.0, 50.0);
        row("trigger from the top, pulled", 100.0, true, -100.0, 100.0);
        row("trigger from the top is floored", 100.0, true, 101.0, 0.0);
        row("bottom begins at -99.5", -99.5, true, 0.0, 50.0);
        row("top begins at 99.5", 99.5, true, 0.0, 50.0);
        row("trigger with another rest", 20.0, true, 60.0, 40.0);
        row("trigger with another rest is floored", 20.0, true, 10.0, 0.0);
        row("just inside the limits", -99.25, true, 0.0, 99.25);
    }
    void aReadingIsCorrectedByTheRest()
    {
        QFETCH(const double, bias);
        QFETCH(const bool, isTrigger);
        QFETCH(const double, raw);
        AxisCalibration axis = resting(bias, isTrigger);
        axis.raw = raw;
        QTEST(axis.corrected(), "corrected");
    }

    void onlyWhatIsWorthTellingIsAccepted_data()
    {
        QTest::addColumn<double>("last");
        QTest::addColumn<double>("reading");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("still") << 0.0 << 0.0 << false;
        QTest::newRow("exactly half a unit") << 0.0 << 0.5 << false;
        QTest::newRow("exactly half a unit down") << 0.0 << -0.5 << false;
        QTest::newRow("more than half a unit") << 0.0 << 0.53125 << true;
        QTest::newRow("more than half a unit down") << 0.0 << -0.53125 << true;
        QTest::newRow("8 is inside the band") << 8.0 << 8.0 << false;
        QTest::newRow("-8 is inside the band") << -8.0 << -8.0 << false;
        QTest::newRow("8 moved from 7.5") << 7.5 << 8.0 << false;
        QTest::newRow("above the band, unmoved") << 8.25 << 8.25 << true;
        QTest::newRow("below the band, unmoved") << -8.25 << -8.25 << true;
        QTest::newRow("held far out") << 50.0 << 50.0 << true;
        QTest::newRow("back into the band") << 9.0 << 0.25 << true;
    }
    void onlyWhatIsWorthTellingIsAccepted()
    {
        QFETCH(const double, last);
        QFETCH(const double, reading);
        QFETCH(const bool, accepted);
        AxisCalibration axis = resting(0.0, false);
        axis.value = last;
        (void)axis.read(reading);
        QCOMPARE(axis.accept(), accepted);
        QCOMPARE(axis.value, accepted ? reading : last);
    }
};

GAMEPAD_TEST_MAIN(TestAxisCalibration)
#include "tst_axiscalibration.moc"
