// SPDX-License-Identifier: MIT
#include "profilestore.h"

#include "jsonfiles.h"
#include "makepath.h"
#include "metadocument.h"
#include "profilesroot.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>

using namespace Qt::StringLiterals;

namespace
{
QString metaPath(const QString &folder)
{
    return folder + "/meta.json"_L1;
}
} // namespace

QString makeProfilesRoot()
{
    const QString root = profilesRootPath();
    makePath(root);
    return root;
}

QStringList profileFolders(const QString &root)
{
    QStringList folders = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (QString &folder : folders)
        folder.prepend(root + u'/');
    return folders;
}

bool loadEntryFromDir(const QString &folder, GamepadEntry *entry)
{
    bool read = false;
    const auto meta = readMetaDocument(readJsonFile(metaPath(folder), &read, nullptr));
    if (!read || !meta)
        return false;
    const QDir dir(folder);
    const QString overlayPath = dir.absoluteFilePath(meta->overlayFile);
    if (!QFile::exists(overlayPath))
        return false;
    if (entry) {
        *entry = {
            .id = meta->id,
            .name = meta->name,
            .dirPath = folder,
            .imagePath = dir.absoluteFilePath(meta->image),
            .overlayPath = overlayPath,
            .deviceName = meta->deviceName,
        };
    }
    return true;
}

GamepadEntry makeProfileFolder(const QString &root)
{
    GamepadEntry entry;
    entry.id = QUuid::createUuid();
    entry.dirPath = root + u'/' + entry.id.toString(QUuid::WithoutBraces);
    makePath(entry.dirPath);
    return entry;
}

void removeProfileFolder(const QString &folder)
{
    if (QFileInfo(folder).isSymLink())
        QFile::remove(folder);
    else
        QDir(folder).removeRecursively();
}

QString mappingPath(const QString &folder)
{
    return folder + "/configActionGamepad.json"_L1;
}

QJsonObject defaultMappingDocument()
{
    return {
        {"signals"_L1, QJsonArray()}, {"onStartup"_L1, QJsonArray()}, {"onClose"_L1, QJsonArray()},
        {"timers"_L1, QJsonArray()},  {"bridges"_L1, QJsonArray()},   {"ref"_L1, QJsonArray()},
    };
}

bool ensureMapping(const QString &folder, QString *error)
{
    const QString path = mappingPath(folder);
    return QFile::exists(path) || writeJsonFile(path, defaultMappingDocument(), error, true);
}

bool writeMeta(const GamepadEntry &entry, QString *error)
{
    return writeJsonFile(metaPath(entry.dirPath), metaDocumentJson(entry, QDateTime::currentDateTimeUtc()),
                         error, true);
}

bool writeNewMeta(const GamepadEntry &entry, QString *error)
{
    return writeJsonFile(metaPath(entry.dirPath), newMetaDocumentJson(entry, QDateTime::currentDateTimeUtc()),
                         error, true);
}
