// SPDX-License-Identifier: MIT
#include "endtoend.h"

#include <QtCore/QJsonArray>
#include <QtCore/QObject>

using namespace Qt::StringLiterals;

namespace
{
const QString gp0 = u"gp:0"_s;
const QString gp1 = u"gp:1"_s;
constexpr int axisX = 0;
constexpr int axisZ = 2;
} // namespace

class TestPadsAndHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void withNoPadTheHostRunsAndEnds();
    void aPadThatIsThereFromTheStartIsFound();
    void aHeldStickRepeatsInBothForms();
    void aTriggerThatRestsAtTheTopReadsFromZero();
    void aButtonHeldThroughCalibrationIsNoPress();
    void aStickHeldAwayKeepsTheDeviceSilent();
    void twoPadsAreHeardSideBySide();
    void oneAtATimeStopsTheOther();
    void pluggingASecondPadSendsTheFirstBackThroughCalibration();
    void aPadPulledWhileAButtonIsHeld();
    void anotherPadInTheSlotInheritsTheRow();
    void aPadInAnotherSlotIsAnotherRow();
    void aNinthPadIsNoRow();
    void deselectingSilences();
    void writingResetBiasLearnsAnew();
    void writingToTheDeviceSetsItsTickUntilItsNextStart();

private:
    [[nodiscard]] qsizetype count(const HostProcess::Condition &condition, qsizetype from);

    VirtualBench m_bench;
    std::optional<HostRuns> m_host;
};

void TestPadsAndHost::init()
{
    failOnUnexpectedWarnings();
    m_host.emplace();
}

void TestPadsAndHost::cleanup()
{
    if (QTest::currentTestFailed()) {
        QFile log(m_host->log());
        if (log.open(QIODevice::ReadOnly))
            qInfo().noquote() << "the host said:\n" << log.readAll().right(4000);
    }
    m_host.reset();
    for (int number = 0; number < 9; ++number)
        m_bench.pad(number).unplug();
}

qsizetype TestPadsAndHost::count(const HostProcess::Condition &condition, qsizetype from)
{
    const auto &lines = (*m_host)->lines();
    return std::count_if(lines.begin() + from, lines.end(), condition);
}

void TestPadsAndHost::withNoPadTheHostRunsAndEnds()
{
    QVERIFY(m_host->start());
    QVERIFY((*m_host)->waitFor(reported::selection({}, u"connected"_s)));
    QVERIFY((*m_host)->last("rows"_L1)["rows"_L1].toArray().isEmpty());
    QVERIFY((*m_host)->quit());
}

void TestPadsAndHost::aPadThatIsThereFromTheStartIsFound()
{
    m_bench.pad(0).plug(testPad("There before"));
    QVERIFY(m_host->start());
    QVERIFY(
        (*m_host)->waitFor(reported::row(gp0, {{"name"_L1, "There before"_L1}, {"isConnected"_L1, true}})));
}

void TestPadsAndHost::aHeldStickRepeatsInBothForms()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    const int device = m_host->select(gp0);
    QVERIFY(m_host->learns(device, axisX, 2));
    const qsizetype from = (*m_host)->mark();
    m_bench.pad(0).setAxis(PadAxis::LeftX, 52.0);
    QVERIFY((*m_host)->waitFor(reported::times(20, reported::axis(device, u"joy_0"_s, 50.0)), from));
    const auto named = [&](const QJsonObject &line) {
        return line["form"_L1] == "text"_L1 && line["device"_L1] == device &&
               line["deviceName"_L1] == "gamepad"_L1 && line["catName"_L1] == "gamepad"_L1 &&
               line["keys"_L1] == QJsonArray{"joy_0"_L1};
    };
    QVERIFY((*m_host)->waitFor(reported::times(19, named), from));
    const auto numeric = [&](const QJsonObject &line) {
        return line["form"_L1] == "numeric"_L1 && line["deviceId"_L1] == 0 && line["catId"_L1] == 1;
    };
    QVERIFY(count(numeric, from) >= 20);
}

