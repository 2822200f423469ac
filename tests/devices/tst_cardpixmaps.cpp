// SPDX-License-Identifier: MIT
#include "cardpixmaps.h"

#include "testmain.h"

#include <QtGui/QIcon>
#include <QtGui/QPixmapCache>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace
{
QPixmap plain(const QSize &size, const QColor &colour)
{
    QPixmap pixmap(size);
    pixmap.fill(colour);
    return pixmap;
}

QColor middle(const QPixmap &pixmap)
{
    return pixmap.toImage().pixelColor(pixmap.rect().center());
}
} // namespace

class TestCardPixmaps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        QPixmapCache::clear();
        QVERIFY(plain({64, 64}, Qt::red).save(file()));
    }

    void aResourceIsKeptUnderItsPathAndSize()
    {
        const QPixmap found = cachedResourcePixmap(file(), {20, 24});
        QCOMPARE(found.size(), QSize(20, 20)); // an icon keeps its shape
        QCOMPARE(middle(found), QColor(Qt::red));

        QPixmap kept;
        QVERIFY(QPixmapCache::find(u"res:%1:20x24"_s.arg(file()), &kept));
        QCOMPARE(kept.cacheKey(), found.cacheKey());
        QVERIFY(!QPixmapCache::find(u"res:%1:24x20"_s.arg(file()), &kept));
        QVERIFY(!QPixmapCache::find(u"img:%1:20x24"_s.arg(file()), &kept));
    }

    void whatIsKeptIsNotReadAgain()
    {
        const QPixmap first = cachedResourcePixmap(file(), {20, 20});
        QVERIFY(QFile::remove(file()));
        QCOMPARE(cachedResourcePixmap(file(), {20, 20}).cacheKey(), first.cacheKey());
        QVERIFY(cachedResourcePixmap(file(), {21, 21}).isNull());
    }

    void everySizeIsKeptForItself()
    {
        QCOMPARE(cachedResourcePixmap(file(), {20, 20}).width(), 20);
        QCOMPARE(cachedResourcePixmap(file(), {24, 24}).width(), 24);
        QCOMPARE(cachedResourcePixmap(file(), {20, 20}).width(), 20);
    }

    void noPathGivesNoPixmap()
    {
        QPixmapCache::insert(u"res::20x20"_s, plain({20, 20}, Qt::blue));
        QPixmapCache::insert(u"img::20x20"_s, plain({20, 20}, Qt::blue));
        QVERIFY(cachedResourcePixmap({}, {20, 20}).isNull());
        QVERIFY(itemPixmap(QString(), {20, 20}).isNull());
    }

    void aMissingResourceIsLookedForAgain()
    {
        const QString late = temporaryHome() + u"/late.png"_s;
        QVERIFY(cachedResourcePixmap(late, {20, 20}).isNull());
        QPixmap kept;
        QVERIFY(!QPixmapCache::find(u"res:%1:20x20"_s.arg(late), &kept));
        QVERIFY(plain({20, 20}, Qt::green).save(late));
        QCOMPARE(middle(cachedResourcePixmap(late, {20, 20})), QColor(Qt::green));
    }

    void aPathWithPlaceHoldersIsTakenAsItIs()
    {
        const QString odd = temporaryHome() + u"/%2 %1.png"_s;
        QPixmapCache::insert(u"res:"_s + odd + u":20x20"_s, plain({20, 20}, Qt::cyan));
        QCOMPARE(middle(cachedResourcePixmap(odd, {20, 20})), QColor(Qt::cyan));
    }

    void aPictureByPathIsKeptUnderAKeyOfItsOwn()
    {
        const QPixmap found = itemPixmap(file(), {96, 96});
        QCOMPARE(middle(found), QColor(Qt::red));
        QPixmap kept;
        QVERIFY(QPixmapCache::find(u"img:%1:96x96"_s.arg(file()), &kept));
        QCOMPARE(kept.cacheKey(), found.cacheKey());
        QVERIFY(!QPixmapCache::find(u"res:%1:96x96"_s.arg(file()), &kept));

        QVERIFY(QFile::remove(file()));
        QCOMPARE(itemPixmap(file(), {96, 96}).cacheKey(), found.cacheKey());
    }

    void anIconIsRenderedEachTime()
    {
        const QIcon icon(plain({96, 96}, Qt::yellow));
        QCOMPARE(middle(itemPixmap(icon, {96, 96})), QColor(Qt::yellow));
        const QIcon other(plain({96, 96}, Qt::magenta));
        QCOMPARE(middle(itemPixmap(other, {96, 96})), QColor(Qt::magenta));
    }

    void anyOtherValueGivesNoPixmap_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("nothing") << QVariant();
        QTest::newRow("number") << QVariant(7);
        QTest::newRow("bytes that name a file") << QVariant(file().toUtf8());
        QTest::newRow("list of paths") << QVariant(QStringList{file()});
        QTest::newRow("empty icon") << QVariant(QIcon());
        QTest::newRow("path that leads nowhere") << QVariant(u":/new/prefix1/ressources/nothing.png"_s);
        QTest::newRow("path of a folder") << QVariant(temporaryHome());
        const QString pipe = temporaryHome() + u"/pipe.png"_s;
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QTest::newRow("a pipe") << QVariant(pipe); // whoever opens it waits for the one at its other end
        QTest::newRow("a path with NUL") << QVariant(file() + QChar::Null + u'x');
    }

    void anyOtherValueGivesNoPixmap()
    {
        QFETCH(const QVariant, value);
        QVERIFY(itemPixmap(value, {96, 96}).isNull());
    }

    void aFileThatIsNoPictureGivesNoPixmap()
    {
        QFile broken(file());
        QVERIFY(broken.open(QIODevice::WriteOnly));
        QVERIFY(broken.write("no picture") > 0);
        broken.close();
        QVERIFY(itemPixmap(file(), {96, 96}).isNull());
        QVERIFY(cachedResourcePixmap(file(), {20, 20}).isNull());
    }

private:
    static QString file() { return temporaryHome() + u"/picture.png"_s; }
};

GAMEPAD_TEST_MAIN(TestCardPixmaps)
#include "tst_cardpixmaps.moc"
