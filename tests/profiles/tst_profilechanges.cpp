// SPDX-License-Identifier: MIT
#include "profilechanges.h"

#include "exchangefiles.h"
#include "machine.h"
#include "profilesroot.h"
#include "profilestore.h"
#include "smalldisk.h"
#include "testmain.h"

#include <QtGui/QImageReader>

using namespace Qt::StringLiterals;

namespace
{
const QStringList completeProfile{u"configActionGamepad.json"_s, u"image.png"_s, u"meta.json"_s,
                                  u"overlay.json"_s};

QString home(const QString &name)
{
    return temporaryHome() + "/data/"_L1 + name;
}

QString cannotWrite(const QString &path)
{
    return u"Impossible dâ€™Ã©crire %1"_s.arg(path);
}

QString cannotCopy(const QString &source, const QString &destination)
{
    return u"Impossible de copier lâ€™image %1 vers %2"_s.arg(source, destination);
}

/// A picture that the user chose, of this name.
QString picture(const QString &name = u"photo.png"_s)
{
    QString path = home(name);
    write(path, pngOf({40, 30}, Qt::blue));
    return path;
}

NewProfile newProfile(const QString &picturePath)
{
    return {.name = u" Mon pad "_s,
            .picture = picturePath,
            .deviceName = u"Pad 3000"_s,
            .overlay = {{u"some"_s, u"overlay"_s}}};
}

/// A stored profile, linked, with a mapping of its own.
GamepadEntry stored()
{
    QString folder;
    const StoreResult result = createProfileFiles(makeProfilesRoot(), newProfile(picture()), &folder);
    GamepadEntry entry;
    if (result || !loadEntryFromDir(folder, &entry))
        qFatal("no profile could be made");
    write(mappingPath(folder), "the user's own");
    return entry;
}

/// Makes `path` a name that cannot be written, though nothing seems to be there.
void linkToNowhere(const QString &path)
{
    QFile::remove(path);
    QVERIFY(QFile::link(home(u"nowhere/file"_s), path));
}

void putFolderInPlaceOf(const QString &path)
{
    QFile::remove(path);
    QVERIFY(QDir().mkpath(path));
}
} // namespace

class TestProfileChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void creatingWritesFourFiles()
    {
        QString folder;
        QVERIFY(!createProfileFiles(makeProfilesRoot(), newProfile(picture()), &folder));
        QCOMPARE(treeOf(folder), completeProfile);
        QCOMPARE(objectIn(folder + "/overlay.json"_L1), object("{'some':'overlay'}"));
        QVERIFY(bytesIn(folder + "/overlay.json"_L1).startsWith("{\n    \""));
        QCOMPARE(objectIn(mappingPath(folder)), defaultMappingDocument());
        const QJsonObject meta = objectIn(folder + "/meta.json"_L1);
        QCOMPARE(meta.size(), 10);
        QCOMPARE(meta["name"_L1].toString(), u" Mon pad "_s);
        QCOMPARE(meta["deviceName"_L1].toString(), u"Pad 3000"_s);
        QCOMPARE(meta["image"_L1].toString(), u"image.png"_s);
        QCOMPARE(meta["overlayFile"_L1].toString(), u"overlay.json"_s);
        QCOMPARE(profilesRootPath() + u'/' + meta["id"_L1].toString(), folder);
        QVERIFY(loadEntryFromDir(folder, nullptr));
    }

    void thePictureKeepsItsSuffixInLowerCase_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("JPG") << u"photo.JPG"_s << u"image.jpg"_s << QByteArray("jpeg");
        QTest::newRow("none") << u"photo"_s << u"image.png"_s << QByteArray("png");
        QTest::newRow("two") << u"photo.tar.bmp"_s << u"image.bmp"_s << QByteArray("bmp");
    }

    void thePictureKeepsItsSuffixInLowerCase()
    {
        QFETCH(const QString, chosen);
        QFETCH(const QString, name);
        QString folder;
        QVERIFY(!createProfileFiles(makeProfilesRoot(), newProfile(picture(chosen)), &folder));
        QCOMPARE(objectIn(folder + "/meta.json"_L1)["image"_L1].toString(), name);
        QFile file(folder + u'/' + name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QTEST(QImageReader::imageFormat(&file), "format");
    }

    void aNameNeverReachesTheFileSystem()
    {
        NewProfile profile = newProfile(picture());
        profile.name = u"../../"_s + QString(10'000, u'x');
        QString folder;
        QVERIFY(!createProfileFiles(makeProfilesRoot(), profile, &folder));
        QCOMPARE(QFileInfo(folder).path(), profilesRootPath());
        QCOMPARE(objectIn(folder + "/meta.json"_L1)["name"_L1].toString(), profile.name);
    }

    void creatingWithoutThePictureLeavesAnEmptyFolder()
    {
        const QString gone = home(u"gone.png"_s);
        QString folder;
        const StoreResult result = createProfileFiles(makeProfilesRoot(), newProfile(gone), &folder);
        QVERIFY(result);
        QCOMPARE(*result,
                 (StoreFailure{StoreStep::CreatePicture, cannotCopy(gone, folder + "/image.png"_L1)}));
        QVERIFY(QDir(folder).exists());
        QCOMPARE(treeOf(folder), QStringList());
    }

    // Places on the disk: the root, the folder, then file after file.
    void creatingStopsWhereTheDiskEnds_data()
    {
        QTest::addColumn<int>("places");
        QTest::addColumn<StoreStep>("step");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QStringList>("rest");
        QTest::newRow("picture") << 2 << StoreStep::CreatePicture << u"image.png"_s << QStringList();
        QTest::newRow("overlay") << 3 << StoreStep::CreateOverlay << u"overlay.json"_s
                                 << QStringList({u"image.png"_s});
        QTest::newRow("meta") << 4 << StoreStep::CreateMeta << u"meta.json"_s
                              << QStringList({u"image.png"_s, u"overlay.json"_s});
        QTest::newRow("mapping") << 5 << StoreStep::CreateMapping << u"configActionGamepad.json"_s
                                 << QStringList({u"image.png"_s, u"meta.json"_s, u"overlay.json"_s});
    }

    void creatingStopsWhereTheDiskEnds()
    {
        QFETCH(const int, places);
        QFETCH(const StoreStep, step);
        QFETCH(const QString, file);
        const QString chosen = picture();
        const SmallDisk disk(makeProfilesRoot(), places);
        GAMEPAD_NEED_MOUNTED(disk);
        QString folder;
        const StoreResult result = createProfileFiles(profilesRootPath(), newProfile(chosen), &folder);
        QVERIFY(result);
        QCOMPARE(result->step, step);
        const QString path = folder + u'/' + file;
        if (step == StoreStep::CreatePicture)
            QVERIFY2(result->error.contains(path), qPrintable(result->error));
        else
            QCOMPARE(result->error, cannotWrite(path));
        QTEST(treeOf(folder), "rest");
        // Only what lacks the mapping alone is a profile at the next scan, and its first save adds it.
        QCOMPARE(loadEntryFromDir(folder, nullptr), step == StoreStep::CreateMapping);
    }

    void savingWritesOverlayAndMeta()
    {
        GamepadEntry entry = stored();
        entry.name = u"Other"_s;
        QVERIFY(!saveProfileFiles(entry, "bytes as they are"));
        QCOMPARE(bytesIn(entry.overlayPath), "bytes as they are");
        QCOMPARE(bytesIn(mappingPath(entry.dirPath)), "the user's own");
        const QJsonObject meta = objectIn(entry.dirPath + "/meta.json"_L1);
        QCOMPARE(meta.size(), 9);
        QVERIFY(!meta.contains("createdAt"_L1));
        QCOMPARE(meta["name"_L1].toString(), u"Other"_s);
        QCOMPARE(meta["deviceName"_L1].toString(), u"Pad 3000"_s);
        QCOMPARE(treeOf(entry.dirPath), completeProfile);
    }

    void savingAddsAMissingMapping()
    {
        const GamepadEntry entry = stored();
        QVERIFY(QFile::remove(mappingPath(entry.dirPath)));
        QVERIFY(!saveProfileFiles(entry, "{}"));
        QCOMPARE(objectIn(mappingPath(entry.dirPath)), defaultMappingDocument());
    }

    void savingWithoutTheOverlayLeavesMetaAsItWas()
    {
        const GamepadEntry entry = stored();
        const QByteArray meta = bytesIn(entry.dirPath + "/meta.json"_L1);
        putFolderInPlaceOf(entry.overlayPath);
        QVERIFY(QFile::remove(mappingPath(entry.dirPath)));
        QCOMPARE(saveProfileFiles(entry, "{}"),
                 (StoreFailure{StoreStep::SaveOverlay, cannotWrite(entry.overlayPath)}));
        QCOMPARE(bytesIn(entry.dirPath + "/meta.json"_L1), meta);
        QVERIFY(!QFile::exists(mappingPath(entry.dirPath)));
    }

    void savingOntoAFullDiskFailsAtTheOverlay()
    {
        GAMEPAD_NEED_FULL_DEVICE();
        const GamepadEntry entry = stored();
        const QByteArray meta = bytesIn(entry.dirPath + "/meta.json"_L1);
        QVERIFY(QFile::remove(entry.overlayPath) && QFile::link(fullDevice(), entry.overlayPath));
        QCOMPARE(saveProfileFiles(entry, "{}"),
                 (StoreFailure{StoreStep::SaveOverlay,
                               u"Ã‰criture incomplÃ¨te dans %1"_s.arg(entry.overlayPath)}));
        QCOMPARE(bytesIn(entry.dirPath + "/meta.json"_L1), meta);
    }

    void savingWithoutTheMappingHasWrittenTheOverlay()
    {
        const GamepadEntry entry = stored();
        const QByteArray meta = bytesIn(entry.dirPath + "/meta.json"_L1);
        linkToNowhere(mappingPath(entry.dirPath));
        QCOMPARE(saveProfileFiles(entry, "new"),
                 (StoreFailure{StoreStep::SaveMapping, cannotWrite(mappingPath(entry.dirPath))}));
        QCOMPARE(bytesIn(entry.overlayPath), "new");
        QCOMPARE(bytesIn(entry.dirPath + "/meta.json"_L1), meta);
    }

    void savingWithoutMetaHasWrittenTheOverlay()
    {
        const GamepadEntry entry = stored();
        putFolderInPlaceOf(entry.dirPath + "/meta.json"_L1);
        QVERIFY(QFile::remove(mappingPath(entry.dirPath)));
        QCOMPARE(saveProfileFiles(entry, "new"),
                 (StoreFailure{StoreStep::SaveMeta, cannotWrite(entry.dirPath + "/meta.json"_L1)}));
        QCOMPARE(bytesIn(entry.overlayPath), "new");
        QCOMPARE(objectIn(mappingPath(entry.dirPath)), defaultMappingDocument());
    }

    void aDuplicateIsUnlinkedAndNamedAsACopy()
    {
        GamepadEntry entry = stored();
        QVERIFY(QFile::rename(entry.overlayPath, entry.dirPath + "/layer.json"_L1));
        entry.overlayPath = entry.dirPath + "/layer.json"_L1;
        write(entry.overlayPath, "no JSON at all");
        QString folder;
        QVERIFY(!duplicateProfileFiles(profilesRootPath(), entry, &folder));
        QVERIFY(folder != entry.dirPath);
        QCOMPARE(treeOf(folder), completeProfile);
        QCOMPARE(bytesIn(folder + "/overlay.json"_L1), "no JSON at all");
        QCOMPARE(bytesIn(mappingPath(folder)), "the user's own");
        QCOMPARE(QImage(folder + "/image.png"_L1), QImage(entry.imagePath));
        const QJsonObject meta = objectIn(folder + "/meta.json"_L1);
        QCOMPARE(meta.size(), 10);
        QCOMPARE(meta["name"_L1].toString(), u" Mon pad  (copie)"_s);
        QCOMPARE(meta["deviceName"_L1].toString(), QString());
        QCOMPARE(profilesRootPath() + u'/' + meta["id"_L1].toString(), folder);
    }

    void theSuffixIsNotNumbered()
    {
        const GamepadEntry entry = stored();
        QString first;
        QString second;
        QVERIFY(!duplicateProfileFiles(profilesRootPath(), entry, &first));
        QVERIFY(!duplicateProfileFiles(profilesRootPath(), entry, &second));
        QVERIFY(first != second);
        QCOMPARE(objectIn(first + "/meta.json"_L1)["name"_L1], objectIn(second + "/meta.json"_L1)["name"_L1]);
    }

    void aDuplicateOfWhatHasNoMappingGetsTheDefault()
    {
        const GamepadEntry entry = stored();
        QVERIFY(QFile::remove(mappingPath(entry.dirPath)));
        QString folder;
        QVERIFY(!duplicateProfileFiles(profilesRootPath(), entry, &folder));
        QCOMPARE(objectIn(mappingPath(folder)), defaultMappingDocument());
        QVERIFY(!QFile::exists(mappingPath(entry.dirPath)));
    }

    void whatHasNoPictureCannotBeDuplicated()
    {
        const GamepadEntry entry = stored();
        QVERIFY(QFile::remove(entry.imagePath));
        QString folder;
        const StoreResult result = duplicateProfileFiles(profilesRootPath(), entry, &folder);
        QCOMPARE(result, (StoreFailure{StoreStep::DuplicatePicture,
                                       cannotCopy(entry.imagePath, folder + "/image.png"_L1)}));
        QVERIFY(QDir(folder).exists());
        QCOMPARE(treeOf(folder), QStringList());
    }

    void duplicatingWithoutTheOverlayLeavesThePicture_data()
    {
        QTest::addColumn<bool>("folderInItsPlace");
        QTest::newRow("vanished") << false;
        QTest::newRow("folder") << true;
    }

    void duplicatingWithoutTheOverlayLeavesThePicture()
    {
        QFETCH(const bool, folderInItsPlace);
        const GamepadEntry entry = stored();
        if (folderInItsPlace)
            putFolderInPlaceOf(entry.overlayPath);
        else
            QVERIFY(QFile::remove(entry.overlayPath));
        QString folder;
        QCOMPARE(duplicateProfileFiles(profilesRootPath(), entry, &folder),
                 (StoreFailure{StoreStep::DuplicateOverlay, {}}));
        QCOMPARE(treeOf(folder), QStringList({u"image.png"_s}));
    }

    void duplicatingWithoutTheMappingLeavesPictureAndOverlay()
    {
        const GamepadEntry entry = stored();
        putFolderInPlaceOf(mappingPath(entry.dirPath));
        QString folder;
        QCOMPARE(duplicateProfileFiles(profilesRootPath(), entry, &folder),
                 (StoreFailure{StoreStep::DuplicateMappingCopy, mappingPath(entry.dirPath)}));
        QCOMPARE(treeOf(folder), QStringList({u"image.png"_s, u"overlay.json"_s}));
    }

    void duplicatingStopsWhereTheDiskEnds_data()
    {
        QTest::addColumn<int>("places");
        QTest::addColumn<bool>("hasMapping");
        QTest::addColumn<StoreStep>("step");
        QTest::addColumn<QStringList>("rest");
        const QStringList two{u"image.png"_s, u"overlay.json"_s};
        QTest::newRow("picture") << 2 << true << StoreStep::DuplicatePicture << QStringList();
        QTest::newRow("overlay") << 3 << true << StoreStep::DuplicateOverlay << QStringList({u"image.png"_s});
        QTest::newRow("mapping copy") << 4 << true << StoreStep::DuplicateMappingCopy << two;
        QTest::newRow("default mapping") << 4 << false << StoreStep::DuplicateDefaultMapping << two;
        QTest::newRow("meta") << 5 << true << StoreStep::DuplicateMeta
                              << QStringList(u"configActionGamepad.json"_s) + two;
    }

    void duplicatingStopsWhereTheDiskEnds()
    {
        QFETCH(const int, places);
        QFETCH(const bool, hasMapping);
        QFETCH(const StoreStep, step);
        const GamepadEntry entry = stored();
        if (!hasMapping)
            QVERIFY(QFile::remove(mappingPath(entry.dirPath)));
        const QString root = home(u"disk"_s);
        const SmallDisk disk(root, places);
        GAMEPAD_NEED_MOUNTED(disk);
        QString folder;
        const StoreResult result = duplicateProfileFiles(root, entry, &folder);
        QVERIFY(result);
        QCOMPARE(result->step, step);
        if (step == StoreStep::DuplicateMappingCopy)
            QCOMPARE(result->error, mappingPath(entry.dirPath));
        if (step == StoreStep::DuplicateDefaultMapping)
            QCOMPARE(result->error, cannotWrite(mappingPath(folder)));
        if (step == StoreStep::DuplicateMeta)
            QCOMPARE(result->error, cannotWrite(folder + "/meta.json"_L1));
        QTEST(treeOf(folder), "rest");
        QVERIFY(!loadEntryFromDir(folder, nullptr));
        QCOMPARE(treeOf(entry.dirPath).size(), hasMapping ? 4 : 3); // the source stays as it was
    }

    void aRenameTouchesMetaAlone()
    {
        GamepadEntry entry = stored();
        const QByteArray overlay = bytesIn(entry.overlayPath);
        entry.name = u"New/name"_s;
        QVERIFY(!saveRenamedProfile(entry));
        const QJsonObject meta = objectIn(entry.dirPath + "/meta.json"_L1);
        QCOMPARE(meta["name"_L1].toString(), u"New/name"_s);
        QCOMPARE(meta.size(), 9);
        QVERIFY(!meta.contains("createdAt"_L1));
        QCOMPARE(treeOf(entry.dirPath), completeProfile);
        QCOMPARE(bytesIn(entry.overlayPath), overlay);

        putFolderInPlaceOf(entry.dirPath + "/meta.json"_L1);
        QCOMPARE(saveRenamedProfile(entry),
                 (StoreFailure{StoreStep::RenameMeta, cannotWrite(entry.dirPath + "/meta.json"_L1)}));
    }

    void theFormerPictureStaysUnderAnotherSuffix()
    {
        GamepadEntry entry = stored();
        const QByteArray former = bytesIn(entry.imagePath);
        QString path = entry.imagePath;
        QVERIFY(!copyProfilePicture(entry, picture(u"new.JPG"_s), &path));
        QCOMPARE(path, entry.dirPath + "/image.jpg"_L1);
        QCOMPARE(bytesIn(entry.imagePath), former);
        entry.imagePath = path;
        QVERIFY(!saveChangedPicture(entry));
        QCOMPARE(objectIn(entry.dirPath + "/meta.json"_L1)["image"_L1].toString(), u"image.jpg"_s);
        QCOMPARE(objectIn(entry.dirPath + "/meta.json"_L1).size(), 9);
        QCOMPARE(treeOf(entry.dirPath).size(), 5);
    }

    void aPictureThatVanishedLeavesTheProfileAsItWas()
    {
        const GamepadEntry entry = stored();
        const QByteArray former = bytesIn(entry.imagePath);
        const QByteArray meta = bytesIn(entry.dirPath + "/meta.json"_L1);
        const QString gone = home(u"gone.png"_s);
        QString path = u"unchanged"_s;
        QCOMPARE(copyProfilePicture(entry, gone, &path),
                 (StoreFailure{StoreStep::ImagePicture, cannotCopy(gone, entry.imagePath)}));
        QCOMPARE(path, u"unchanged"_s);
        QCOMPARE(bytesIn(entry.imagePath), former);
        QCOMPARE(bytesIn(entry.dirPath + "/meta.json"_L1), meta);
    }

    void aChangedPictureThatMetaCannotTell()
    {
        const GamepadEntry entry = stored();
        putFolderInPlaceOf(entry.dirPath + "/meta.json"_L1);
        QCOMPARE(saveChangedPicture(entry),
                 (StoreFailure{StoreStep::ImageMeta, cannotWrite(entry.dirPath + "/meta.json"_L1)}));
    }
};

GAMEPAD_TEST_MAIN(TestProfileChanges)
#include "tst_profilechanges.moc"