void TestPadsAndHost::aTriggerThatRestsAtTheTopReadsFromZero()
{
    PadShape shape = testPad();
    shape.axes.at(std::size_t(PadAxis::LeftTrigger)).rest = 100.0;
    m_bench.pad(0).plug(shape);
    QVERIFY(m_host->start());
    const int device = m_host->select(gp0);
    QVERIFY(m_host->learns(device, axisZ, 100));
    QVERIFY(m_host->learns(device, axisX, 2));
    m_bench.pad(0).setAxis(PadAxis::LeftTrigger, 0.0);
    QVERIFY((*m_host)->waitFor(reported::axis(device, u"joy_2"_s, 50.0)));
    m_bench.pad(0).setAxis(PadAxis::LeftTrigger, -100.0);
    QVERIFY((*m_host)->waitFor(reported::axis(device, u"joy_2"_s, 100.0)));
}

void TestPadsAndHost::aButtonHeldThroughCalibrationIsNoPress()
{
    m_bench.pad(0).plug(testPad());
    m_bench.pad(0).setButton(7, true);
    QVERIFY(m_host->start());
    const int device = m_host->select(gp0);
    QVERIFY(m_host->learns(device, axisX, 2));
    m_bench.pad(0).setButton(7, false);
    QVERIFY((*m_host)->waitFor(reported::button(device, u"but_7"_s, false)));
    QCOMPARE(count(reported::button(device, u"but_7"_s, true), 0), 0);
}

void TestPadsAndHost::aStickHeldAwayKeepsTheDeviceSilent()
{
    m_bench.pad(0).plug(testPad());
    m_bench.pad(0).setAxis(PadAxis::LeftX, 50.0);
    QVERIFY(m_host->start());
    const int device = m_host->select(gp0);
    QVERIFY(m_host->learns(device, axisZ, -100));
    m_bench.pad(0).setButton(1, true);
    const qsizetype from = (*m_host)->mark();
    QVERIFY((*m_host)->command(u"write gp:0 unknown true"_s).isEmpty());
    QCOMPARE(count(reported::of("data"_L1, device), 0), 0);

    m_bench.pad(0).setAxis(PadAxis::LeftX, 2.0);
    QVERIFY(m_host->learns(device, axisX, 2, from));
    m_bench.pad(0).setButton(1, false);
    QVERIFY((*m_host)->waitFor(reported::button(device, u"but_1"_s, false), from));
    QCOMPARE(count(reported::button(device, u"but_1"_s, true), 0), 0);
}

void TestPadsAndHost::twoPadsAreHeardSideBySide()
{
    m_bench.pad(0).plug(testPad("First"));
    m_bench.pad(1).plug(testPad("Second"));
    QVERIFY(m_host->start());
    QVERIFY((*m_host)->waitFor(reported::row(gp1, {{"name"_L1, "Second"_L1}})));
    QVERIFY((*m_host)->command(u"property uniqSelection false"_s).isEmpty());
    const int first = m_host->select(gp0);
    const int second = m_host->select(gp1);
    QVERIFY(first != 0 && second != 0 && first != second);
    QVERIFY((*m_host)->waitFor(reported::selection({gp0, gp1}, u"connected"_s)));
    QVERIFY(m_host->learns(first, axisX, 2));
    QVERIFY(m_host->learns(second, axisX, 2));

    const qsizetype from = (*m_host)->mark();
    m_bench.pad(0).setAxis(PadAxis::LeftX, -28.0);
    m_bench.pad(1).setAxis(PadAxis::RightY, 64.0);
    m_bench.pad(1).setButton(4, true);
    QVERIFY((*m_host)->waitFor(reported::times(5, reported::axis(first, u"joy_0"_s, -30.0)), from));
    QVERIFY((*m_host)->waitFor(reported::times(5, reported::axis(second, u"joy_5"_s, 64.0)), from));
    QVERIFY((*m_host)->waitFor(reported::button(second, u"but_4"_s, true), from));
    const auto mixedUp = [&](const QJsonObject &line) {
        return (line["device"_L1] == first && !reported::valueOf(line, u"joy_5"_s).isUndefined()) ||
               (line["device"_L1] == second && !reported::valueOf(line, u"joy_0"_s).isUndefined());
    };
    QCOMPARE(count(mixedUp, from), 0);
}

