// SPDX-License-Identifier: MIT
#include "cardrendering.h"

#include "testmain.h"

#include <QtGui/QFontInfo>

using namespace Qt::StringLiterals;

namespace
{
const QRect block(18, 127, 264, 60);
constexpr int centred = Qt::AlignTop | Qt::AlignHCenter;

QFont titleFont(QFont font)
{
    font.setPointSizeF(font.pointSizeF() + 2.0);
    font.setWeight(QFont::Weight(700));
    return font;
}

QFont addressFont(QFont font)
{
    font.setFamily(u"Consolas"_s);
    font.setStyleHint(QFont::Monospace, QFont::PreferDefault);
    return font;
}

QRect subLine(const QFont &font)
{
    return {18, 127 + 4 + QFontMetrics(titleFont(font)).height(), 264, QFontMetrics(font).height()};
}

QRect addressLine(const QFont &font)
{
    const QRect above = subLine(font);
    return {18, above.top() + above.height() + 6, 264, QFontMetrics(addressFont(font)).height()};
}

// A card without texts, with one text written on it.
QImage written(const QRect &area, const QFont &font, const QColor &colour, const QString &text,
               const Rendering &wish = {})
{
    QImage image = render(textlessRow(), wish);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(area, centred, text);
    return image;
}

CardRow with(const QByteArray &role, const QVariant &value)
{
    CardRow row = textlessRow();
    row.insert(role, value);
    return row;
}

const QString longText = u"Une manette dont le nom ne tient vraiment pas sur une seule ligne de la carte"_s;
} // namespace

class TestCardTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theTitleIsTheName()
    {
        const QImage image = render(with("name", u"Manette é"_s));
        QVERIFY(image != render(textlessRow()));
        QCOMPARE(image, written(block, titleFont(QApplication::font()), {232, 240, 245}, u"Manette é"_s));
    }

    void aCardWithoutNameSaysSo()
    {
        const QImage expected =
            written(block, titleFont(QApplication::font()), {232, 240, 245}, u"<Sans nom>"_s);
        QCOMPARE(render(with("name", QString())), expected);
        QCOMPARE(render(with("name", QVariant())), expected);
    }

    void theTitleIsElidedOnTheRight()
    {
        const QFont font = titleFont(QApplication::font());
        const QString elided = QFontMetrics(font).elidedText(longText, Qt::ElideRight, 264);
        QVERIFY(elided.endsWith(u'…'));
        QCOMPARE(render(with("name", longText)), written(block, font, {232, 240, 245}, elided));
    }

    void theSubLineIsProductAndModel_data()
    {
        QTest::addColumn<QString>("product");
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("line");
        QTest::newRow("both") << u"Pad"_s << u"45e-28e"_s << u"Pad - 45e-28e"_s;
        QTest::newRow("no product") << QString() << u"45e-28e"_s << u"45e-28e"_s;
        QTest::newRow("no model") << u"Pad"_s << QString() << u"Pad - "_s;
        QTest::newRow("neither") << QString() << QString() << QString();
        QTest::newRow("a product like a place-holder") << u"%2 %1"_s << u"m"_s << u"%2 %1 - m"_s;
    }

    void theSubLineIsProductAndModel()
    {
        QFETCH(const QString, product);
        QFETCH(const QString, model);
        QFETCH(const QString, line);
        CardRow row = with("product", product);
        row.insert("modelString", model);
        const QFont font = QApplication::font();
        QCOMPARE(render(row), written(subLine(font), font, {138, 163, 182}, line));
    }

    void theSubLineIsElidedOnTheRight()
    {
        const QFont font = QApplication::font();
        const QString elided = QFontMetrics(font).elidedText(longText, Qt::ElideRight, 264);
        QVERIFY(elided != longText);
        QCOMPARE(render(with("modelString", longText)),
                 written(subLine(font), font, {138, 163, 182}, elided));
    }

    void theAddressIsTheLastLine()
    {
        const QFont font = QApplication::font();
        QCOMPARE(render(with("ip", u"VID:45e PID:28e"_s)),
                 written(addressLine(font), addressFont(font), {96, 120, 135}, u"VID:45e PID:28e"_s));
    }

    void theAddressIsElidedOnTheRight()
    {
        const QFont font = addressFont(QApplication::font());
        const QString elided = QFontMetrics(font).elidedText(longText, Qt::ElideRight, 264);
        QVERIFY(elided != longText);
        QCOMPARE(render(with("ip", longText)),
                 written(addressLine(QApplication::font()), font, {96, 120, 135}, elided));
    }

    void noAddressNoLine() { QCOMPARE(render(with("ip", QString())), render(textlessRow())); }

    void theThreeLinesFollowTheViewsFont()
    {
        Rendering wish;
        wish.font.setPointSizeF(7.0);
        wish.font.setItalic(true);
        CardRow row = with("name", u"Nom"_s);
        row.insert("product", u"Produit"_s);
        row.insert("modelString", u"m"_s);
        row.insert("ip", u"adresse"_s);

        QImage expected = render(textlessRow(), wish);
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setFont(titleFont(wish.font));
        painter.setPen(QColor(232, 240, 245));
        painter.drawText(block, centred, u"Nom"_s);
        painter.setFont(wish.font);
        painter.setPen(QColor(138, 163, 182));
        painter.drawText(subLine(wish.font), centred, u"Produit - m"_s);
        painter.setFont(addressFont(wish.font));
        painter.setPen(QColor(96, 120, 135));
        painter.drawText(addressLine(wish.font), centred, u"adresse"_s);
        painter.end();
        QCOMPARE(render(row, wish), expected);
    }

    void aFontInPixelsGivesATitleTwoPointsLarger()
    {
        Rendering wish;
        wish.font.setPixelSize(16);
        QFont font(wish.font);
        font.setPointSizeF(QFontInfo(wish.font).pointSizeF() + 2.0);
        font.setWeight(QFont::Bold);
        QVERIFY(QFontInfo(font).pixelSize() > 16);
        QCOMPARE(render(with("name", u"Manette"_s), wish),
                 written(block, font, {232, 240, 245}, u"Manette"_s, wish));
    }

    void ampersandsAreNoMnemonics()
    {
        QCOMPARE(render(with("name", u"A&B"_s)),
                 written(block, titleFont(QApplication::font()), {232, 240, 245}, u"A&B"_s));
        QVERIFY(render(with("name", u"A&B"_s)) != render(with("name", u"AB"_s)));
    }

    void textsStayOnTheirCard()
    {
        CardRow row = with("name", longText);
        row.insert("product", longText);
        row.insert("ip", longText);
        const QImage image = render(row);
        const QImage blank = render(textlessRow());
        for (const QRect &margin : {QRect(0, 0, 18, 240), QRect(282, 0, 18, 240), QRect(0, 0, 300, 127)})
            QCOMPARE(image.copy(margin), blank.copy(margin));
    }
};

GAMEPAD_TEST_MAIN(TestCardTexts)
#include "tst_cardtexts.moc"
