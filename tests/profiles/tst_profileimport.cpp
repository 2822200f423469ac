// SPDX-License-Identifier: MIT
#include "profileimport.h"

#include "exchangefiles.h"
#include "profilestore.h"
#include "smalldisk.h"
#include "testmain.h"

#include <QtCore/QDateTime>

using namespace Qt::StringLiterals;

namespace
{
QString root()
{
    return temporaryHome() + "/profiles"_L1;
}

ExchangedProfile someProfile()
{
    return {u"Venue d'ailleurs"_s, u"image.jpg"_s, QByteArray("no \0 picture", 12), overlayOf(u"A"_s)};
}
} // namespace

class TestProfileImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        QDir(root()).removeRecursively();
    }

    void aProfileIsWritten()
    {
        QString folder;
        const QDateTime before = QDateTime::currentDateTimeUtc();
        QVERIFY(!importProfileFiles(root(), someProfile(), &folder));
        QCOMPARE(QFileInfo(folder).path(), root());
        QCOMPARE(treeOf(folder), QStringList({u"configActionGamepad.json"_s, u"image.jpg"_s, u"meta.json"_s,
                                              u"overlay.json"_s}));
        QCOMPARE(bytesIn(folder + "/image.jpg"_L1), someProfile().image);
        QCOMPARE(bytesIn(folder + "/overlay.json"_L1),
                 QJsonDocument(overlayOf(u"A"_s)).toJson(QJsonDocument::Indented));
        QCOMPARE(bytesIn(folder + "/configActionGamepad.json"_L1),
                 QJsonDocument(defaultMappingDocument()).toJson(QJsonDocument::Indented));

        const QByteArray text = bytesIn(folder + "/meta.json"_L1);
        QJsonObject meta = QJsonDocument::fromJson(text).object();
        QCOMPARE(text, QJsonDocument(meta).toJson(QJsonDocument::Indented));
        const QString createdAt = meta.take("createdAt"_L1).toString();
        QCOMPARE(meta.take("modifiedAt"_L1).toString(), createdAt);
        QVERIFY(createdAt.endsWith(u'Z'));
        QVERIFY(qAbs(before.secsTo(QDateTime::fromString(createdAt, Qt::ISODate))) < 60);
        QCOMPARE(meta, (QJsonObject{
                           {u"type"_s, u"GamepadDefinderMeta"_s},
                           {u"version"_s, 2},
                           {u"id"_s, QFileInfo(folder).fileName()},
                           {u"name"_s, u"Venue d'ailleurs"_s},
                           {u"image"_s, u"image.jpg"_s},
                           {u"overlayFile"_s, u"overlay.json"_s},
                           {u"config"_s, u"configActionGamepad.json"_s},
                           {u"deviceName"_s, QString()},
                       }));

        GamepadEntry entry;
        QVERIFY(loadEntryFromDir(folder, &entry));
        QCOMPARE(entry.name, u"Venue d'ailleurs"_s);
        QCOMPARE(entry.imagePath, QString(folder + "/image.jpg"_L1));
        QCOMPARE(entry.deviceName, QString());
        QCOMPARE(entry.id.toString(QUuid::WithoutBraces), QFileInfo(folder).fileName());
    }

    void theSameTwiceIsTwoProfiles()
    {
        QString first;
        QString second;
        QVERIFY(!importProfileFiles(root(), someProfile(), &first));
        QVERIFY(!importProfileFiles(root(), someProfile(), &second));
        QVERIFY(first != second);
        QCOMPARE(objectIn(first + "/meta.json"_L1)["name"_L1], objectIn(second + "/meta.json"_L1)["name"_L1]);
        QVERIFY(objectIn(first + "/meta.json"_L1)["id"_L1] != objectIn(second + "/meta.json"_L1)["id"_L1]);
    }

    void aProfileWithoutPictureHasAnEmptyOne()
    {
        ExchangedProfile profile = someProfile();
        profile.image.clear();
        profile.name = QString(10'000, u'é');
        QString folder;
        QVERIFY(!importProfileFiles(root(), profile, &folder));
        QVERIFY(QFileInfo::exists(folder + "/image.jpg"_L1));
        QCOMPARE(QFileInfo(folder + "/image.jpg"_L1).size(), 0);
        GamepadEntry entry;
        QVERIFY(loadEntryFromDir(folder, &entry));
        QCOMPARE(entry.name, profile.name);
    }

    void aFailureEndsItAndTakesNothingBack_data()
    {
        QTest::addColumn<int>("places");
        QTest::addColumn<ImportStep>("step");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QStringList>("left");
        QTest::addColumn<QString>("text");
        // The disk itself and the profile's folder take a place each.
        QTest::newRow("picture") << 2 << ImportStep::Picture << u"image.jpg"_s << QStringList()
                                 << u"Ã‰chec Ã©criture image : %1"_s;
        QTest::newRow("overlay") << 3 << ImportStep::Overlay << u"overlay.json"_s
                                 << QStringList{u"image.jpg"_s} << u"Ã‰chec Ã©criture overlay.json : %1"_s;
        QTest::newRow("meta") << 4 << ImportStep::Meta << u"meta.json"_s
                              << QStringList{u"image.jpg"_s, u"overlay.json"_s}
                              << u"Ã‰chec Ã©criture meta.json : %1"_s;
        QTest::newRow("mapping") << 5 << ImportStep::Mapping << u"configActionGamepad.json"_s
                                 << QStringList{u"image.jpg"_s, u"meta.json"_s, u"overlay.json"_s}
                                 << u"Echec ecriture mapping : %1"_s;
    }

    void aFailureEndsItAndTakesNothingBack()
    {
        QFETCH(const int, places);
        QFETCH(const ImportStep, step);
        QFETCH(const QString, file);
        QFETCH(const QString, text);
        const SmallDisk disk(root(), places);
        GAMEPAD_NEED_MOUNTED(disk);

        QString folder;
        const auto failure = importProfileFiles(root(), someProfile(), &folder);
        QVERIFY(failure);
        const QString error = u"Impossible dâ€™Ã©crire %1"_s.arg(folder + u'/' + file);
        QCOMPARE(*failure, (ImportFailure{step, error}));
        QTEST(treeOf(folder), "left");
        QCOMPARE(noticeOf(*failure), (StoreNotice{QMessageBox::Warning, u"Import"_s, text.arg(error)}));
        // Only what failed at its mapping is a profile.
        QCOMPARE(loadEntryFromDir(folder, nullptr), step == ImportStep::Mapping);
    }

    void aNameTooLongForTheDiskIsAFailureOfThePicture()
    {
        ExchangedProfile profile = someProfile();
        profile.imageFile = "image."_L1 + QString(10'000, u'p');
        QString folder;
        const auto failure = importProfileFiles(root(), profile, &folder);
        QVERIFY(failure);
        QCOMPARE(failure->step, ImportStep::Picture);
        QVERIFY(treeOf(folder).isEmpty());
    }

    void aRootThatCannotBeMadeIsAFailureOfThePicture()
    {
        write(root(), "a file");
        QString folder;
        const auto failure = importProfileFiles(root() + "/below"_L1, someProfile(), &folder);
        QVERIFY(failure);
        QCOMPARE(failure->error, u"Impossible dâ€™Ã©crire %1"_s.arg(folder + "/image.jpg"_L1));
        QCOMPARE(bytesIn(root()), "a file");
        QVERIFY(QFile::remove(root()));
    }
};

GAMEPAD_TEST_MAIN(TestProfileImport)
#include "tst_profileimport.moc"
