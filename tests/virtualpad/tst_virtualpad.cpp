// SPDX-License-Identifier: MIT
#include "testmain.h"
#include "virtualbench.h"

#include <SFML/Window/Joystick.hpp>

#include <QtCore/QObject>
#include <QtTest/QTest>

#include <array>
#include <cerrno>
#include <cmath>
#include <optional>

#include <fcntl.h>
#include <linux/joystick.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace
{
// SFML gives out its slots in the order in which nodes appear for the first time.
constexpr unsigned first = 0;
constexpr unsigned second = 1;

bool isConnected(unsigned slot)
{
    sf::Joystick::update();
    return sf::Joystick::isConnected(slot);
}

double position(unsigned slot, sf::Joystick::Axis axis)
{
    sf::Joystick::update();
    return double(sf::Joystick::getAxisPosition(slot, axis));
}

bool stands(unsigned slot, sf::Joystick::Axis axis, double expected)
{
    return std::abs(position(slot, axis) - expected) < 0.01;
}

bool isPressed(unsigned slot, unsigned button)
{
    sf::Joystick::update();
    return sf::Joystick::isButtonPressed(slot, button);
}
} // namespace

Q_DECLARE_METATYPE(sf::Joystick::Axis)

class TestVirtualPad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { failOnUnexpectedWarnings(); }
    void cleanup();

    void aPadIsFoundWithItsIdentity();
    void itsAxesAndButtonsAreCounted();
    void controlsStandAtRest();
    void everyAxisMoves_data();
    void everyAxisMoves();
    void positionsArriveAsSet_data();
    void positionsArriveAsSet();
    void everyButtonIsPressedAndReleased();
    void anUnpluggedPadIsGone();
    void aPadReturnsToItsSlotAtRest();
    void anotherPadTakesTheSlot();
    void twoPadsAreIndependent();
    void aPadComesAndGoesManyTimes();
    void aPadOfFewControls();
    void aNameIsUtf8ForWhoAsksTheKernel();

private:
    void plugFirst() { plug(first, twoStickPad("Virtual pad")); }
    void plug(unsigned slot, const PadShape &shape);

    std::optional<VirtualBench> m_bench;
};

void TestVirtualPad::initTestCase()
{
    m_bench.emplace();
    for (unsigned slot = 0; slot < sf::Joystick::Count; ++slot)
        QVERIFY(!isConnected(slot));
    plugFirst();
    plug(second, twoStickPad("Second"));
    cleanup();
}

void TestVirtualPad::cleanup()
{
    m_bench->pad(first).unplug();
    m_bench->pad(second).unplug();
    QTRY_VERIFY(!isConnected(first) && !isConnected(second));
}

void TestVirtualPad::plug(unsigned slot, const PadShape &shape)
{
    m_bench->pad(int(slot)).plug(shape);
    QTRY_VERIFY(isConnected(slot));
}

void TestVirtualPad::aPadIsFoundWithItsIdentity()
{
    plugFirst();
    const auto identity = sf::Joystick::getIdentification(first);
    QCOMPARE(identity.name.toAnsiString(), std::string("Virtual pad"));
    QCOMPARE(identity.vendorId, 0x1209U);
    QCOMPARE(identity.productId, 0x0001U);
}

void TestVirtualPad::itsAxesAndButtonsAreCounted()
{
    plugFirst();
    for (unsigned axis = 0; axis < sf::Joystick::AxisCount; ++axis)
        QVERIFY(sf::Joystick::hasAxis(first, static_cast<sf::Joystick::Axis>(axis)));
    QCOMPARE(sf::Joystick::getButtonCount(first), 11U);
}

void TestVirtualPad::controlsStandAtRest()
{
    plugFirst();
    QTRY_VERIFY(stands(first, sf::Joystick::Axis::Z, -100.0));
    QVERIFY(stands(first, sf::Joystick::Axis::R, -100.0));
    for (const auto axis : {sf::Joystick::Axis::X, sf::Joystick::Axis::Y, sf::Joystick::Axis::U,
                            sf::Joystick::Axis::V, sf::Joystick::Axis::PovX, sf::Joystick::Axis::PovY})
        QVERIFY(stands(first, axis, 0.0));
    for (unsigned button = 0; button < 32; ++button)
        QVERIFY(!isPressed(first, button));
}

void TestVirtualPad::everyAxisMoves_data()
{
    QTest::addColumn<int>("moved");
    QTest::addColumn<sf::Joystick::Axis>("axis");
    const auto row = [](const char *name, PadAxis moved, sf::Joystick::Axis axis) {
        QTest::newRow(name) << int(moved) << axis;
    };
    row("left stick across", PadAxis::LeftX, sf::Joystick::Axis::X);
    row("left stick along", PadAxis::LeftY, sf::Joystick::Axis::Y);
    row("left trigger", PadAxis::LeftTrigger, sf::Joystick::Axis::Z);
    row("right stick across", PadAxis::RightX, sf::Joystick::Axis::U);
    row("right stick along", PadAxis::RightY, sf::Joystick::Axis::V);
    row("right trigger", PadAxis::RightTrigger, sf::Joystick::Axis::R);
    row("hat across", PadAxis::HatX, sf::Joystick::Axis::PovX);
    row("hat along", PadAxis::HatY, sf::Joystick::Axis::PovY);
}

void TestVirtualPad::everyAxisMoves()
{
    QFETCH(int, moved);
    QFETCH(sf::Joystick::Axis, axis);
    plugFirst();
    m_bench->pad(first).setAxis(moved, 61.5);
    QTRY_VERIFY(stands(first, axis, 61.5));
    for (unsigned other = 0; other < sf::Joystick::AxisCount; ++other) {
        if (static_cast<sf::Joystick::Axis>(other) != axis)
            QVERIFY(!stands(first, static_cast<sf::Joystick::Axis>(other), 61.5));
    }
}

