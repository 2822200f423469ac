// SPDX-License-Identifier: MIT
// The picture that the list shows of a pad is that of the profile which is linked to it.
#include "modelfixture.h"
#include "profilefolder.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QFile>
#include <QtGui/QImage>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

namespace
{
const QColor paint(200, 40, 120);

QString drawnPicture(const QString &path)
{
    QImage image(32, 32, QImage::Format_RGB32);
    image.fill(paint);
    const QString whole = writeBelowRoot(path);
    if (!image.save(whole, "PNG"))
        qFatal("a picture cannot be written");
    return whole;
}

QString builtIn()
{
    return u":/new/prefix1/ressources/menette_id_43981.png"_s; // 0xabcd
}

QIcon decorationOf(const TestedModel &model)
{
    return model.at(0, Qt::DecorationRole).value<QIcon>();
}
} // namespace

class TestLinkerDeviceModelPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }

    void aLinkedProfilesPictureIsShown()
    {
        plug(0, u"Blue Pad"_s);
        TestedModel model;
        settle();
        QCOMPARE(model.at(0, Model::ImageRole), QVariant(builtIn()));
        // Written by the editor later on, it shows at the next question.
        writeMeta(u"a"_s, {{u"deviceName"_s, u"BLUE pad"_s}, {u"image"_s, u"image.PNG"_s}});
        const QString picture = drawnPicture(u"a/image.PNG"_s);
        QCOMPARE(model.at(0, Model::ImageRole), QVariant(picture));
        QCOMPARE(decorationOf(model).pixmap(32, 32).toImage().pixelColor(16, 16), paint);
    }

    void aLinkedProfileWhosePictureIsMissingShowsTheBuiltInOne()
    {
        plug(0, u"Blue Pad"_s);
        writeMeta(u"a"_s, {{u"deviceName"_s, u"Blue Pad"_s}});
        TestedModel model;
        settle();
        QCOMPARE(model.at(0, Model::ImageRole), QVariant(builtIn()));
        QVERIFY(decorationOf(model).isNull());
        const QString picture = drawnPicture(u"a/image.png"_s);
        QCOMPARE(model.at(0, Model::ImageRole), QVariant(picture));
        QVERIFY(QFile::remove(picture));
        QCOMPARE(model.at(0, Model::ImageRole), QVariant(builtIn()));
    }

    void thePictureOfWhenItWasLastLiveIsRemembered()
    {
        plug(0, u"Blue Pad"_s);
        writeMeta(u"a"_s, {{u"deviceName"_s, u"Blue Pad"_s}});
        const QString picture = drawnPicture(u"a/image.png"_s);
        {
            TestedModel model;
            settle();
        }
        QCOMPARE(storedDevice(u"gp:0"_s).value(u"imagePath"_s), QJsonValue(picture));
        unplug(0);
        TestedModel model;
        settle();
        QCOMPARE(model.at(0, Model::ImageRole), QVariant(picture));
        QCOMPARE(decorationOf(model).pixmap(32, 32).toImage().pixelColor(16, 16), paint);
        // The path stays, although it leads nowhere any more.
        QVERIFY(QFile::remove(picture));
        QCOMPARE(model.at(0, Model::ImageRole), QVariant(picture));
        QVERIFY(decorationOf(model).isNull());
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelPictures)
#include "tst_linkerdevicemodel_pictures.moc"
