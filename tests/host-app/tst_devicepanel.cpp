// SPDX-License-Identifier: MIT
#include "buttonlamps.h"
#include "devicepanel.h"
#include "gauge.h"
#include "testmain.h"
#include "theme.h"

#include <QtCore/QObject>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

namespace
{
/// How many pixels of exactly that colour the widget shows.
int pixels(QWidget *widget, const QColor &colour)
{
    const QImage image = widget->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y).rgb() == colour.rgb() ? 1 : 0;
    }
    return count;
}

ValueBatch batch(const QStringList &keys, const QVariantList &values)
{
    return {
        .device = 1, .deviceType = u"gamepade"_s, .deviceId = 0, .catId = 1, .keys = keys, .values = values};
}
} // namespace

class TestDevicePanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void anAxisMovesItsGaugeAlone();
    void aTriggerFillsFromTheLeft();
    void aButtonLightsItsLamp();
    void aButtonBeyondTheCountGetsALamp();
    void theStateIsTold();
    void strangeKeysDoNothing();

private:
    [[nodiscard]] QString state() const;

    std::unique_ptr<DevicePanel> m_panel;
};

void TestDevicePanel::init()
{
    failOnUnexpectedWarnings();
    m_panel = std::make_unique<DevicePanel>(
        HeldDevice{.number = 1, .usn = u"gp:0"_s, .name = u"Pad"_s, .interface = {}});
    m_panel->setRow(u"Pad"_s, u"VID:1 PID:2"_s, 11);
    m_panel->setStatus(IComInterface::connected);
    m_panel->resize(700, 500);
    m_panel->show();
}

QString TestDevicePanel::state() const
{
    for (const QLabel *label : m_panel->findChildren<QLabel *>()) {
        if (label->text().contains(u"●"_s))
            return label->text();
    }
    return {};
}

void TestDevicePanel::anAxisMovesItsGaugeAlone()
{
    const auto gauges = m_panel->findChildren<Gauge *>();
    QCOMPARE(gauges.size(), 8);
    QCOMPARE(pixels(gauges.at(2), theme::axisColour(2)), 0);
    m_panel->take(batch({u"joy_2"_s}, {80.0}));
    const int far = pixels(gauges.at(2), theme::axisColour(2));
    m_panel->take(batch({u"joy_2"_s}, {20.0}));
    const int near = pixels(gauges.at(2), theme::axisColour(2));
    QVERIFY(near > 0);
    QVERIFY(far > 2 * near);
    QCOMPARE(pixels(gauges.at(3), theme::axisColour(3)), 0);
}

void TestDevicePanel::aTriggerFillsFromTheLeft()
{
    Gauge *gauge = m_panel->findChildren<Gauge *>().at(2);
    m_panel->take(batch({u"joy_2"_s}, {60.0}));
    const int asStick = pixels(gauge, theme::axisColour(2));
    m_panel->setRest({0, 0, -100});
    QVERIFY(pixels(gauge, theme::axisColour(2)) > asStick);
}

void TestDevicePanel::aButtonLightsItsLamp()
{
    auto *lamps = m_panel->findChild<ButtonLamps *>();
    QCOMPARE(pixels(lamps, theme::good), 0);
    m_panel->take(batch({u"but_3"_s}, {true}));
    QVERIFY(pixels(lamps, theme::good) > 100);
    m_panel->take(batch({u"but_3"_s}, {false}));
    QCOMPARE(pixels(lamps, theme::good), 0);
}

void TestDevicePanel::aButtonBeyondTheCountGetsALamp()
{
    auto *lamps = m_panel->findChild<ButtonLamps *>();
    QCOMPARE(lamps->count(), 11);
    m_panel->take(batch({u"but_20"_s}, {true}));
    QCOMPARE(lamps->count(), 21);
    m_panel->setRow(u"Pad"_s, {}, 0);
    QCOMPARE(lamps->count(), 21);
}

void TestDevicePanel::theStateIsTold()
{
    QVERIFY(state().contains("learning its rest"_L1));
    m_panel->setRest({0, 0, -100});
    QVERIFY(state().contains("rest learned"_L1));
    m_panel->take(batch({u"joy_0"_s}, {1.0}));
    QVERIFY(state().contains("values flow"_L1));
    m_panel->setStatus(IComInterface::noCom);
    QVERIFY(state().contains("no link"_L1));
}

void TestDevicePanel::strangeKeysDoNothing()
{
    m_panel->take(batch({u"joy_8"_s, u"joy_-1"_s, u"but_x"_s, u""_s, u"hat"_s}, {1.0, 1.0, true}));
    QCOMPARE(m_panel->findChild<ButtonLamps *>()->count(), 11);
}

GAMEPAD_TEST_MAIN(TestDevicePanel)
#include "tst_devicepanel.moc"
