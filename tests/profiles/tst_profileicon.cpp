// SPDX-License-Identifier: MIT
// How a profile looks in the list, by pixel.
#include "profileicon.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtGui/QPixmapCache>

using namespace Qt::StringLiterals;

namespace
{
constexpr QSize iconSize(200, 140);
const QColor green(0, 180, 0);

QString pictureOf(const QSize &size, const QColor &color)
{
    const QString path = temporaryHome() + u"/%1x%2.png"_s.arg(size.width()).arg(size.height());
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(color);
    return picture.save(path) ? path : QString();
}

QImage painted(const QString &path, bool live)
{
    return makeItemIcon(path, iconSize, live)
        .pixmap(iconSize)
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

/// How many pixels of an icon have a colour.
int count(const QImage &icon, const QColor &color)
{
    int found = 0;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x)
            found += icon.pixelColor(x, y) == color ? 1 : 0;
    }
    return found;
}
} // namespace

class TestProfileIcon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theIconHasTheSizeAskedFor()
    {
        const QIcon icon = makeItemIcon(pictureOf(QSize(10, 10), Qt::red), iconSize, false);
        QCOMPARE(icon.availableSizes(), QList<QSize>{iconSize});
        QCOMPARE(makeItemIcon({}, QSize(30, 20), false).availableSizes(), QList<QSize>{QSize(30, 20)});
    }

    void theWholePictureIsShownInTheMiddleOfWhite_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("place");
        QTest::newRow("wide, small") << QSize(50, 10) << QRect(0, 50, 200, 40);
        QTest::newRow("wide, large") << QSize(1000, 200) << QRect(0, 50, 200, 40);
        QTest::newRow("tall") << QSize(50, 100) << QRect(65, 0, 70, 140);
        QTest::newRow("same shape") << QSize(400, 280) << QRect(0, 0, 200, 140);
        QTest::newRow("one line") << QSize(2000, 1) << QRect(0, 69, 200, 1);
    }
    void theWholePictureIsShownInTheMiddleOfWhite()
    {
        QFETCH(QSize, size);
        QFETCH(QRect, place);
        const QImage icon = painted(pictureOf(size, Qt::red), false);
        QRect red;
        for (int y = 0; y < icon.height(); ++y) {
            for (int x = 0; x < icon.width(); ++x) {
                if (icon.pixelColor(x, y) == QColor(Qt::red))
                    red |= QRect(x, y, 1, 1);
                else
                    QCOMPARE(icon.pixelColor(x, y), QColor(Qt::white));
            }
        }
        QCOMPARE(red, place);
    }

    void aTransparentPictureLiesOnWhite()
    {
        const QString path = temporaryHome() + "/glass.png"_L1;
        QImage picture(20, 14, QImage::Format_ARGB32);
        picture.fill(Qt::transparent);
        QVERIFY(picture.save(path));
        QCOMPARE(count(painted(path, false), Qt::white), 200 * 140);
    }

    void aLiveProfileHasAFrameOfFiveGreenPixels()
    {
        const QImage icon = painted(pictureOf(QSize(200, 140), Qt::red), true);
        const QRect whole(0, 0, 200, 140);
        const QRect inside = whole.adjusted(5, 5, -5, -5);
        for (int y = 0; y < icon.height(); ++y) {
            for (int x = 0; x < icon.width(); ++x) {
                const bool besideInside = (x >= 5 && x < 195) || (y >= 5 && y < 135);
                if (besideInside)
                    QCOMPARE(icon.pixelColor(x, y), inside.contains(x, y) ? QColor(Qt::red) : green);
            }
        }
        // The pen's sides meet in a bevel, which leaves the tips of the corners free.
        for (const QPoint corner :
             {whole.topLeft(), whole.topRight(), whole.bottomLeft(), whole.bottomRight()})
            QCOMPARE(icon.pixelColor(corner), QColor(Qt::red));
        QCOMPARE(count(painted(pictureOf(QSize(200, 140), Qt::red), false), green), 0);
    }

    void aSelectedIconHasTheSameColours()
    {
        for (const QString &path : {pictureOf(QSize(200, 140), Qt::red), QString()}) {
            const QIcon icon = makeItemIcon(path, iconSize, true);
            QCOMPARE(icon.pixmap(iconSize, QIcon::Selected).toImage(), icon.pixmap(iconSize).toImage());
        }
    }

    void withoutAPictureThereIsADarkPlaceholder_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("text") << QByteArray("no picture");
        QTest::newRow("broken") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    }
    void withoutAPictureThereIsADarkPlaceholder()
    {
        QFETCH(QByteArray, content);
        const QString path = temporaryHome() + "/bad.png"_L1;
        QFile::remove(path);
        if (!content.isEmpty()) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            QCOMPARE(file.write(content), content.size());
        }
        const QImage icon = painted(path, false);
        QCOMPARE(icon.size(), iconSize);
        for (const QPoint corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 139), QPoint(199, 139)})
            QCOMPARE(icon.pixelColor(corner), QColor(Qt::darkGray));
        QVERIFY(count(icon, Qt::darkGray) > 200 * 140 * 8 / 10);
        // Two lines of white text in the middle.
        QRect text;
        for (int y = 0; y < icon.height(); ++y) {
            for (int x = 0; x < icon.width(); ++x) {
                if (icon.pixelColor(x, y) != QColor(Qt::darkGray))
                    text |= QRect(x, y, 1, 1);
            }
        }
        QVERIFY(text.height() > 15);
        const auto brightest = [&] {
            int value = 0;
            for (int y = text.top(); y <= text.bottom(); ++y) {
                for (int x = text.left(); x <= text.right(); ++x)
                    value = std::max(value, icon.pixelColor(x, y).value());
            }
            return value;
        }();
        QVERIFY2(brightest > 230, qPrintable(QString::number(brightest)));
        QVERIFY2(QRect(80, 55, 40, 30).contains(text.center()), qPrintable(QDebug::toString(text)));
        // No connected gamepad changes that.
        QCOMPARE(painted(path, true), icon);
    }

    void aPictureThatWasReplacedAtOnceIsTheNewOne()
    {
        const QString path = pictureOf(QSize(20, 14), Qt::red);
        QCOMPARE(count(painted(path, false), Qt::red), 200 * 140);
        QCOMPARE(pictureOf(QSize(20, 14), Qt::blue), path);
        QCOMPARE(count(painted(path, false), Qt::blue), 200 * 140);
    }

    void aHugePictureCountsAsMissing()
    {
        // A header alone: Qt refuses it by its size before it looks for more.
        const QString path = temporaryHome() + "/huge.bmp"_L1;
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray header = QByteArray::fromHex(
            "424d36000000000000003600000028000000307500003075000001002000000000000000000000"
            "0000000000000000000000000000000000");
        QCOMPARE(file.write(header), header.size());
        file.close();
        QCOMPARE(painted(path, true).pixelColor(0, 0), QColor(Qt::darkGray));
    }

    void theIconsOfAListAreTheSame()
    {
        ProfileIcons icons(iconSize);
        const QString path = pictureOf(QSize(80, 60), Qt::red);
        for (const QString &picture : {path, QString(), path + ".missing"_L1}) {
            for (const bool live : {false, true, false})
                QCOMPARE(icons.iconOf(picture, live)
                             .pixmap(iconSize)
                             .toImage()
                             .convertToFormat(QImage::Format_RGB32),
                         painted(picture, live));
        }
    }

    void theIconsOfAListFollowTheFile()
    {
        ProfileIcons icons(iconSize);
        const QString path = temporaryHome() + "/following.png"_L1;
        const auto colour = [&] {
            return icons.iconOf(path, false).pixmap(iconSize).toImage().pixelColor(100, 70);
        };
        const auto save = [&path](const QSize &size, const QColor &color) {
            QImage picture(size, QImage::Format_RGB32);
            picture.fill(color);
            QVERIFY(picture.save(path));
        };
        QCOMPARE(colour(), QColor(Qt::darkGray)); // no picture yet
        save(QSize(80, 60), Qt::red);
        QCOMPARE(colour(), QColor(Qt::red));
        save(QSize(800, 600), Qt::blue);
        QCOMPARE(colour(), QColor(Qt::blue));
        QVERIFY(QFile::remove(path));
        QCOMPARE(colour(), QColor(Qt::darkGray));
        save(QSize(80, 60), Qt::red);
        QCOMPARE(colour(), QColor(Qt::red));
        icons.forget(path);
        QCOMPARE(colour(), QColor(Qt::red));
    }
};

GAMEPAD_TEST_MAIN(TestProfileIcon)
#include "tst_profileicon.moc"
