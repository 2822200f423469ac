// SPDX-License-Identifier: MIT
#include "joydev.h"
#include "testmain.h"

#include <QtCore/QObject>
#include <QtTest/QTest>

#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>

namespace
{
std::vector<js_event> eventsOf(const Joydev::Answer &answer)
{
    std::vector<js_event> events(answer.bytes.size() / sizeof(js_event));
    if (!events.empty())
        std::memcpy(events.data(), answer.bytes.data(), answer.bytes.size());
    return events;
}

/// Reads until nothing is left, with room for `room` events a call.
std::vector<js_event> readAll(const Joydev &joydev, Joydev::Reader &reader, std::size_t room = 1)
{
    std::vector<js_event> all;
    for (;;) {
        const Joydev::Answer answer = joydev.read(reader, room * sizeof(js_event));
        if (answer.error != 0)
            return all;
        for (const js_event &event : eventsOf(answer))
            all.push_back(event);
    }
}

Joydev pluggedPad()
{
    Joydev joydev;
    joydev.plug(twoStickPad("Pad"));
    return joydev;
}

QByteArray textOf(const Joydev::Answer &answer)
{
    return {reinterpret_cast<const char *>(answer.bytes.data()), qsizetype(answer.bytes.size())};
}
} // namespace

class TestJoydev : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void openingTellsButtonsThenAxesAsInitialState();
    void anEventFollowsWithoutTheInitialMark();
    void readingNothingSaysTryAgain();
    void aBufferTooSmallForOneEventIsInvalid();
    void aLargeBufferTakesSeveralEvents();
    void everyOpenedFileReadsForItself();
    void aFileThatMissedEventsIsToldTheStateAnew();
    void anUnchangedControlSendsNothing();
    void controlsThatThePadDoesNotHaveAreIgnored();
    void anUnpluggedPadAnswersNoDevice();
    void aFileOpenedBeforeTheReturnStaysDead();
    void aReturningPadIsAtRest();
    void countsAndVersion();
    void theAxisMapNamesEachAxis();
    void theNameIsCutToTheBuffer();
    void anotherRequestIsInvalid();
    void positionsScaleToTheKernelsRange_data();
    void positionsScaleToTheKernelsRange();
};

void TestJoydev::openingTellsButtonsThenAxesAsInitialState()
{
    Joydev joydev = pluggedPad();
    joydev.setButton(3, true);
    auto reader = joydev.open();
    const auto events = readAll(joydev, reader);
    QCOMPARE(events.size(), std::size_t(11 + 8));
    for (std::size_t i = 0; i < events.size(); ++i) {
        const bool isButton = i < 11;
        QCOMPARE(int(events[i].type), (isButton ? JS_EVENT_BUTTON : JS_EVENT_AXIS) | JS_EVENT_INIT);
        QCOMPARE(std::size_t(events[i].number), isButton ? i : i - 11);
    }
    QCOMPARE(events[3].value, std::int16_t(1));
    QCOMPARE(events[4].value, std::int16_t(0));
    QCOMPARE(events[11].value, std::int16_t(0));
    QCOMPARE(events[13].value, std::int16_t(-32767));
}

void TestJoydev::anEventFollowsWithoutTheInitialMark()
{
    Joydev joydev = pluggedPad();
    auto reader = joydev.open();
    readAll(joydev, reader);
    joydev.setAxis(1, 50.0);
    joydev.setButton(10, true);
    joydev.setButton(10, false);
    const auto events = readAll(joydev, reader);
    QCOMPARE(events.size(), std::size_t(3));
    QCOMPARE(int(events[0].type), JS_EVENT_AXIS);
    QCOMPARE(int(events[0].number), 1);
    QCOMPARE(int(events[0].value), 16384);
    QCOMPARE(int(events[1].type), JS_EVENT_BUTTON);
    QCOMPARE(int(events[1].number), 10);
    QCOMPARE(int(events[1].value), 1);
    QCOMPARE(int(events[2].value), 0);
}

void TestJoydev::readingNothingSaysTryAgain()
{
    const Joydev joydev = pluggedPad();
    auto reader = joydev.open();
    readAll(joydev, reader);
    const auto answer = joydev.read(reader, sizeof(js_event));
    QCOMPARE(answer.result, -1L);
    QCOMPARE(answer.error, EAGAIN);
}

void TestJoydev::aBufferTooSmallForOneEventIsInvalid()
{
    const Joydev joydev = pluggedPad();
    auto reader = joydev.open();
    QCOMPARE(joydev.read(reader, sizeof(js_event) - 1).error, EINVAL);
}

void TestJoydev::aLargeBufferTakesSeveralEvents()
{
    Joydev joydev = pluggedPad();
    auto reader = joydev.open();
    joydev.setButton(0, true);
    const auto answer = joydev.read(reader, 100 * sizeof(js_event) + 3);
    QCOMPARE(eventsOf(answer).size(), std::size_t(11 + 8 + 1));
    QCOMPARE(answer.result, long(20 * sizeof(js_event)));
}

void TestJoydev::everyOpenedFileReadsForItself()
{
    Joydev joydev = pluggedPad();
    auto first = joydev.open();
    auto second = joydev.open();
    readAll(joydev, first);
    joydev.setButton(1, true);
    QCOMPARE(readAll(joydev, first).size(), std::size_t(1));
    QCOMPARE(readAll(joydev, second).size(), std::size_t(11 + 8 + 1));
}

