// SPDX-License-Identifier: MIT
#include "padpanel.h"
#include "stickpad.h"
#include "testmain.h"
#include "virtualbench.h"

#include <SFML/Window/Joystick.hpp>

#include <QtCore/QObject>
#include <QtTest/QTest>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{
constexpr unsigned slot = 0;

double position(sf::Joystick::Axis axis)
{
    sf::Joystick::update();
    return double(sf::Joystick::getAxisPosition(slot, axis));
}

bool isNear(sf::Joystick::Axis axis, double expected)
{
    return std::abs(position(axis) - expected) < 0.5;
}
} // namespace

/// The panel that a person drives a pad with, as SFML then reads that pad.
class TestPadPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void thePlugIsPulledAndPutBack();
    void aDraggedStickMovesBothAxesAndSpringsBack();
    void aStickStopsAtItsEnds();
    void aTriggerIsPulledAndLetGo();
    void theHatPointsWhileItIsHeld();
    void aButtonIsDownWhileItIsHeld();

private:
    [[nodiscard]] QPushButton *button(const QString &text) const;

    VirtualBench m_bench;
    std::unique_ptr<PadPanel> m_panel;
};

void TestPadPanel::init()
{
    failOnUnexpectedWarnings();
    PadShape shape = twoStickPad("Pad");
    shape.axes.at(0).rest = 3.0;
    m_bench.pad().unplug();
    sf::Joystick::update();
    m_bench.pad().plug(shape);
    m_panel = std::make_unique<PadPanel>(m_bench.pad(), shape);
    m_panel->show();
    QTRY_VERIFY(isNear(sf::Joystick::Axis::Z, -100.0));
}

QPushButton *TestPadPanel::button(const QString &text) const
{
    for (QPushButton *found : m_panel->findChildren<QPushButton *>()) {
        if (found->text() == text)
            return found;
    }
    return nullptr;
}

void TestPadPanel::thePlugIsPulledAndPutBack()
{
    QTest::mouseClick(button(u"Pull the plug"_s), Qt::LeftButton);
    QVERIFY(!m_bench.pad().isPlugged());
    QVERIFY(!button(u"3"_s)->isEnabled());
    QTest::mouseClick(button(u"Plug in"_s), Qt::LeftButton);
    QVERIFY(m_bench.pad().isPlugged());
    QVERIFY(button(u"3"_s)->isEnabled());
}

void TestPadPanel::aDraggedStickMovesBothAxesAndSpringsBack()
{
    auto *stick = m_panel->findChildren<StickPad *>().at(0);
    const QPoint middle = stick->rect().center();
    QTest::mousePress(stick, Qt::LeftButton, {}, middle);
    QTest::mouseMove(stick, middle + QPoint(24, -12));
    QTRY_VERIFY(position(sf::Joystick::Axis::X) > 40.0 && position(sf::Joystick::Axis::Y) < -20.0);
    QTest::mouseRelease(stick, Qt::LeftButton, {}, middle + QPoint(24, -12));
    QTRY_VERIFY(isNear(sf::Joystick::Axis::X, 3.0) && isNear(sf::Joystick::Axis::Y, 0.0));
}

void TestPadPanel::aStickStopsAtItsEnds()
{
    auto *stick = m_panel->findChildren<StickPad *>().at(1);
    QTest::mousePress(stick, Qt::LeftButton, {}, stick->rect().center());
    QTest::mouseMove(stick, stick->rect().center() + QPoint(900, 900));
    QTRY_VERIFY(isNear(sf::Joystick::Axis::U, 100.0) && isNear(sf::Joystick::Axis::V, 100.0));
}

void TestPadPanel::aTriggerIsPulledAndLetGo()
{
    auto *slider = m_panel->findChildren<QSlider *>().at(0);
    slider->setSliderDown(true);
    slider->setSliderPosition(60);
    QTRY_VERIFY(isNear(sf::Joystick::Axis::Z, 60.0));
    slider->setSliderDown(false);
    QTRY_VERIFY(isNear(sf::Joystick::Axis::Z, -100.0));
}

void TestPadPanel::theHatPointsWhileItIsHeld()
{
    QTest::mousePress(button(u"▲"_s), Qt::LeftButton);
    QTRY_VERIFY(isNear(sf::Joystick::Axis::PovY, -100.0));
    QTest::mouseRelease(button(u"▲"_s), Qt::LeftButton);
    QTRY_VERIFY(isNear(sf::Joystick::Axis::PovY, 0.0));
    QTest::mousePress(button(u"▶"_s), Qt::LeftButton);
    QTRY_VERIFY(isNear(sf::Joystick::Axis::PovX, 100.0));
    QTest::mouseRelease(button(u"▶"_s), Qt::LeftButton);
    QTRY_VERIFY(isNear(sf::Joystick::Axis::PovX, 0.0));
}

void TestPadPanel::aButtonIsDownWhileItIsHeld()
{
    const auto isDown = [] {
        sf::Joystick::update();
        return sf::Joystick::isButtonPressed(slot, 7);
    };
    QTest::mousePress(button(u"7"_s), Qt::LeftButton);
    QTRY_VERIFY(isDown());
    QTest::mouseRelease(button(u"7"_s), Qt::LeftButton);
    QTRY_VERIFY(!isDown());
}

GAMEPAD_TEST_MAIN(TestPadPanel)
#include "tst_padpanel.moc"
