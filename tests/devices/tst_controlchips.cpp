// SPDX-License-Identifier: MIT
#include "controlchips.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

namespace
{
const QRect hintedRow(18, 193, 264, 28);

// `count` text chips.
QStringList entries(int count)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list.append(u"L%1|u%1"_s.arg(i));
    return list;
}
} // namespace

class TestControlChips : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void twoChipsStandCentred()
    {
        const auto chips = layoutChips(hintedRow, {u"Axes|axis://6"_s, u"Buttons|btn://11"_s});
        QCOMPARE(chips.size(), 2);
        QVERIFY((chips.at(0) ==
                 ControlChip{
                     .rect = QRect(125, 196, 20, 20), .label = u"Axes"_s, .url = u"axis://6"_s, .kind = 0}));
        QVERIFY((chips.at(1) == ControlChip{.rect = QRect(153, 196, 20, 20),
                                            .label = u"Buttons"_s,
                                            .url = u"btn://11"_s,
                                            .kind = 1}));
    }

    void asManyChipsAsFit_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("offered");
        QTest::addColumn<int>("shown");
        QTest::addColumn<QString>("rest");

        QTest::newRow("nothing offered") << 264 << 0 << 0 << QString();
        QTest::newRow("one") << 264 << 1 << 1 << QString();
        QTest::newRow("all nine that fit") << 264 << 9 << 9 << QString();
        QTest::newRow("one too many") << 264 << 10 << 9 << u"+1"_s;
        QTest::newRow("many too many") << 264 << 1009 << 9 << u"+1000"_s;
        QTest::newRow("three in a row for two") << 64 << 3 << 2 << u"+1"_s;
        QTest::newRow("just two") << 48 << 3 << 2 << u"+1"_s;
        QTest::newRow("just not two") << 47 << 3 << 1 << u"+2"_s;
        QTest::newRow("just one") << 20 << 3 << 1 << u"+2"_s;
        QTest::newRow("no room for one") << 19 << 3 << 0 << QString();
        QTest::newRow("a row of one pixel") << 1 << 3 << 0 << QString();
        QTest::newRow("an empty row") << 0 << 3 << 0 << QString();
        QTest::newRow("a row turned inside out") << -40 << 3 << 0 << QString();
    }

    void asManyChipsAsFit()
    {
        QFETCH(const int, width);
        QFETCH(const int, offered);
        QFETCH(const int, shown);
        QFETCH(const QString, rest);

        const QRect row(100, 50, width, 28);
        const auto chips = layoutChips(row, entries(offered));
        QCOMPARE(chips.size(), shown + (rest.isEmpty() ? 0 : 1));

        const int left = row.center().x() - (shown * 28 - 8) / 2;
        for (int i = 0; i < chips.size(); ++i)
            QCOMPARE(chips.at(i).rect, QRect(left + i * 28, 63 - 10, 20, 20));
        for (int i = 0; i < shown; ++i)
            QCOMPARE(chips.at(i).label, u"L%1"_s.arg(i));
        if (!rest.isEmpty()) {
            QCOMPARE(chips.last().label, rest);
            QCOMPARE(chips.last().url, rest);
            QCOMPARE(chips.last().kind, 2);
        }
    }

    void anEntryIsLabelAndUrl_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("url");
        QTest::addColumn<int>("kind");

        QTest::newRow("axis") << u"Axes|axis://6"_s << u"Axes"_s << u"axis://6"_s << 0;
        QTest::newRow("button") << u"Buttons|btn://11"_s << u"Buttons"_s << u"btn://11"_s << 1;
        QTest::newRow("case is ignored") << u"Axes|AXIS://6"_s << u"Axes"_s << u"AXIS://6"_s << 0;
        QTest::newRow("case is ignored, button") << u"B|Btn://1"_s << u"B"_s << u"Btn://1"_s << 1;
        QTest::newRow("other url") << u"Video|rtsp://x"_s << u"Video"_s << u"rtsp://x"_s << 2;
        QTest::newRow("axis not in front") << u"V|xaxis://1"_s << u"V"_s << u"xaxis://1"_s << 2;
        QTest::newRow("scheme cut short") << u"V|axis:/1"_s << u"V"_s << u"axis:/1"_s << 2;
        QTest::newRow("no bar") << u"plain"_s << QString() << u"plain"_s << 2;
        QTest::newRow("no bar, axis") << u"axis://6"_s << QString() << u"axis://6"_s << 0;
        QTest::newRow("bar in front") << u"|btn://1"_s << QString() << u"|btn://1"_s << 2;
        QTest::newRow("two bars") << u"a|b|c"_s << u"a"_s << u"b|c"_s << 2;
        QTest::newRow("nothing after the bar") << u"a|"_s << u"a"_s << QString() << 2;
        QTest::newRow("empty") << QString() << QString() << QString() << 2;
    }

    void anEntryIsLabelAndUrl()
    {
        QFETCH(const QString, entry);
        const auto chips = layoutChips(hintedRow, {entry});
        QCOMPARE(chips.size(), 1);
        QTEST(chips.first().label, "label");
        QTEST(chips.first().url, "url");
        QTEST(chips.first().kind, "kind");
    }

    void theChipUnderAPointIsTheFirst()
    {
        const QList<ControlChip> chips{
            {.rect = QRect(10, 10, 20, 20), .label = u"a"_s, .url = {}, .kind = 2},
            {.rect = QRect(20, 10, 20, 20), .label = u"b"_s, .url = {}, .kind = 2}};
        QCOMPARE(chipAt(chips, {25, 15}), &chips.at(0));
        QCOMPARE(chipAt(chips, {39, 29}), &chips.at(1));
        QCOMPARE(chipAt(chips, {10, 10}), &chips.at(0));
        QCOMPARE(chipAt(chips, {40, 29}), nullptr);
        QCOMPARE(chipAt(chips, {9, 10}), nullptr);
        QCOMPARE(chipAt({}, {0, 0}), nullptr);
    }

    void theToolTipNumbersInputsAndNamesTexts_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("text");

        QTest::newRow("axes as the device list gives them") << u"Axes|axis://6"_s << u"Axes: 0"_s;
        QTest::newRow("buttons") << u"Buttons|btn://11"_s << u"Buttons: 0"_s;
        QTest::newRow("a third section") << u"Axes|axis://x:7"_s << u"Axes: 7"_s;
        QTest::newRow("a third section of several") << u"Axes|axis://x:-12:9"_s << u"Axes: -12"_s;
        QTest::newRow("no number") << u"Axes|axis://x:seven"_s << u"Axes: 0"_s;
        QTest::newRow("base ten alone") << u"Axes|axis://x:0x10"_s << u"Axes: 0"_s;
        QTest::newRow("a number beyond int") << u"Axes|axis://x:99999999999"_s << u"Axes: 0"_s;
        QTest::newRow("no label") << u"btn://1:2"_s << u": 2"_s;
        QTest::newRow("a label like a place-holder") << u"%2|axis://x:3"_s << u"%2: 3"_s;
        QTest::newRow("text") << u"Video|rtsp://x:8:9"_s << u"Video"_s;
        QTest::newRow("text without label") << u"plain"_s << QString();
    }

    void theToolTipNumbersInputsAndNamesTexts()
    {
        QFETCH(const QString, entry);
        QTEST(chipToolTip(layoutChips(hintedRow, {entry}).first()), "text");
    }

    void theToolTipOfTheRestIsItsCount()
    {
        const auto chips = layoutChips(hintedRow, entries(12));
        QCOMPARE(chipToolTip(chips.last()), u"+3"_s);
    }
};

GAMEPAD_TEST_MAIN(TestControlChips)
#include "tst_controlchips.moc"
