// SPDX-License-Identifier: MIT
#include "inputkeys.h"
#include "scriptedjoystick.h"
#include "sfmlslot.h"
#include "testmain.h"

#include <limits>

using namespace Qt::StringLiterals;

class TestSfmlSlot : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
    }

    void aSlotOutsideTheEightNeverReachesSfml_data()
    {
        QTest::addColumn<int>("slot");
        QTest::newRow("placeholder") << -1;
        QTest::newRow("ninth") << 8;
        QTest::newRow("99") << 99;
        QTest::newRow("largest") << std::numeric_limits<int>::max();
        QTest::newRow("smallest") << std::numeric_limits<int>::min();
    }
    void aSlotOutsideTheEightNeverReachesSfml()
    {
        QFETCH(const int, slot);
        const SfmlSlot door(slot);
        QVERIFY(!door.isConnected());
        QVERIFY(!door.hasAxis(0));
        QCOMPARE(door.axisPosition(0), 0.0);
        QVERIFY(!door.isButtonPressed(0));
        QCOMPARE(door.reportedButtons(), 0U);
        const auto nobody = door.identification();
        QVERIFY(nobody.name.isEmpty());
        QCOMPARE(nobody.vendorId, 0U);
        QCOMPARE(nobody.productId, 0U);
        QCOMPARE(scripted::calls().outsideSlots, 0);
        QCOMPARE(scripted::calls().isConnected, 0);
        QCOMPARE(scripted::calls().getIdentification, 0);
        QCOMPARE(scripted::calls().getButtonCount, 0);
    }

    void axesAndButtonsThatSfmlDoesNotHaveAreNotThere()
    {
        scripted::plug(0, scripted::restingPad());
        const SfmlSlot door(0);
        for (const int axis : {-1, 8, 1000}) {
            QVERIFY(!door.hasAxis(axis));
            QCOMPARE(door.axisPosition(axis), 0.0);
        }
        for (const int button : {-1, 32, 1000})
            QVERIFY(!door.isButtonPressed(button));
        QCOMPARE(scripted::calls().hasAxis, 0);
        QCOMPARE(scripted::calls().getAxisPosition, 0);
        QCOMPARE(scripted::calls().isButtonPressed, 0);
    }

    void anExistingSlotReadsAsSfmlDoes()
    {
        scripted::Pad pad;
        pad.name = "Manette été";
        pad.vendorId = 0x046d;
        pad.productId = 0xc21d;
        pad.axes[3] = 12.5F;
        pad.buttons.set(31);
        pad.buttonCount = 40;
        scripted::plug(7, pad);
        const SfmlSlot door(7);
        QVERIFY(door.isConnected());
        QVERIFY(door.hasAxis(3));
        QVERIFY(!door.hasAxis(2));
        QCOMPARE(door.axisPosition(3), 12.5);
        QVERIFY(door.isButtonPressed(31));
        QVERIFY(!door.isButtonPressed(30));
        QCOMPARE(door.reportedButtons(), 40U);
        QCOMPARE(textOf(door.identification().name), u"Manette été"_s);
        QCOMPARE(door.identification().vendorId, 0x046dU);
        QCOMPARE(door.identification().productId, 0xc21dU);
    }

    void aReadingThatIsNotFiniteIsZero_data()
    {
        QTest::addColumn<float>("reading");
        QTest::newRow("NaN") << std::numeric_limits<float>::quiet_NaN();
        QTest::newRow("infinite") << std::numeric_limits<float>::infinity();
        QTest::newRow("negative infinite") << -std::numeric_limits<float>::infinity();
    }
    void aReadingThatIsNotFiniteIsZero()
    {
        QFETCH(const float, reading);
        scripted::plug(0, scripted::restingPad());
        scripted::pad(0).axes[0] = reading;
        QCOMPARE(SfmlSlot(0).axisPosition(0), 0.0);
    }

    void namesCompareWithoutConversion_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("empty") << QString();
        QTest::newRow("latin") << u"Pad"_s;
        QTest::newRow("accents") << u"Manette à été"_s;
        QTest::newRow("beyond 16 bits") << u"🎮 pad"_s;
    }
    void namesCompareWithoutConversion()
    {
        QFETCH(const QString, name);
        const std::u32string codePoints = name.toStdU32String();
        const sf::String text(codePoints);
        QCOMPARE(textOf(text), name);
        QVERIFY(readsAs(text, name));
        QVERIFY(!readsAs(text, name + u'x'));
        QVERIFY(!readsAs(text + "x", name));
        QVERIFY(name.isEmpty() || !readsAs(text, QStringView(name).chopped(1)));
    }

    // SFML's own text may hold what is no character.
    void aNameWithNoncharactersIsTakenAsItConverts()
    {
        const sf::String text(std::u32string{U'a', char32_t(0xd800), char32_t(0x110000), U'b'});
        QCOMPARE(textOf(text), u"ab"_s);
    }

    void inputKeysAreNumbered_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("axis");
        QTest::addColumn<QString>("button");
        QTest::newRow("first") << 0 << u"joy_0"_s << u"but_0"_s;
        QTest::newRow("last axis") << 7 << u"joy_7"_s << u"but_7"_s;
        QTest::newRow("last button") << 31 << u"joy_31"_s << u"but_31"_s;
        QTest::newRow("beyond") << 32 << u"joy_32"_s << u"but_32"_s;
        QTest::newRow("negative") << -1 << u"joy_-1"_s << u"but_-1"_s;
        QTest::newRow("largest") << std::numeric_limits<int>::max() << u"joy_2147483647"_s
                                 << u"but_2147483647"_s;
    }
    void inputKeysAreNumbered()
    {
        QFETCH(const int, index);
        QTEST(axisKey(index), "axis");
        QTEST(buttonKey(index), "button");
    }
};

GAMEPAD_TEST_MAIN(TestSfmlSlot)
#include "tst_sfmlslot.moc"