void TestJoydev::aFileThatMissedEventsIsToldTheStateAnew()
{
    Joydev joydev = pluggedPad();
    auto slow = joydev.open();
    readAll(joydev, slow);
    for (int i = 1; i <= 65; ++i)
        joydev.setAxis(0, i);
    const auto events = readAll(joydev, slow);
    QCOMPARE(events.size(), std::size_t(11 + 8));
    QCOMPARE(int(events[11].type), JS_EVENT_AXIS | JS_EVENT_INIT);
    QCOMPARE(events[11].value, kernelValue(65));

    for (int i = 1; i <= 64; ++i)
        joydev.setAxis(0, -i);
    QCOMPARE(readAll(joydev, slow).size(), std::size_t(64));
}

void TestJoydev::anUnchangedControlSendsNothing()
{
    Joydev joydev = pluggedPad();
    auto reader = joydev.open();
    readAll(joydev, reader);
    joydev.setAxis(0, 0.0);
    joydev.setAxis(2, -250.0);
    joydev.setButton(0, false);
    QCOMPARE(readAll(joydev, reader).size(), std::size_t(0));
}

void TestJoydev::controlsThatThePadDoesNotHaveAreIgnored()
{
    Joydev joydev = pluggedPad();
    auto reader = joydev.open();
    readAll(joydev, reader);
    joydev.setAxis(8, 50.0);
    joydev.setAxis(static_cast<std::size_t>(-1), 50.0);
    joydev.setButton(11, true);
    joydev.setAxis(0, std::nan(""));
    QCOMPARE(readAll(joydev, reader).size(), std::size_t(0));
}

void TestJoydev::anUnpluggedPadAnswersNoDevice()
{
    Joydev joydev = pluggedPad();
    auto reader = joydev.open();
    joydev.unplug();
    QVERIFY(!joydev.isPlugged());
    QCOMPARE(joydev.read(reader, sizeof(js_event)).error, ENODEV);
    QCOMPARE(joydev.control(reader, JSIOCGAXES).error, ENODEV);
}

void TestJoydev::aFileOpenedBeforeTheReturnStaysDead()
{
    Joydev joydev = pluggedPad();
    auto old = joydev.open();
    joydev.unplug();
    auto opened = joydev.open();
    joydev.plug(twoStickPad("Pad"));
    joydev.setButton(0, true);
    auto fresh = joydev.open();
    QCOMPARE(joydev.read(old, sizeof(js_event)).error, ENODEV);
    QCOMPARE(joydev.control(old, JSIOCGAXES).error, ENODEV);
    QCOMPARE(joydev.read(opened, sizeof(js_event)).error, ENODEV);
    QCOMPARE(readAll(joydev, fresh).size(), std::size_t(11 + 8));
}

void TestJoydev::aReturningPadIsAtRest()
{
    Joydev joydev = pluggedPad();
    joydev.setAxis(2, 100.0);
    joydev.setButton(4, true);
    joydev.unplug();
    joydev.setButton(4, false);
    joydev.plug(twoStickPad("Pad"));
    auto reader = joydev.open();
    const auto events = readAll(joydev, reader);
    QCOMPARE(events[4].value, std::int16_t(0));
    QCOMPARE(events[13].value, std::int16_t(-32767));
}

void TestJoydev::countsAndVersion()
{
    const Joydev joydev = pluggedPad();
    const auto reader = joydev.open();
    QCOMPARE(textOf(joydev.control(reader, JSIOCGAXES)), QByteArray(1, 8));
    QCOMPARE(textOf(joydev.control(reader, JSIOCGBUTTONS)), QByteArray(1, 11));
    const std::uint32_t version = JS_VERSION;
    QCOMPARE(textOf(joydev.control(reader, JSIOCGVERSION)),
             QByteArray(reinterpret_cast<const char *>(&version), sizeof version));
}

void TestJoydev::theAxisMapNamesEachAxis()
{
    const Joydev joydev = pluggedPad();
    const QByteArray map = textOf(joydev.control(joydev.open(), JSIOCGAXMAP));
    QCOMPARE(map.size(), qsizetype(ABS_CNT));
    constexpr std::array expected{char(ABS_X),  char(ABS_Y),  char(ABS_Z),     char(ABS_RX),
                                  char(ABS_RY), char(ABS_RZ), char(ABS_HAT0X), char(ABS_HAT0Y)};
    QCOMPARE(map.first(8), QByteArray(expected.data(), expected.size()));
}

void TestJoydev::theNameIsCutToTheBuffer()
{
    Joydev joydev;
    joydev.plug(twoStickPad("Manette \xc3\xa9t\xc3\xa9"));
    const auto reader = joydev.open();
    const auto whole = joydev.control(reader, JSIOCGNAME(128));
    QCOMPARE(textOf(whole), QByteArray("Manette \xc3\xa9t\xc3\xa9", 14));
    QCOMPARE(whole.result, 14L);
    QCOMPARE(textOf(joydev.control(reader, JSIOCGNAME(4))), QByteArray("Mane"));
}

void TestJoydev::anotherRequestIsInvalid()
{
    const Joydev joydev = pluggedPad();
    QCOMPARE(joydev.control(joydev.open(), JSIOCGCORR).error, EINVAL);
    QCOMPARE(joydev.control(joydev.open(), 0).error, EINVAL);
}

void TestJoydev::positionsScaleToTheKernelsRange_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<int>("value");
    QTest::newRow("rest") << 0.0 << 0;
    QTest::newRow("full") << 100.0 << 32767;
    QTest::newRow("full back") << -100.0 << -32767;
    QTest::newRow("half") << 50.0 << 16384;
    QTest::newRow("beyond the end") << 1e9 << 32767;
    QTest::newRow("beyond the other end") << -100.5 << -32767;
}

void TestJoydev::positionsScaleToTheKernelsRange()
{
    QFETCH(double, position);
    QTEST(int(kernelValue(position)), "value");
}

GAMEPAD_TEST_MAIN(TestJoydev)
#include "tst_joydev.moc"