void TestPadsAndHost::oneAtATimeStopsTheOther()
{
    m_bench.pad(0).plug(testPad("First"));
    m_bench.pad(1).plug(testPad("Second"));
    QVERIFY(m_host->start());
    QVERIFY((*m_host)->waitFor(reported::row(gp1, {{"isConnected"_L1, true}})));
    const int first = m_host->select(gp0);
    QVERIFY(m_host->learns(first, axisX, 2));
    const int second = m_host->select(gp1);
    QVERIFY((*m_host)->waitFor(reported::status(first, u"noCom"_s)));
    QVERIFY((*m_host)->waitFor(reported::selection({gp1}, u"connected"_s)));
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"selected"_L1, false}, {"linkState"_L1, 0}})));
    QVERIFY(m_host->learns(second, axisX, 2));

    const qsizetype from = (*m_host)->mark();
    m_bench.pad(0).setAxis(PadAxis::LeftX, 90.0);
    m_bench.pad(1).setAxis(PadAxis::LeftX, 42.0);
    QVERIFY((*m_host)->waitFor(reported::times(5, reported::axis(second, u"joy_0"_s, 40.0)), from));
    QCOMPARE(count(reported::of("data"_L1, first), from), 0);
}

void TestPadsAndHost::pluggingASecondPadSendsTheFirstBackThroughCalibration()
{
    m_bench.pad(0).plug(testPad("First"));
    QVERIFY(m_host->start());
    const int first = m_host->select(gp0);
    QVERIFY(m_host->learns(first, axisX, 2));
    const qsizetype from = (*m_host)->mark();
    m_bench.pad(1).plug(testPad("Second"));
    QVERIFY((*m_host)->waitFor(reported::row(gp1, {{"isConnected"_L1, true}}), from));
    QVERIFY(m_host->learns(first, axisX, 0, from));
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"linkState"_L1, 1}}), from));
    QVERIFY(m_host->learns(first, axisX, 2, from));
    m_bench.pad(0).setButton(0, true);
    QVERIFY((*m_host)->waitFor(reported::button(first, u"but_0"_s, true), from));
    QCOMPARE(count(reported::status(first, u"connected"_s), from), 0);
}

void TestPadsAndHost::aPadPulledWhileAButtonIsHeld()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    const int device = m_host->select(gp0);
    QVERIFY(m_host->learns(device, axisX, 2));
    m_bench.pad(0).setButton(5, true);
    QVERIFY((*m_host)->waitFor(reported::button(device, u"but_5"_s, true)));
    qsizetype from = (*m_host)->mark();
    m_bench.pad(0).unplug();
    QVERIFY((*m_host)->waitFor(reported::of("gone"_L1, device), from));
    QVERIFY((*m_host)->waitFor(reported::selection({gp0}, u"noCom"_s), from));
    QCOMPARE(count(reported::button(device, u"but_5"_s, false), 0), 0);

    from = (*m_host)->mark();
    m_bench.pad(0).plug(testPad());
    const auto selection = (*m_host)->waitFor(reported::selection({gp0}, u"connected"_s), from);
    QVERIFY(selection);
    const int returned = reported::onlyDevice(*selection);
    QVERIFY(returned > device);
    QVERIFY(m_host->learns(returned, axisX, 2, from));
    m_bench.pad(0).setButton(6, true);
    QVERIFY((*m_host)->waitFor(reported::button(returned, u"but_6"_s, true), from));
    const auto ofTheHeldButton = [](const QJsonObject &line) {
        return !reported::valueOf(line, u"but_5"_s).isUndefined();
    };
    QCOMPARE(count(ofTheHeldButton, from), 0);
}

void TestPadsAndHost::anotherPadInTheSlotInheritsTheRow()
{
    m_bench.pad(0).plug(testPad("One"));
    QVERIFY(m_host->start());
    const int device = m_host->select(gp0);
    QVERIFY(device != 0);
    m_bench.pad(0).unplug();
    QVERIFY((*m_host)->waitFor(reported::of("gone"_L1, device)));
    PadShape other = testPad("Another");
    other.productId = 0x2222;
    const qsizetype from = (*m_host)->mark();
    m_bench.pad(0).plug(other);
    QVERIFY((*m_host)->waitFor(
        reported::row(gp0,
                      {{"name"_L1, "Another"_L1}, {"selected"_L1, true}, {"ip"_L1, "VID:1209 PID:2222"_L1}}),
        from));
    QVERIFY((*m_host)->waitFor(reported::selection({gp0}, u"connected"_s), from));
}

