// SPDX-License-Identifier: MIT
#include "cardlayout.h"

#include "testmain.h"

class TestCardLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void everyElementHasItsPlace_data()
    {
        QTest::addColumn<QRect>("item");
        QTest::addColumn<QRect>("card");
        QTest::addColumn<QRect>("closeButton");
        QTest::addColumn<QRect>("statusDot");
        QTest::addColumn<QRect>("picture");
        QTest::addColumn<QRect>("chipRow");
        QTest::addColumn<QRect>("textBlock");
        QTest::addColumn<QRect>("checkMark");
        QTest::addColumn<QRect>("linkZone");

        QTest::newRow("hinted size") << QRect(0, 0, 300, 240) << QRect(6, 6, 288, 228) << QRect(6, 6, 24, 24)
                                     << QRect(267, 18, 14, 14) << QRect(101, 22, 96, 96)
                                     << QRect(18, 193, 264, 28) << QRect(18, 127, 264, 60)
                                     << QRect(255, 195, 26, 26) << QRect(168, 20, 30, 30);
        QTest::newRow("second card") << QRect(300, 240, 300, 240) << QRect(306, 246, 288, 228)
                                     << QRect(306, 246, 24, 24) << QRect(567, 258, 14, 14)
                                     << QRect(401, 262, 96, 96) << QRect(318, 433, 264, 28)
                                     << QRect(318, 367, 264, 60) << QRect(555, 435, 26, 26)
                                     << QRect(468, 260, 30, 30);
        QTest::newRow("scrolled above the viewport")
            << QRect(0, -100, 300, 240) << QRect(6, -94, 288, 228) << QRect(6, -94, 24, 24)
            << QRect(267, -82, 14, 14) << QRect(101, -78, 96, 96) << QRect(18, 93, 264, 28)
            << QRect(18, 27, 264, 60) << QRect(255, 95, 26, 26) << QRect(168, -80, 30, 30);
        QTest::newRow("odd sizes") << QRect(1, 2, 401, 301) << QRect(7, 8, 389, 289) << QRect(7, 8, 24, 24)
                                   << QRect(369, 20, 14, 14) << QRect(153, 24, 96, 96)
                                   << QRect(19, 256, 365, 28) << QRect(19, 129, 365, 121)
                                   << QRect(357, 258, 26, 26) << QRect(220, 22, 30, 30);
        QTest::newRow("too low for texts")
            << QRect(0, 0, 300, 160) << QRect(6, 6, 288, 148) << QRect(6, 6, 24, 24) << QRect(267, 18, 14, 14)
            << QRect(101, 22, 96, 96) << QRect(18, 113, 264, 28) << QRect(18, 127, 264, 0)
            << QRect(255, 115, 26, 26) << QRect(168, 20, 30, 30);
    }

    void everyElementHasItsPlace()
    {
        QFETCH(const QRect, item);
        const CardLayout layout = layoutCard(item);
        QTEST(layout.card, "card");
        QTEST(layout.closeButton, "closeButton");
        QTEST(layout.statusDot, "statusDot");
        QTEST(layout.picture, "picture");
        QTEST(layout.chipRow, "chipRow");
        QTEST(layout.textBlock, "textBlock");
        QTEST(layout.checkMark, "checkMark");
        QTEST(layout.linkZone, "linkZone");
        QCOMPARE(closeButtonRect(item), layout.closeButton);
    }

    void cardsMoveAsAWhole()
    {
        const QPoint way(1234, -567);
        const CardLayout here = layoutCard({0, 0, 317, 251});
        CardLayout moved = layoutCard(QRect(0, 0, 317, 251).translated(way));
        for (QRect *rect : {&moved.card, &moved.closeButton, &moved.statusDot, &moved.picture, &moved.chipRow,
                            &moved.textBlock, &moved.checkMark, &moved.linkZone})
            rect->translate(-way);
        QVERIFY(moved == here);
    }

    void anEmptyItemLeavesNoTextBlock()
    {
        const CardLayout layout = layoutCard({});
        QVERIFY(layout.card.isEmpty());
        QCOMPARE(layout.textBlock.height(), 0);
        QVERIFY(layout.chipRow.width() < 1);
    }
};

GAMEPAD_TEST_MAIN(TestCardLayout)
#include "tst_cardlayout.moc"
