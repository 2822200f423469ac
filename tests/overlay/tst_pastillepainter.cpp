// SPDX-License-Identifier: MIT
#include "pastillepainter.h"
#include "pastillestage.h"

#include "testmain.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
QImage render(const PastilleLook &look, const QColor &page = Qt::black)
{
    QImage image(look.size, QImage::Format_ARGB32_Premultiplied);
    image.fill(page);
    QPainter painter(&image);
    paintPastille(painter, look);
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

PastilleLook untitled(TouchArea::State state, const QSize &size = QSize(56, 56))
{
    return {.size = size, .state = state, .title = QString()};
}

QColor overBlack(const QColor &colour)
{
    const auto part = [&](int channel) { return qRound(channel * colour.alpha() / 255.0); };
    return {part(colour.red()), part(colour.green()), part(colour.blue())};
}

/// The colour `way` (0 to 1) from the centre to the edge of a gradient, on black.
QColor onTheWay(const QColor &centre, const QColor &edge, double way)
{
    const QColor from = overBlack(centre);
    const QColor to = overBlack(edge);
    const auto part = [way](int a, int b) { return qRound(a + (b - a) * way); };
    return {part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue())};
}

bool similar(const QColor &one, const QColor &other)
{
    const auto near = [](int a, int b) { return qAbs(a - b) <= 3; };
    return near(one.red(), other.red()) && near(one.green(), other.green()) && near(one.blue(), other.blue());
}

QString difference(const QColor &found, const QColor &wanted)
{
    return u"%1 in place of %2"_s.arg(found.name(QColor::HexArgb), wanted.name(QColor::HexArgb));
}

/// All pixels that differ.
QRect changedArea(const QImage &one, const QImage &other)
{
    QRect area;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

/// The title alone, over a finished body.
QImage withText(QImage image, const QString &text)
{
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font = painter.font();
    font.setWeight(QFont::Weight(700));
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(image.rect(), Qt::AlignCenter, text);
    painter.end();
    return image;
}
} // namespace

#define COMPARE_SIMILAR(found, wanted)                                                                       \
    QVERIFY2(similar((found), (wanted)), qPrintable(difference((found), (wanted))))