void TestVirtualPad::positionsArriveAsSet_data()
{
    QTest::addColumn<double>("set");
    for (const double value : {-100.0, -99.5, -40.0, -0.5, 0.0, 0.5, 8.4, 37.7, 99.4, 100.0})
        QTest::addRow("%g", value) << value;
}

void TestVirtualPad::positionsArriveAsSet()
{
    QFETCH(double, set);
    plugFirst();
    m_bench->pad(first).setAxis(PadAxis::LeftX, 50.0);
    QTRY_VERIFY(stands(first, sf::Joystick::Axis::X, 50.0));
    m_bench->pad(first).setAxis(PadAxis::LeftX, set);
    QTRY_VERIFY(stands(first, sf::Joystick::Axis::X, set));
}

void TestVirtualPad::everyButtonIsPressedAndReleased()
{
    plugFirst();
    for (unsigned button = 0; button < 11; ++button) {
        m_bench->pad(first).setButton(int(button), true);
        QTRY_VERIFY(isPressed(first, button));
        m_bench->pad(first).setButton(int(button), false);
        QTRY_VERIFY(!isPressed(first, button));
    }
}

void TestVirtualPad::anUnpluggedPadIsGone()
{
    plugFirst();
    m_bench->pad(first).setButton(2, true);
    QTRY_VERIFY(isPressed(first, 2));
    m_bench->pad(first).unplug();
    QTRY_VERIFY(!isConnected(first));
    QVERIFY(!isPressed(first, 2));
    QCOMPARE(sf::Joystick::getButtonCount(first), 0U);
}

void TestVirtualPad::aPadReturnsToItsSlotAtRest()
{
    plugFirst();
    m_bench->pad(first).setButton(2, true);
    m_bench->pad(first).setAxis(PadAxis::LeftTrigger, 100.0);
    QTRY_VERIFY(isPressed(first, 2) && stands(first, sf::Joystick::Axis::Z, 100.0));
    m_bench->pad(first).unplug();
    QTRY_VERIFY(!isConnected(first));
    plugFirst();
    QTRY_VERIFY(stands(first, sf::Joystick::Axis::Z, -100.0));
    QVERIFY(!isPressed(first, 2));
}

void TestVirtualPad::anotherPadTakesTheSlot()
{
    plugFirst();
    m_bench->pad(first).unplug();
    QTRY_VERIFY(!isConnected(first));
    PadShape other = twoStickPad("Other");
    other.vendorId = 0xbeef;
    other.productId = 0x00a5;
    plug(first, other);
    const auto identity = sf::Joystick::getIdentification(first);
    QCOMPARE(identity.name.toAnsiString(), std::string("Other"));
    QCOMPARE(identity.vendorId, 0xbeefU);
    QCOMPARE(identity.productId, 0x00a5U);
}

void TestVirtualPad::twoPadsAreIndependent()
{
    plugFirst();
    plug(second, twoStickPad("Second"));
    QCOMPARE(sf::Joystick::getIdentification(second).name.toAnsiString(), std::string("Second"));
    m_bench->pad(first).setAxis(PadAxis::LeftX, -30.0);
    m_bench->pad(second).setAxis(PadAxis::LeftX, 70.0);
    m_bench->pad(second).setButton(5, true);
    QTRY_VERIFY(stands(first, sf::Joystick::Axis::X, -30.0));
    QTRY_VERIFY(stands(second, sf::Joystick::Axis::X, 70.0) && isPressed(second, 5));
    QVERIFY(!isPressed(first, 5));

    m_bench->pad(first).unplug();
    QTRY_VERIFY(!isConnected(first));
    QVERIFY(isConnected(second));
    m_bench->pad(second).setButton(5, false);
    QTRY_VERIFY(!isPressed(second, 5));
}

void TestVirtualPad::aPadComesAndGoesManyTimes()
{
    for (int i = 0; i < 30; ++i) {
        plugFirst();
        m_bench->pad(first).setButton(i % 11, true);
        QTRY_VERIFY(isPressed(first, unsigned(i % 11)));
        m_bench->pad(first).unplug();
        QTRY_VERIFY(!isConnected(first));
    }
}

void TestVirtualPad::aPadOfFewControls()
{
    PadShape pedal = {.name = "Pedal", .vendorId = 1, .productId = 2, .axes = {}, .buttonCount = 1};
    plug(first, pedal);
    QCOMPARE(sf::Joystick::getButtonCount(first), 1U);
    for (unsigned axis = 0; axis < sf::Joystick::AxisCount; ++axis)
        QVERIFY(!sf::Joystick::hasAxis(first, static_cast<sf::Joystick::Axis>(axis)));
    m_bench->pad(first).setButton(0, true);
    QTRY_VERIFY(isPressed(first, 0));
}

void TestVirtualPad::aNameIsUtf8ForWhoAsksTheKernel()
{
    plug(first, twoStickPad("Manette d'\xc3\xa9t\xc3\xa9"));
    const int file = ::open("/dev/input/js0", O_RDONLY | O_NONBLOCK);
    QVERIFY(file >= 0);
    std::array<char, 128> name{};
    QVERIFY(::ioctl(file, JSIOCGNAME(name.size()), name.data()) > 0);
    QCOMPARE(QByteArray(name.data()), QByteArray("Manette d'\xc3\xa9t\xc3\xa9"));
    ::close(file);
}

GAMEPAD_TEST_MAIN(TestVirtualPad)
#include "tst_virtualpad.moc"