void TestPadsAndHost::aPadInAnotherSlotIsAnotherRow()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    QVERIFY(m_host->select(gp0) != 0);
    m_bench.pad(0).unplug();
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"isConnected"_L1, false}})));
    m_bench.pad(1).plug(testPad());
    QVERIFY((*m_host)->waitFor(reported::row(gp1, {{"isConnected"_L1, true}, {"selected"_L1, false}})));
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"isConnected"_L1, false}, {"selected"_L1, true}})));
}

void TestPadsAndHost::aNinthPadIsNoRow()
{
    QVERIFY(m_host->start());
    for (int number = 0; number < 9; ++number)
        m_bench.pad(number).plug(testPad("Pad " + std::to_string(number)));
    QVERIFY(
        (*m_host)->waitFor([](const QJsonObject &line) { return line["rows"_L1].toArray().size() == 8; }));
    const qsizetype from = (*m_host)->mark();
    m_bench.pad(3).unplug();
    QVERIFY((*m_host)->waitFor(reported::row(u"gp:3"_s, {{"isConnected"_L1, false}}), from));
    QCOMPARE((*m_host)->last("rows"_L1)["rows"_L1].toArray().size(), 8);
    QVERIFY((*m_host)->quit());
}

void TestPadsAndHost::deselectingSilences()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    const int device = m_host->select(gp0);
    QVERIFY(m_host->learns(device, axisX, 2));
    m_bench.pad(0).setAxis(PadAxis::LeftX, 60.0);
    QVERIFY((*m_host)->waitFor(reported::of("data"_L1, device)));
    QVERIFY((*m_host)->command(u"click gp:0"_s).isEmpty());
    QVERIFY((*m_host)->waitFor(reported::status(device, u"noCom"_s)));
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"selected"_L1, false}, {"linkState"_L1, 0}})));
    const qsizetype from = (*m_host)->mark();
    m_bench.pad(1).plug(testPad());
    QVERIFY((*m_host)->waitFor(reported::row(gp1, {{"isConnected"_L1, true}}), from));
    QCOMPARE(count(reported::of("data"_L1, device), from), 0);
}

void TestPadsAndHost::writingResetBiasLearnsAnew()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    const int device = m_host->select(gp0);
    QVERIFY(m_host->learns(device, axisX, 2));
    m_bench.pad(0).setAxis(PadAxis::LeftX, 5.0);
    const qsizetype from = (*m_host)->mark();
    QVERIFY((*m_host)->command(u"write gp:0 resetBias true"_s).isEmpty());
    QVERIFY(m_host->learns(device, axisX, 5, from));
    m_bench.pad(0).setAxis(PadAxis::LeftX, 35.0);
    QVERIFY((*m_host)->waitFor(reported::axis(device, u"joy_0"_s, 30.0), from));
}

void TestPadsAndHost::writingToTheDeviceSetsItsTickUntilItsNextStart()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    const int device = m_host->select(gp0);
    QVERIFY(m_host->learns(device, axisX, 2));
    m_bench.pad(0).setAxis(PadAxis::LeftX, 52.0);
    QVERIFY((*m_host)->command(u"write gp:0 pollingInterval 300"_s).isEmpty());
    const auto held = reported::axis(device, u"joy_0"_s, 50.0);
    qsizetype from = (*m_host)->mark();
    const auto first = (*m_host)->waitFor(reported::times(2, held), from);
    const auto second = (*m_host)->waitFor(reported::times(3, held), from);
    QVERIFY(first && second);
    QVERIFY((*second)["at"_L1].toInteger() - (*first)["at"_L1].toInteger() >= 200);

    from = (*m_host)->mark();
    QVERIFY((*m_host)->command(u"click gp:0"_s).isEmpty());
    m_bench.pad(0).setAxis(PadAxis::LeftX, 2.0);
    QVERIFY(m_host->select(gp0) != 0);
    QVERIFY(m_host->learns(device, axisX, 2, from));
    from = (*m_host)->mark();
    m_bench.pad(0).setAxis(PadAxis::LeftX, 52.0);
    const auto early = (*m_host)->waitFor(held, from);
    const auto late = (*m_host)->waitFor(reported::times(6, held), from);
    QVERIFY(early && late);
    QVERIFY((*late)["at"_L1].toInteger() - (*early)["at"_L1].toInteger() < 5 * 300);
}

GAMEPAD_TEST_MAIN(TestPadsAndHost)
#include "tst_padsandhost.moc"
