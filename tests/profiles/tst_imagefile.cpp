// SPDX-License-Identifier: MIT
#include "imagefile.h"

#include "exchangefiles.h"
#include "leakpause.h"
#include "smalldisk.h"
#include "testmain.h"

#include <QtGui/QImageReader>
#include <QtGui/QImageWriter>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace
{
const QByteArray gif = QByteArray::fromBase64("R0lGODlhAQABAIAAAP8AAP///ywAAAAAAQABAAACAkQBADs=");

QString below(const QString &name)
{
    return temporaryHome() + "/pictures/"_L1 + name;
}

QByteArray bluePng()
{
    return pngOf({40, 30}, Qt::blue);
}

QByteArray formatOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QImageReader::imageFormat(&file) : QByteArray();
}

/// A picture that no encoding makes small.
QByteArray noisePng()
{
    QImage image(200, 200, QImage::Format_RGB32);
    quint32 state = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            state = state * 1664525U + 1013904223U;
            image.setPixel(x, y, state >> 8U);
        }
    }
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "PNG");
    return png;
}

QString copyMessage(const QString &source, const QString &destination)
{
    return u"Impossible de copier lâ€™image %1 vers %2"_s.arg(source, destination);
}

QString writeMessage(const QString &destination, const QString &reason)
{
    return u"Ã‰chec Ã©criture image %1 (%2)"_s.arg(destination, reason);
}
} // namespace

class TestImageFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        QDir(below(u"."_s)).removeRecursively();
        QVERIFY(QDir().mkpath(below(u"."_s)));
    }

    void aPictureIsEncodedAsItsDestinationIsCalled_data()
    {
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QString>("destination");
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("jpg") << bluePng() << u"image.jpg"_s << QByteArray("jpeg");
        QTest::newRow("jpeg") << bluePng() << u"image.jpeg"_s << QByteArray("jpeg");
        QTest::newRow("upper case") << bluePng() << u"image.JPG"_s << QByteArray("jpeg");
        QTest::newRow("png") << bluePng() << u"image.png"_s << QByteArray("png");
        QTest::newRow("bmp") << bluePng() << u"image.bmp"_s << QByteArray("bmp");
        QTest::newRow("no suffix") << bluePng() << u"image"_s << QByteArray("png");
        QTest::newRow("unknown suffix") << bluePng() << u"image.pad"_s << QByteArray("png");
        QTest::newRow("GIF") << gif << u"image.gif"_s << QByteArray("png");
    }

    void aPictureIsEncodedAsItsDestinationIsCalled()
    {
        QFETCH(const QByteArray, source);
        QFETCH(const QString, destination);
        const QString from = below(u"source"_s);
        const QString to = below(destination);
        write(from, source);
        write(to, QByteArray(100'000, 'x')); // what was there goes whole
        QString error;
        QVERIFY(copyOrConvertImage(from, to, &error));
        QVERIFY(error.isEmpty());
        QTEST(formatOf(to), "format");
        QCOMPARE(readImageFile(to).size(), QImage::fromData(source).size());
        QCOMPARE(bytesIn(from), source);
        QVERIFY(copyOrConvertImage(from, to, nullptr));
    }

    // Encoded anew: what else is in the file stays behind.
    void aReadablePictureIsNotCopiedByteForByte()
    {
        write(below(u"a.png"_s), bluePng() + "more");
        QVERIFY(copyOrConvertImage(below(u"a.png"_s), below(u"b.png"_s), nullptr));
        QVERIFY(!bytesIn(below(u"b.png"_s)).contains("more"));
        QCOMPARE(readImageFile(below(u"b.png"_s)).pixelColor(5, 5), QColor(Qt::blue));
    }

    void whatIsNoPictureIsCopiedAsItIs_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("text") << QByteArray("no picture");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("a picture's beginning") << bluePng().first(20);
    }

    void whatIsNoPictureIsCopiedAsItIs()
    {
        QFETCH(const QByteArray, content);
        write(below(u"a.png"_s), content);
        write(below(u"b.png"_s), "before");
        QString error;
        QVERIFY(copyOrConvertImage(below(u"a.png"_s), below(u"b.png"_s), &error));
        QVERIFY(error.isEmpty());
        QCOMPARE(bytesIn(below(u"b.png"_s)), content);
        QVERIFY(readImageFile(below(u"b.png"_s)).isNull());
    }

    void aSourceThatVanishedCostsNothing()
    {
        const QString from = below(u"%2 gone.png"_s);
        const QString to = below(u"image.png"_s);
        write(to, bluePng());
        QString error;
        QVERIFY(!copyOrConvertImage(from, to, &error));
        QCOMPARE(error, copyMessage(from, to));
        QCOMPARE(bytesIn(to), bluePng());
        QVERIFY(!copyOrConvertImage(from, to, nullptr));
    }

    void aFileCopiedOntoItselfStays_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("picture") << bluePng();
        QTest::newRow("text") << QByteArray("no picture");
    }

    void aFileCopiedOntoItselfStays()
    {
        QFETCH(const QByteArray, content);
        const QString path = below(u"image.png"_s);
        write(path, content);
        QVERIFY(copyOrConvertImage(path, path, nullptr));
        QCOMPARE(readImageFile(path), QImage::fromData(content));
        QVERIFY(!readImageFile(path).isNull() || bytesIn(path) == content);
    }

    void aFolderCannotBeWrittenAsAPicture()
    {
        const QString from = below(u"a.png"_s);
        const QString to = below(u"image.png"_s);
        QVERIFY(QDir().mkpath(to));
        write(from, bluePng());
        QImageWriter writer(to, "png");
        QVERIFY(!writer.write(QImage(from)));
        QString error;
        QVERIFY(!copyOrConvertImage(from, to, &error));
        QCOMPARE(error, writeMessage(to, writer.errorString()));
        QVERIFY(!copyOrConvertImage(from, to, nullptr));

        write(from, "no picture");
        QVERIFY(!copyOrConvertImage(from, to, &error));
        QCOMPARE(error, copyMessage(from, to));
        QVERIFY(QFileInfo(to).isDir());
    }

    void aFullDiskIsSaid_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("warnings"); // of Qt's JPEG writer
        QTest::newRow("png") << u"image.png"_s << 0;
        QTest::newRow("jpg") << u"image.jpg"_s << 2;
        QTest::newRow("bmp") << u"image.bmp"_s << 0;
    }

    void aFullDiskIsSaid()
    {
        QFETCH(const QString, name);
        QFETCH(const int, warnings);
        const QString folder = below(u"disk"_s);
        const SmallDisk disk(folder, 10, 4);
        GAMEPAD_NEED_MOUNTED(disk);
        for (int i = 0; i < warnings; ++i)
            QTest::ignoreMessage(QtWarningMsg, "Bogus message code 0");
        const QString from = below(u"noise.png"_s);
        const QString to = folder + u'/' + name;
        write(from, noisePng());
        QString error;
        const LeakPause pause; // Qt's PNG writer gives nothing back after an error
        QVERIFY(!copyOrConvertImage(from, to, &error));
        QVERIFY2(error.startsWith(writeMessage(to, {}).chopped(1)), qPrintable(error));
    }

    // Few colours make a huge picture small in its file and in memory, until it is painted.
    void aHugePictureCountsAsNone()
    {
        const QString from = below(u"huge.png"_s);
        QImage huge(30'000, 30'000, QImage::Format_Mono);
        huge.fill(0);
        QVERIFY(huge.save(from));
        huge = {};
        QVERIFY(readImageFile(from).isNull());
        QVERIFY(copyOrConvertImage(from, below(u"image.jpg"_s), nullptr));
        QCOMPARE(bytesIn(below(u"image.jpg"_s)), bytesIn(from));
    }

#ifdef Q_OS_UNIX
    void aPipeIsNotWaitedFor()
    {
        const QString pipe = below(u"pipe.png"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(readImageFile(pipe).isNull());
        QString error;
        QVERIFY(!copyOrConvertImage(pipe, below(u"image.png"_s), &error));
        QCOMPARE(error, copyMessage(pipe, below(u"image.png"_s)));

        write(below(u"a.png"_s), bluePng());
        QVERIFY(!copyOrConvertImage(below(u"a.png"_s), pipe, &error));
        QVERIFY(error.startsWith(writeMessage(pipe, {}).chopped(1)));
    }
#endif

    void theNameHasTheSuffixInLowerCase_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("name");
        QTest::newRow("png") << u"png"_s << u"image.png"_s;
        QTest::newRow("JPG") << u"JPG"_s << u"image.jpg"_s;
        QTest::newRow("none") << QString() << u"image.png"_s;
        QTest::newRow("backslash") << u"p\\g"_s << u"image.png"_s;
        QTest::newRow("slash") << u"/../x"_s << u"image.png"_s;
    }

    void theNameHasTheSuffixInLowerCase()
    {
        QFETCH(const QString, suffix);
        QTEST(pictureFileName(suffix), "name");
    }
};

GAMEPAD_TEST_MAIN(TestImageFile)
#include "tst_imagefile.moc"
