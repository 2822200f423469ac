// SPDX-License-Identifier: MIT
#include "profilechanges.h"

#include "imagefile.h"
#include "jsonfiles.h"
#include "profilestore.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace
{
QString picturePath(const QString &folder, const QString &source)
{
    return folder + u'/' + pictureFileName(QFileInfo(source).suffix());
}

QString newOverlayPath(const QString &folder)
{
    return folder + "/overlay.json"_L1;
}

bool copiesFile(const QString &from, const QString &to)
{
    return QFileInfo(from).isFile() && QFile::copy(from, to); // a pipe would be waited for
}
} // namespace

StoreResult createProfileFiles(const QString &root, const NewProfile &profile, QString *folder)
{
    GamepadEntry entry = makeProfileFolder(root);
    *folder = entry.dirPath;
    entry.name = profile.name;
    entry.deviceName = profile.deviceName;
    entry.imagePath = picturePath(entry.dirPath, profile.picture);
    entry.overlayPath = newOverlayPath(entry.dirPath);

    QString error;
    if (!copyOrConvertImage(profile.picture, entry.imagePath, &error))
        return StoreFailure{StoreStep::CreatePicture, error};
    if (!writeJsonFile(entry.overlayPath, profile.overlay, &error, true))
        return StoreFailure{StoreStep::CreateOverlay, error};
    if (!writeNewMeta(entry, &error))
        return StoreFailure{StoreStep::CreateMeta, error};
    if (!ensureMapping(entry.dirPath, &error))
        return StoreFailure{StoreStep::CreateMapping, error};
    return std::nullopt;
}

StoreResult saveProfileFiles(const GamepadEntry &entry, const QByteArray &overlay)
{
    QString error;
    if (!writeBytesFile(entry.overlayPath, overlay, &error))
        return StoreFailure{StoreStep::SaveOverlay, error};
    if (!ensureMapping(entry.dirPath, &error))
        return StoreFailure{StoreStep::SaveMapping, error};
    if (!writeMeta(entry, &error))
        return StoreFailure{StoreStep::SaveMeta, error};
    return std::nullopt;
}

StoreResult duplicateProfileFiles(const QString &root, const GamepadEntry &source, QString *folder)
{
    GamepadEntry copy = makeProfileFolder(root);
    *folder = copy.dirPath;
    copy.name = source.name + " (copie)"_L1;
    copy.imagePath = picturePath(copy.dirPath, source.imagePath);
    copy.overlayPath = newOverlayPath(copy.dirPath);

    QString error;
    if (!copyOrConvertImage(source.imagePath, copy.imagePath, &error))
        return StoreFailure{StoreStep::DuplicatePicture, error};
    if (!copiesFile(source.overlayPath, copy.overlayPath))
        return StoreFailure{StoreStep::DuplicateOverlay, {}};
    const QString mapping = mappingPath(source.dirPath);
    if (QFile::exists(mapping) && !copiesFile(mapping, mappingPath(copy.dirPath)))
        return StoreFailure{StoreStep::DuplicateMappingCopy, mapping};
    if (!ensureMapping(copy.dirPath, &error))
        return StoreFailure{StoreStep::DuplicateDefaultMapping, error};
    if (!writeNewMeta(copy, &error))
        return StoreFailure{StoreStep::DuplicateMeta, error};
    return std::nullopt;
}

StoreResult saveRenamedProfile(const GamepadEntry &entry)
{
    QString error;
    if (!writeMeta(entry, &error))
        return StoreFailure{StoreStep::RenameMeta, error};
    return std::nullopt;
}

StoreResult copyProfilePicture(const GamepadEntry &entry, const QString &source, QString *imagePath)
{
    const QString path = picturePath(entry.dirPath, source);
    QString error;
    if (!copyOrConvertImage(source, path, &error))
        return StoreFailure{StoreStep::ImagePicture, error};
    *imagePath = path;
    return std::nullopt;
}

StoreResult saveChangedPicture(const GamepadEntry &entry)
{
    QString error;
    if (!writeMeta(entry, &error))
        return StoreFailure{StoreStep::ImageMeta, error};
    return std::nullopt;
}
