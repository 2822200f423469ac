// SPDX-License-Identifier: MIT
#include "cardrendering.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

namespace
{
const QColor accent(110, 200, 215);

// The body's colour in a row of pixels of the hinted card, which spans the rows 6 to 233.
QColor bodyAt(int y, bool hover = false)
{
    const double way = (y + 0.5 - 6) / (233 - 6);
    const QColor top = hover ? QColor(20, 32, 42) : QColor(18, 28, 37);
    const QColor bottom = hover ? QColor(11, 18, 24) : QColor(9, 14, 19);
    return over(top, bottom, way);
}

Rendering looking(bool hover)
{
    return {.state = hover ? QStyle::State_Enabled | QStyle::State_MouseOver
                           : QStyle::State(QStyle::State_Enabled)};
}

CardRow selectedRow(bool selected)
{
    CardRow row = textlessRow();
    row.insert("selected", selected);
    return row;
}
} // namespace

class TestCardFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theShadowLiesTwoPixelsBelow()
    {
        const QImage image = render(textlessRow());
        COMPARE_COLOUR(image, 150, 235, over(Qt::white, QColor(0, 0, 0, 40)));
        COMPARE_COLOUR(image, 60, 235, over(Qt::white, QColor(0, 0, 0, 40)));
        COMPARE_COLOUR(image, 150, 236, QColor(Qt::white));
        COMPARE_COLOUR(image, 150, 4, QColor(Qt::white));
        COMPARE_COLOUR(image, 4, 120, QColor(Qt::white));
        COMPARE_COLOUR(image, 295, 120, QColor(Qt::white));
    }

    void theShadowHasWiderCornersThanTheBody()
    {
        // The same corner as a card without its body would cast it.
        QImage expected = whitePage({300, 240});
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 40));
        painter.drawRoundedRect(QRect(6, 8, 288, 228), 13, 13);
        painter.end();

        const QImage image = render(textlessRow());
        for (int x = 6; x < 20; ++x)
            QCOMPARE(image.pixel(x, 235), expected.pixel(x, 235));
    }

    void theBodyDarkensDownwards_data()
    {
        QTest::addColumn<bool>("hover");
        QTest::addColumn<int>("y");
        for (const bool hover : {false, true})
            for (const int y : {20, 60, 120, 180, 225})
                QTest::addRow("%s, row %d", hover ? "hover" : "no hover", y) << hover << y;
    }

    void theBodyDarkensDownwards()
    {
        QFETCH(const bool, hover);
        QFETCH(const int, y);
        const QImage image = render(textlessRow(), looking(hover));
        COMPARE_COLOUR(image, 40, y, bodyAt(y, hover), 1);
        COMPARE_COLOUR(image, 230, y, bodyAt(y, hover), 1);
    }

    void theBodyHasRoundCorners()
    {
        const QImage image = render(textlessRow());
        COMPARE_COLOUR(image, 293, 6, QColor(Qt::white));
        COMPARE_COLOUR(image, 6, 233, over(Qt::white, QColor(0, 0, 0, 40)), 40);
        // A radius of 12: on the diagonal the edge is 12 * (1 - sqrt(1/2)) = 3.5 pixels inside.
        QVERIFY(image.pixelColor(293 - 2, 6 + 2).red() > 200);
        QVERIFY(image.pixelColor(293 - 5, 6 + 5).red() < 40);
    }

    void theOutlineIsStrongerOnHover()
    {
        // The line of one pixel stands on the body's edge, half outside of it.
        for (const bool hover : {false, true}) {
            const QImage image = render(textlessRow(), looking(hover));
            const QColor outline(48, 76, 94, hover ? 210 : 160);
            COMPARE_COLOUR(image, 5, 120, over(Qt::white, outline, 0.5), 3);
            COMPARE_COLOUR(image, 294, 120, over(Qt::white, outline, 0.5), 3);
            COMPARE_COLOUR(image, 150, 5, over(Qt::white, outline, 0.5), 3);
        }
    }

    void aHairlineRunsInsideTheOutline()
    {
        for (const bool hover : {false, true}) {
            const QImage image = render(textlessRow(), looking(hover));
            const QColor hairline(255, 255, 255, hover ? 18 : 12);
            const int lift = image.pixelColor(7, 120).red() - image.pixelColor(9, 120).red();
            QVERIFY2(lift >= (hover ? 7 : 4), qPrintable(QString::number(lift)));
            COMPARE_COLOUR(image, 7, 120, over(bodyAt(120, hover), hairline, 0.5), 2);
            COMPARE_COLOUR(image, 292, 120, over(bodyAt(120, hover), hairline, 0.5), 2);
            COMPARE_COLOUR(image, 150, 232, over(bodyAt(232, hover), hairline, 0.5), 2);
        }
    }

    void aLightRunsAlongTheUpperEdge()
    {
        for (const bool hover : {false, true}) {
            const QImage image = render(textlessRow(), looking(hover));
            // 1.2 pixels on the boundary of two rows: 0.6 of each; the hairline's half is below it.
            const QColor hairline = over(bodyAt(7, hover), QColor(255, 255, 255, hover ? 18 : 12), 0.5);
            const QColor light(110, 200, 215, hover ? 160 : 120);
            COMPARE_COLOUR(image, 150, 7, over(hairline, light, 0.6), 6);
            COMPARE_COLOUR(image, 150, 9, bodyAt(9, hover), 2);

            // It fades to both sides and ends 12 pixels before them.
            const auto green = [&](int x) { return image.pixelColor(x, 7).green(); };
            QVERIFY(green(150) > green(100) + 10);
            QVERIFY(green(100) > green(50) + 10);
            QVERIFY(green(50) > green(20) + 5);
            QVERIFY(green(150) > green(200) + 10);
            QVERIFY(green(200) > green(250) + 10);
            COMPARE_COLOUR(image, 75, 7, over(hairline, light, 0.6 * 2 * (75.5 - 6) / 287), 6);
        }
    }

    void aRingMarksSelectionAndFocus_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::addColumn<bool>("focus");
        QTest::addColumn<bool>("ring");
        QTest::newRow("neither") << false << false << false;
        QTest::newRow("selected") << true << false << true;
        QTest::newRow("focus") << false << true << true;
        QTest::newRow("both") << true << true << true;
    }

    void aRingMarksSelectionAndFocus()
    {
        QFETCH(const bool, selected);
        QFETCH(const bool, focus);
        QFETCH(const bool, ring);
        Rendering wish;
        if (focus)
            wish.state |= QStyle::State_HasFocus;
        const QImage image = render(selectedRow(selected), wish);
        const QColor marked = over(Qt::white, QColor(110, 200, 215, 140));
        COMPARE_COLOUR(image, 4, 120, ring ? marked : QColor(Qt::white));
        COMPARE_COLOUR(image, 295, 120, ring ? marked : QColor(Qt::white));
        COMPARE_COLOUR(image, 150, 4, ring ? marked : QColor(Qt::white));
        COMPARE_COLOUR(image, 3, 120, QColor(Qt::white));
        // The ring is the views' matter as well; the check mark is the selection's alone.
        QCOMPARE(similar(image.pixelColor(268, 199), accent), selected);
    }

    void theViewsOwnSelectionIsNotTheCards()
    {
        Rendering wish;
        wish.state |= QStyle::State_Selected | QStyle::State_Active;
        QCOMPARE(render(textlessRow(), wish), render(textlessRow()));
    }
};

GAMEPAD_TEST_MAIN(TestCardFrame)
#include "tst_cardframe.moc"
