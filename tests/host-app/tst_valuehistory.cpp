// SPDX-License-Identifier: MIT
#include "testmain.h"
#include "valuehistory.h"

#include <QtCore/QObject>
#include <QtTest/QTest>

#include <cmath>

using Samples = QList<ValueHistory::Sample>;

class TestValueHistory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void everyLineKeepsItsSamples();
    void aHeldValueKeepsItsTwoEnds();
    void theValueThatStillHoldsStays();
    void anInterruptionEndsEveryLineOnce();
};

void TestValueHistory::everyLineKeepsItsSamples()
{
    ValueHistory history(1000);
    history.append(3, 0, 1.0);
    history.append(0, 10, 5.0);
    history.append(3, 20, 2.0);
    QCOMPARE(history.lines().value(3), (Samples{{0, 1.0}, {20, 2.0}}));
    QCOMPARE(history.lines().value(0), (Samples{{10, 5.0}}));
}

void TestValueHistory::aHeldValueKeepsItsTwoEnds()
{
    ValueHistory history(1000);
    for (int time = 0; time <= 500; time += 10)
        history.append(0, time, 50.0);
    history.append(0, 510, 40.0);
    QCOMPARE(history.lines().value(0), (Samples{{0, 50.0}, {500, 50.0}, {510, 40.0}}));
}

void TestValueHistory::theValueThatStillHoldsStays()
{
    ValueHistory history(100);
    history.append(0, 0, 1.0);
    history.append(0, 10, 2.0);
    history.append(0, 150, 3.0);
    history.forgetBefore(200);
    QCOMPARE(history.lines().value(0), (Samples{{10, 2.0}, {150, 3.0}}));
    history.forgetBefore(1000);
    QCOMPARE(history.lines().value(0), (Samples{{150, 3.0}}));
}

void TestValueHistory::anInterruptionEndsEveryLineOnce()
{
    ValueHistory history(1000);
    history.append(0, 0, 1.0);
    history.append(1, 0, 2.0);
    history.interrupt(50);
    history.interrupt(60);
    for (const auto &samples : history.lines()) {
        QCOMPARE(samples.size(), 2);
        QCOMPARE(samples.at(1).time, 50);
        QVERIFY(std::isnan(samples.at(1).value));
    }
    history.append(0, 70, 1.0);
    QCOMPARE(history.lines().value(0).size(), 3);
}

GAMEPAD_TEST_MAIN(TestValueHistory)
#include "tst_valuehistory.moc"