class TestPastillePainter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void eachStateHasItsColours_data()
    {
        QTest::addColumn<TouchArea::State>("state");
        QTest::addColumn<QColor>("centre");
        QTest::addColumn<QColor>("edge");
        QTest::newRow("normal") << TouchArea::Normal << QColor(255, 255, 255, 230)
                                << QColor(0, 122, 255, 230);
        QTest::newRow("listening") << TouchArea::Listening << QColor(230, 255, 230, 235)
                                   << QColor(52, 199, 89, 235);
        QTest::newRow("active") << TouchArea::Active << QColor(235, 235, 235, 230)
                                << QColor(142, 142, 147, 240);
    }

    void eachStateHasItsColours()
    {
        QFETCH(const TouchArea::State, state);
        QFETCH(const QColor, centre);
        QFETCH(const QColor, edge);

        // Round: the body spans 2 to 102, its middle is at 52 and the gradient ends 50 pixels away.
        const QImage round = render(untitled(state, {104, 104}));
        for (const int offset : {0, 12, 25, 40, 47}) {
            const double way = std::hypot(offset + 0.5, 0.5) / 50.0;
            COMPARE_SIMILAR(round.pixelColor(52 + offset, 52), onTheWay(centre, edge, way));
            COMPARE_SIMILAR(round.pixelColor(52, 51 - offset), onTheWay(centre, edge, way));
        }

        // Oval: half of the longer side counts, so the gradient is cut above and below.
        const QImage oval = render(untitled(state, {104, 54}));
        for (const int offset : {0, 12, 21}) {
            const double way = std::hypot(offset + 0.5, 0.5) / 50.0;
            COMPARE_SIMILAR(oval.pixelColor(52, 27 + offset), onTheWay(centre, edge, way));
        }
        COMPARE_SIMILAR(oval.pixelColor(98, 27), onTheWay(centre, edge, 46.5 / 50));
    }

    void theOutlineDarkensALightPage()
    {
        // Outside the body's rectangle only the outer half of the outline shows.
        for (const auto &[state, alpha] :
             {std::pair(TouchArea::Normal, 80), std::pair(TouchArea::Listening, 80),
              std::pair(TouchArea::Active, 100)}) {
            const QImage image = render(untitled(state, {104, 104}), Qt::white);
            const int grey = qRound(255 - 255 * (alpha / 255.0) / 2);
            COMPARE_SIMILAR(image.pixelColor(52, 1), QColor(grey, grey, grey));
            COMPARE_SIMILAR(image.pixelColor(1, 52), QColor(grey, grey, grey));
            QCOMPARE(image.pixelColor(52, 0), QColor(Qt::white));
            QCOMPARE(image.pixelColor(0, 52), QColor(Qt::white));
        }
    }

    void theBodyIsAnEllipse()
    {
        for (const QSize size : {QSize(56, 56), QSize(120, 60), QSize(40, 90)}) {
            const QImage image = render(untitled(TouchArea::Normal, size), Qt::transparent);
            const double a = size.width() / 2.0 - 2;
            const double b = size.height() / 2.0 - 2;
            for (int y = 0; y < size.height(); ++y) {
                for (int x = 0; x < size.width(); ++x) {
                    const double dx = x + 0.5 - size.width() / 2.0;
                    const double dy = y + 0.5 - size.height() / 2.0;
                    const auto within = [&](double grown) {
                        return std::hypot(dx / (a + grown), dy / (b + grown)) <= 1.0;
                    };
                    // Antialiasing and half the outline soften a band of 3 pixels.
                    if (within(-1.5)) {
                        QVERIFY(image.pixelColor(x, y).alpha() >= 228);
                    } else if (!within(1.5)) {
                        QCOMPARE(image.pixelColor(x, y).alpha(), 0);
                    }
                }
            }
        }
    }

    void aBodyLooksTheSameOnEveryPage()
    {
        // What was kept from the first painting serves all later ones, and none but those of its looks.
        const QImage first = render(untitled(TouchArea::Normal, {60, 60}));
        const QImage other = render(untitled(TouchArea::Active, {60, 60}));
        QCOMPARE(render(untitled(TouchArea::Normal, {60, 60})), first);
        QVERIFY(other != first);
        QVERIFY(render(untitled(TouchArea::Normal, {60, 60}), Qt::white) != first);

        // Painted at a scale of 2, the outline fills whole pixels and is not smeared over two halves.
        QImage scaled(120, 120, QImage::Format_ARGB32_Premultiplied);
        scaled.fill(Qt::transparent);
        QPainter painter(&scaled);
        painter.scale(2, 2);
        paintPastille(painter, untitled(TouchArea::Normal, {60, 60}));
        painter.end();
        QCOMPARE(scaled.pixelColor(60, 2).alpha(), 0);
        QVERIFY(qAbs(scaled.pixelColor(60, 3).alpha() - 80) <= 3);
        QVERIFY(scaled.pixelColor(60, 6).alpha() > 225);
    }

    void aPastilleLargerThanAnyScreenIsPainted()
    {
        const PastilleLook look = untitled(TouchArea::Listening, {16777214, 16777214});
        QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.translate(-8388607 + 20, -8388607 + 20);
        paintPastille(painter, look);
        painter.end();
        COMPARE_SIMILAR(image.pixelColor(20, 20), overBlack(QColor(230, 255, 230, 235)));
    }

    void aStateOutsideTheEnumerationLooksNormal()
    {
        QCOMPARE(render(untitled(static_cast<TouchArea::State>(99))), render(untitled(TouchArea::Normal)));
        TouchArea pastille;
        QVERIFY(pastille.setProperty("state", 99));
        QCOMPARE(static_cast<int>(pastille.state()), 99);
        pastille.setActive(false);
        QCOMPARE(pastille.state(), TouchArea::Normal);
    }

    void theTitleIsBoldWhiteAndCentred()
    {
        for (const auto state : {TouchArea::Normal, TouchArea::Listening, TouchArea::Active}) {
            PastilleLook look = untitled(state, {120, 60});
            const QImage bare = render(look);
            look.title = u"joy_3"_s;
            const QImage titled = render(look);
            QCOMPARE(titled, withText(bare, u"joy_3"_s));

            const QRect text = changedArea(bare, titled);
            QVERIFY(qAbs(text.center().x() - 60) <= 2);
            QVERIFY(qAbs(text.center().y() - 30) <= 5);
        }
    }

    void aLongTitleIsElidedOnTheRight()
    {
        PastilleLook look = untitled(TouchArea::Normal);
        const QImage bare = render(look);
        QFont bold = QApplication::font();
        bold.setWeight(QFont::Weight(700));
        look.title = u"Gâchette droite, moitié haute"_s;
        const QString shown = QFontMetrics(bold).elidedText(look.title, Qt::ElideRight, 56 - 8);
        QVERIFY(shown.startsWith(u'G'));
        QVERIFY(shown.endsWith(u'…'));
        QCOMPARE(render(look), withText(bare, shown));
        QVERIFY(changedArea(bare, render(look)).width() <= 48);

        // At every width, up to where the title has just enough room.
        const int whole = QFontMetrics(bold).horizontalAdvance(look.title) + 8;
        for (int width = 20; width <= whole + 2; ++width) {
            look.size = QSize(width, 40);
            const QString part = QFontMetrics(bold).elidedText(look.title, Qt::ElideRight, width - 8);
            QCOMPARE(part == look.title, width >= whole);
            QCOMPARE(render(look), withText(render(untitled(TouchArea::Normal, look.size)), part));
        }
    }

    void theTitlesWeightIs700()
    {
        QImage image(56, 56, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        QFont thin = painter.font();
        thin.setWeight(QFont::Light);
        thin.setPointSize(15);
        painter.setFont(thin);
        paintPastille(painter, untitled(TouchArea::Normal));
        QCOMPARE(painter.font().weight(), 700);
        QCOMPARE(painter.font().pointSize(), 15);
    }

    void anEmptyOrHugeTitleIsHarmless()
    {
        PastilleLook look = untitled(TouchArea::Normal);
        const QImage bare = render(look);
        look.title = QString(200000, u'W');
        QVERIFY(changedArea(bare, render(look)).width() <= 48);
        look.size = QSize(1, 1);
        QCOMPARE(render(look).size(), QSize(1, 1));
    }

    void theHandleIsWhite_data()
    {
        QTest::addColumn<bool>("hovered");
        QTest::addColumn<int>("alpha");
        QTest::newRow("at rest") << false << 180;
        QTest::newRow("under the pointer") << true << 220;
    }

    void theHandleIsWhite()
    {
        QFETCH(const bool, hovered);
        QFETCH(const int, alpha);
        PastilleLook look = untitled(TouchArea::Normal);
        const QImage bare = render(look);
        look.hasHandle = true;
        look.hovered = hovered;
        const QImage handled = render(look);
        QCOMPARE(changedArea(bare, handled), QRect(44, 44, 10, 10));
        // This corner of the square lies on the page, outside the round body.
        QCOMPARE(handled.pixelColor(53, 53), QColor(alpha, alpha, alpha));
        QCOMPARE(handled.pixelColor(53, 44).alpha(), 255);
        QVERIFY(handled.pixelColor(44, 44).red() > bare.pixelColor(44, 44).red());
    }

    void withoutAHandleThePointerChangesNothing()
    {
        PastilleLook look = untitled(TouchArea::Normal);
        const QImage bare = render(look);
        look.hovered = true;
        QCOMPARE(render(look), bare);
    }

    void theWidgetShowsWhatItIs()
    {
        PastilleStage stage;
        TouchArea *pastille = stage.pastille();
        pastille->setTitle(u"L2"_s);
        const auto grabbed = [&] {
            return pastille->grab().toImage().convertToFormat(QImage::Format_ARGB32);
        };
        for (const bool edit : {true, false}) {
            for (const auto state : {TouchArea::Normal, TouchArea::Listening, TouchArea::Active}) {
                pastille->setEditMode(edit);
                pastille->setState(state);
                const PastilleLook look{pastille->size(), state, u"L2"_s, edit, false};
                QCOMPARE(grabbed(), render(look, Qt::transparent));
            }
        }
    }

    void theWidgetBrightensItsHandleUnderThePointer()
    {
        PastilleStage stage;
        const auto alpha = [&] { return stage.pastille()->grab().toImage().pixelColor(53, 53).alpha(); };
        stage.moveTo(QPoint(5, 5));
        QCOMPARE(alpha(), 180);
        stage.moveTo(QPoint(120, 100));
        QTRY_COMPARE(alpha(), 220);
        stage.moveTo(QPoint(5, 5));
        QTRY_COMPARE(alpha(), 180);
    }

    void theWidgetRepaintsWhenItChanges_data()
    {
        using Change = std::function<void(TouchArea *)>;
        QTest::addColumn<Change>("change");
        QTest::newRow("title") << Change([](TouchArea *p) { p->setTitle(u"X"_s); });
        QTest::newRow("state") << Change([](TouchArea *p) { p->setActive(true); });
        QTest::newRow("edit mode") << Change([](TouchArea *p) { p->setEditMode(false); });
        QTest::newRow("shape") << Change([](TouchArea *p) { p->setFreeAspect(true); });
        QTest::newRow("the pointer comes") << Change([](TouchArea *p) {
            QEnterEvent event({5, 5}, {5, 5}, {5, 5});
            QApplication::sendEvent(p, &event);
        });
        QTest::newRow("the pointer leaves") << Change([](TouchArea *p) {
            QEvent event(QEvent::Leave);
            QApplication::sendEvent(p, &event);
        });
    }

    void theWidgetRepaintsWhenItChanges()
    {
        QFETCH(const std::function<void(TouchArea *)>, change);
        class Watch : public QObject
        {
        public:
            int paints = 0;
            bool eventFilter(QObject *, QEvent *event) override
            {
                paints += event->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
        } watch;
        PastilleStage stage;
        QVERIFY(stage.exposed());
        stage.pastille()->installEventFilter(&watch);
        stage.pastille()->update();
        QTRY_VERIFY(watch.paints > 0);
        watch.paints = 0;
        change(stage.pastille());
        QTRY_VERIFY(watch.paints > 0);
    }
};

GAMEPAD_TEST_MAIN(TestPastillePainter)
#include "tst_pastillepainter.moc"
