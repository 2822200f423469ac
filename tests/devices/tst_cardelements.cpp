// SPDX-License-Identifier: MIT
#include "cardrendering.h"

#include "testmain.h"

#include <QtGui/QIcon>
#include <QtGui/QPixmapCache>

using namespace Qt::StringLiterals;

namespace
{
const QString axisIcon = u":/icones/ressources/gp_axis.png"_s;
const QString buttonIcon = u":/icones/ressources/gp_button.png"_s;
const QString warningIcon = u":/new_icons/Ressources/new_icons/warning.png"_s;
const QString closeIcon = u":/new_icons/Ressources/new_icons/close.png"_s;

// As `bodyAt` of the frame's test, without hover.
QColor bodyAt(int y)
{
    return over({18, 28, 37}, QColor(9, 14, 19), (y + 0.5 - 6) / (233 - 6));
}

CardRow with(const QByteArray &role, const QVariant &value)
{
    CardRow row = textlessRow();
    row.insert(role, value);
    return row;
}

// Stands for a resource of the host: the cards look there first.
void supply(const QString &path, int size, const QColor &colour)
{
    QPixmapCache::insert(u"res:%1:%2x%2"_s.arg(path, QString::number(size)),
                         plainPixmap({size, size}, colour));
}

// A picture of the host's that shows nothing: what is below it can be seen without its stand-in.
void supplyNothing(const QString &path, int size)
{
    supply(path, size, Qt::transparent);
}

void fillRounded(QImage *image, const QRect &area, const QColor &colour)
{
    QPainter painter(image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(area, 4, 4);
}

void writeCentred(QImage *image, const QRect &area, const QColor &colour, const QString &text)
{
    QPainter painter(image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colour);
    painter.drawText(area, Qt::AlignCenter, text);
}
} // namespace

class TestCardElements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        QPixmapCache::clear();
    }

    void theDotTellsTheConnection()
    {
        for (const bool connected : {false, true}) {
            const QImage image = render(with("isConnected", connected));
            const QColor colour = connected ? QColor(60, 200, 120) : QColor(200, 70, 70);
            for (const QPoint &point : {QPoint(274, 25), QPoint(269, 25), QPoint(279, 25), QPoint(274, 20)})
                COMPARE_COLOUR(image, point.x(), point.y(), colour);
            // Round, 14 wide, with a dark rim.
            COMPARE_COLOUR(image, 267, 18, bodyAt(18));
            COMPARE_COLOUR(image, 265, 25, bodyAt(25));
            COMPARE_COLOUR(image, 282, 25, bodyAt(25));
            const QColor rim = over(colour, QColor(10, 16, 22, 200), 0.5);
            COMPARE_COLOUR(image, 280, 25, rim, 25);
        }
        QCOMPARE(render(with("isConnected", QVariant())), render(with("isConnected", false)));
    }

    void aPictureFillsItsSquare_data()
    {
        QTest::addColumn<QVariant>("image");
        QTest::newRow("icon") << QVariant(QIcon(plainPixmap({96, 96}, Qt::red)));
        QTest::newRow("wide icon, stretched") << QVariant(QIcon(plainPixmap({96, 40}, Qt::red)));
        QTest::newRow("small icon, enlarged") << QVariant(QIcon(plainPixmap({16, 16}, Qt::red)));
        QTest::newRow("large icon, reduced") << QVariant(QIcon(plainPixmap({400, 300}, Qt::red)));
        const QString path = temporaryHome() + u"/image.png"_s;
        QVERIFY(plainPixmap({50, 80}, Qt::red).save(path));
        QTest::newRow("path, stretched") << QVariant(path);
    }

    void aPictureFillsItsSquare()
    {
        QFETCH(const QVariant, image);
        const QImage card = render(with("image", image));
        QVERIFY(isPlain(card, {101, 22, 96, 96}, Qt::red));
        QImage rest = card;
        QImage blank = render(textlessRow());
        for (QImage *page : {&rest, &blank})
            QPainter(page).fillRect(101, 22, 96, 96, Qt::black);
        QCOMPARE(rest, blank);
    }

    void noPictureLeavesTheBody_data()
    {
        QTest::addColumn<QVariant>("image");
        QTest::newRow("nothing") << QVariant();
        QTest::newRow("empty path") << QVariant(QString());
        QTest::newRow("a path of the host's that is not there")
            << QVariant(u":/new/prefix1/ressources/menette_id_1.png"_s);
        QTest::newRow("empty icon") << QVariant(QIcon());
        QTest::newRow("a number") << QVariant(5);
    }

    void noPictureLeavesTheBody()
    {
        QFETCH(const QVariant, image);
        QCOMPARE(render(with("image", image)), render(textlessRow()));
    }

    void inputsWithoutTheHostsIconsAreLettered()
    {
        const QStringList controls{u"Axes|axis://6"_s, u"Buttons|btn://11"_s};
        const QImage image = render(with("videoInterfaces", controls));
        COMPARE_COLOUR(image, 127, 198, QColor(60, 140, 220));
        COMPARE_COLOUR(image, 155, 198, QColor(60, 180, 140));
        COMPARE_COLOUR(image, 142, 213, QColor(60, 140, 220));
        // Their corners are round, and the plate shows there and around them.
        const QColor plate(18, 28, 36, 200);
        COMPARE_COLOUR(image, 125, 196, over(bodyAt(196), plate), 12);
        COMPARE_COLOUR(image, 123, 206, over(bodyAt(206), plate));
        COMPARE_COLOUR(image, 151, 206, over(bodyAt(206), plate));
        COMPARE_COLOUR(image, 135, 194, over(bodyAt(194), plate));
        // The plate's outline, half of it on each side of the edge.
        COMPARE_COLOUR(image, 121, 206, over(bodyAt(206), QColor(49, 76, 94, 140), 0.5));
        COMPARE_COLOUR(image, 120, 206, bodyAt(206));

        supplyNothing(axisIcon, 20);
        supplyNothing(buttonIcon, 20);
        QImage expected = render(with("videoInterfaces", controls));
        fillRounded(&expected, {125, 196, 20, 20}, {60, 140, 220});
        fillRounded(&expected, {153, 196, 20, 20}, {60, 180, 140});
        writeCentred(&expected, {125, 196, 20, 20}, {230, 240, 245}, u"A"_s);
        writeCentred(&expected, {153, 196, 20, 20}, {230, 240, 245}, u"B"_s);
        QCOMPARE(image, expected);
    }

    void inputsShowTheHostsIcons()
    {
        supply(axisIcon, 20, Qt::magenta);
        supply(buttonIcon, 20, Qt::cyan);
        const QStringList controls{u"Axes|axis://6"_s, u"Buttons|btn://11"_s};
        const QImage image = render(with("videoInterfaces", controls));
        QVERIFY(isPlain(image, {125, 196, 20, 20}, Qt::magenta));
        QVERIFY(isPlain(image, {153, 196, 20, 20}, Qt::cyan));
        COMPARE_COLOUR(image, 123, 206, over(bodyAt(206), QColor(18, 28, 36, 200)));
    }

    void aTextChipIsAPlateWithItsLabel()
    {
        const QImage blank = render(with("videoInterfaces", QStringList{u"|plate"_s}));
        // One chip: its rectangle starts 10 left of the row's middle.
        const QRect plate = QRect(139, 196, 20, 20).adjusted(-3, -3, 3, 3);
        const QColor fill(20, 32, 42, 210);
        for (const QPoint &point : {QPoint(138, 206), QPoint(149, 206), QPoint(160, 206), QPoint(149, 195)})
            COMPARE_COLOUR(blank, point.x(), point.y(), over(bodyAt(point.y()), fill));
        COMPARE_COLOUR(blank, 135, 206, over(bodyAt(206), QColor(110, 200, 215, 140), 0.5), 3);
        COMPARE_COLOUR(blank, 134, 206, bodyAt(206));

        QImage expected = blank;
        writeCentred(&expected, plate, {180, 210, 220}, u"TV"_s);
        QVERIFY(expected != blank);
        QCOMPARE(render(with("videoInterfaces", QStringList{u"TV|rtsp://x"_s})), expected);
    }

    void anEntryWithoutBarShowsAnEmptyPlate()
    {
        QCOMPARE(render(with("videoInterfaces", QStringList{u"plain"_s})),
                 render(with("videoInterfaces", QStringList{u"|plate"_s})));
    }

    void chipsThatDoNotFitAreCounted()
    {
        // A row of 64 pixels fits two; the count stands after them, outside the row's middle.
        const Rendering narrow{.item = {100, 240}, .image = {200, 240}};
        const CardRow two = with("videoInterfaces", QStringList{u"|a"_s, u"|b"_s});
        const CardRow three = with("videoInterfaces", QStringList{u"|a"_s, u"|b"_s, u"|c"_s});
        const QRect rest = QRect(49 - 24 + 56, 196, 20, 20).adjusted(-3, -3, 3, 3);

        const QImage without = render(two, narrow);
        const QImage image = render(three, narrow);
        const QRect before(0, 0, rest.left() - 2, 240);
        QCOMPARE(image.copy(before), without.copy(before));

        QImage expected = without;
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QColor(110, 200, 215, 140));
        painter.setBrush(QColor(20, 32, 42, 210));
        painter.drawRoundedRect(rest, 6, 6);
        painter.setPen(QColor(180, 210, 220));
        painter.drawText(rest, Qt::AlignCenter, u"+1"_s);
        painter.end();
        // The check mark's and the card's other parts do not reach here.
        QCOMPARE(image.copy(rest), expected.copy(rest));
        QVERIFY(image.copy(rest) != without.copy(rest));
    }

    void noControlsIsAWarning()
    {
        const QImage image = render(with("videoInterfaces", QStringList()));
        const QColor amber(220, 160, 0);
        for (const QPoint &point : {QPoint(149, 206), QPoint(139, 206), QPoint(158, 206), QPoint(149, 196),
                                    QPoint(149, 215), QPoint(141, 198)})
            COMPARE_COLOUR(image, point.x(), point.y(), amber);
        QVERIFY(!similar(image.pixelColor(139, 196), amber, 20));
        COMPARE_COLOUR(image, 138, 206, bodyAt(206));
        COMPARE_COLOUR(image, 159, 206, bodyAt(206));
        QCOMPARE(render(with("videoInterfaces", QVariant())), image);

        // The words, beside it.
        supplyNothing(warningIcon, 20);
        const QImage words = render(with("videoInterfaces", QStringList()));
        QImage expected = render(with("videoInterfaces", QStringList{u"|plate"_s}));
        const QRect plate = QRect(139, 196, 20, 20).adjusted(-4, -4, 4, 4);
        QPainter painter(&expected);
        painter.drawImage(plate.topLeft(), words, plate);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QColor(110, 130, 150));
        painter.drawText(QRect(164, 193, 282 - 164, 28), Qt::AlignLeft | Qt::AlignVCenter, u"No controls"_s);
        painter.end();
        QCOMPARE(words, expected);
    }

    void theWarningShowsTheHostsIcon()
    {
        supply(warningIcon, 20, Qt::magenta);
        const QImage image = render(with("videoInterfaces", QStringList()));
        QVERIFY(isPlain(image, {139, 196, 20, 20}, Qt::magenta));
    }

    void aRowTooNarrowForChipsIsAWarningToo()
    {
        const Rendering narrow{.item = {50, 240}, .image = {100, 240}};
        const QImage image = render(with("videoInterfaces", QStringList{u"Axes|axis://6"_s}), narrow);
        COMPARE_COLOUR(image, 24, 206, QColor(220, 160, 0));
    }

    void theCloseButtonStandsOnTheCorner()
    {
        const QImage image = render(textlessRow());
        const QColor disc(24, 35, 45, 200);
        COMPARE_COLOUR(image, 18, 27, over(bodyAt(27), disc));
        COMPARE_COLOUR(image, 27, 18, over(bodyAt(18), disc));
        // Around the disc, 24 wide, a line.
        COMPARE_COLOUR(image, 29, 18, over(over(bodyAt(18), disc), QColor(49, 76, 94, 160), 0.5), 6);
        COMPARE_COLOUR(image, 32, 18, bodyAt(18));

        supplyNothing(closeIcon, 24);
        QImage expected = render(textlessRow());
        writeCentred(&expected, {6, 6, 24, 24}, {230, 240, 245}, u"x"_s);
        QCOMPARE(image, expected);
    }

    void theCloseButtonShowsTheHostsIcon()
    {
        supply(closeIcon, 24, Qt::magenta);
        QVERIFY(isPlain(render(textlessRow()), {6, 6, 24, 24}, Qt::magenta));
    }

    void theCheckMarkTellsTheSelection()
    {
        QCOMPARE(render(with("selected", false)), render(textlessRow()));
        const QImage image = render(with("selected", true));
        const QColor disc(110, 200, 215);
        const QColor ink(15, 24, 32);
        for (const QPoint &point : {QPoint(268, 198), QPoint(258, 210), QPoint(277, 210), QPoint(268, 217)})
            COMPARE_COLOUR(image, point.x(), point.y(), disc);
        // Down to the corner (266, 212.7) and up to (274.3, 202.3).
        COMPARE_COLOUR(image, 264, 210, ink, 40);
        COMPARE_COLOUR(image, 265, 212, ink, 40);
        COMPARE_COLOUR(image, 270, 207, ink, 60);
        COMPARE_COLOUR(image, 273, 203, ink, 60);
        COMPARE_COLOUR(image, 255, 195, bodyAt(195));

        QImage expected = render(textlessRow(), {.state = QStyle::State_Enabled | QStyle::State_HasFocus});
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(15, 24, 32, 200), 1.0));
        painter.setBrush(disc);
        painter.drawEllipse(255, 195, 26, 26);
        QPen pen(ink, 2.0);
        pen.setCapStyle(Qt::RoundCap);
        painter.setPen(pen);
        painter.drawLine(QLineF(262.28, 207, 266, 212.72));
        painter.drawLine(QLineF(266, 212.72, 274.28, 202.28));
        painter.end();
        QCOMPARE(image, expected);
    }

    void iconsOfTheLinkAreNotDrawn()
    {
        const QImage before = render(with("selected", true));
        for (const char *name : {"gimbalConnected", "gimbalBusy", "gimbalDisconnected"})
            for (const int size : {14, 16, 20, 24, 26, 30})
                supply(u":/icones/ressources/%1.png"_s.arg(QLatin1StringView(name)), size, Qt::magenta);
        QCOMPARE(render(with("selected", true)), before);
    }
};

GAMEPAD_TEST_MAIN(TestCardElements)
#include "tst_cardelements.moc"
