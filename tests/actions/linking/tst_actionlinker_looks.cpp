// SPDX-License-Identifier: MIT
// What the tab looks like on a screen, state by state. The pictures are kept for people to look at.
#include "linkertest.h"

#include "shellsheet.h"

#include <QtCore/QDir>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtWidgets/QScrollBar>

using namespace Qt::StringLiterals;

namespace
{
constexpr QColor armedGround(0x2F, 0x7A, 0x43);
constexpr QColor armedBorder(0x3F, 0xAE, 0x49);
constexpr QColor border(0x2A, 0x44, 0x56);
constexpr QColor padGround(90, 110, 125);
constexpr QColor text(0xE8, 0xF0, 0xF5);

qsizetype pixelsOf(const QImage &image, const QColor &colour)
{
    qsizetype count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == colour.rgb() ? 1 : 0;
    }
    return count;
}

/// A picture in the place of a gamepad's.
QString somePicture()
{
    const QString path = temporaryHome() + u"/pad.png"_s;
    QImage image(400, 260, QImage::Format_RGB32);
    image.fill(QColor(40, 60, 75));
    QPainter painter(&image);
    painter.setPen(Qt::NoPen);
    const QBrush body(padGround);
    painter.setBrush(body);
    painter.drawRoundedRect(QRect(40, 50, 320, 160), 70, 70);
    painter.end();
    return image.save(path) ? path : QString();
}
} // namespace

class TestActionLinkerLooks : public LinkerTest
{
    Q_OBJECT

    /// Waits until the screen shows at least so many pixels of the colour, and keeps the picture.
    QImage photograph(const QString &name, const QColor &colour, qsizetype atLeast)
    {
        QTest::mouseMove(stage().window().windowHandle(), QPoint(1, 1));
        QImage image;
        const bool shown = QTest::qWaitFor([&] {
            image = grab();
            return pixelsOf(image, colour) >= atLeast;
        });
        if (!shown)
            qWarning("%s: %lld pixels", qPrintable(name), static_cast<long long>(pixelsOf(image, colour)));
        const QString folder = QStringLiteral(GAMEPAD_GALLERY);
        if (!QDir().mkpath(folder) || !image.save(folder + u"/linker-"_s + name + u".png"_s))
            qWarning("the picture could not be kept");
        return image;
    }

    QImage grab()
    {
        const QWidget &window = stage().window();
        const QRect place = window.geometry();
        return window.screen()
            ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }

private Q_SLOTS:
    void init()
    {
        LinkerTest::init();
        // Its surroundings in the configuration window.
        stage().window().setStyleSheet(shellSheet());
        auto *backdrop = new QFrame(&stage().window());
        backdrop->setObjectName(u"vlxBackdrop"_s);
        backdrop->resize(900, 600);
        backdrop->lower();
        backdrop->show();
        stage().plug(u"Pad"_s);
        stage().linker().loadGamepadSnapshot(oneProfile, {}, u"Pad"_s,
                                             overlayOf({u"but_3"_s, u"joy_1"_s, u"but_0"_s}), somePicture());
    }

    void withoutActions()
    {
        const QImage image = photograph(u"empty"_s, border, 300);
        QCOMPARE(pixelsOf(image, armedGround), 0);
    }

    void withActions()
    {
        stage()->setExternalServices(someActions());
        stage().overlay().applyActionToTitle(u"A"_s, u"but_3"_s);
        const QImage image = photograph(u"items"_s, text, 50);
        QCOMPARE(pixelsOf(image, armedGround), 0);
    }

    void withAnArmedAction()
    {
        stage()->setExternalServices(someActions());
        const int height = stage().list().height();
        stage().clickAction(u"B"_s);
        const QImage image = photograph(u"armed"_s, armedGround, 1000);
        QCOMPARE(stage().list().height(), height);
        QVERIFY(pixelsOf(image, armedBorder) > 100);
    }

    void withoutTheGamepad()
    {
        stage()->setExternalServices(someActions());
        stage().unplug();
        const QImage image = photograph(u"away"_s, padGround, 150'000);
        QCOMPARE(pixelsOf(image, armedGround), 0);
    }

    void withLongNames()
    {
        QJsonArray actions;
        actions.append(
            QJsonObject{{u"name"_s, u"Avancer lentement puis tourner vers la gauche jusqu'au repère"_s}});
        actions.append(QJsonObject{{u"name"_s, QString(80, u'W')}});
        for (int i = 0; i < 30; ++i)
            actions.append(QJsonObject{{u"name"_s, u"Action %1"_s.arg(i)}});
        stage()->setExternalServices(actions);
        const int width = stage().panel().width();
        stage().clickAction(QString(80, u'W'));
        photograph(u"long"_s, armedGround, 1000);
        // Neither the list nor the hint takes the picture's room.
        QCOMPARE(stage().panel().width(), width);
        QVERIFY(!stage().list().horizontalScrollBar()->isVisible());
    }

    void inASmallWindow()
    {
        stage()->setExternalServices(someActions());
        stage().window().resize(514, 405);
        stage()->setGeometry(0, 0, 514, 405);
        stage().clickAction(u"C"_s);
        photograph(u"small"_s, armedGround, 1000);
        // The picture keeps the larger part.
        QVERIFY(stage().overlay().width() >= stage().panel().width());
    }
};

GAMEPAD_TEST_MAIN(TestActionLinkerLooks)
#include "tst_actionlinker_looks.moc"
