// SPDX-License-Identifier: MIT
// A profile's "meta.json": whatever it says, no path leads out of the profile's folder, and what is written
// for it reads as the same again.
#include "fuzzing.h"
#include "metadocument.h"
#include "plainfilename.h"
#include "profilestore.h"
#include "testhome.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace
{
QJsonObject throughText(const QJsonObject &json)
{
    return QJsonDocument::fromJson(QJsonDocument(json).toJson(QJsonDocument::Indented)).object();
}

GamepadEntry entryOf(const MetaDocument &meta, const QString &folder)
{
    GamepadEntry entry;
    entry.id = meta.id;
    entry.name = meta.name;
    entry.dirPath = folder;
    entry.imagePath = folder + u'/' + meta.image;
    entry.overlayPath = folder + u'/' + meta.overlayFile;
    entry.deviceName = meta.deviceName;
    return entry;
}

void checkRecord(const MetaDocument &meta, const QString &folder)
{
    mustHold(!meta.id.isNull(), "a profile without an id");
    mustHold(isPlainFileName(meta.image) && isPlainFileName(meta.overlayFile), "a file name leads away");
    const GamepadEntry entry = entryOf(meta, folder);
    const QJsonObject rewritten = metaDocumentJson(entry, QDateTime::currentDateTimeUtc());
    mustHold(rewritten.size() == 9, "a rewritten record has nine keys");
    mustHold(newMetaDocumentJson(entry, QDateTime::currentDateTimeUtc()).size() == 10,
             "a new record has ten keys");
    mustHold(readMetaDocument(throughText(rewritten)) == meta,
             "the record changes when it is written and read");
}

void write(const QString &path, const uint8_t *data, size_t size)
{
    QFile file(path);
    const auto length = static_cast<qint64>(size);
    mustHold(file.open(QIODevice::WriteOnly) &&
                 file.write(reinterpret_cast<const char *>(data), length) == length,
             "no file can be written here");
}

void checkFolder(const QString &folder)
{
    GamepadEntry entry;
    if (!loadEntryFromDir(folder, &entry))
        return;
    mustHold(QFileInfo(entry.imagePath).absolutePath() == folder, "the picture lies elsewhere");
    mustHold(QFileInfo(entry.overlayPath).absolutePath() == folder, "the overlay lies elsewhere");
    mustHold(QFileInfo::exists(entry.overlayPath), "a profile without an overlay");
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QString folder = [] {
        const QString path = QDir(temporaryHome()).absoluteFilePath(u"profile"_s);
        QDir().mkpath(path);
        write(path + "/overlay.json"_L1, reinterpret_cast<const uint8_t *>("{}"), 2);
        return path;
    }();
    if (const auto meta = readMetaDocument(jsonOf(data, size).object()))
        checkRecord(*meta, folder);
    write(folder + "/meta.json"_L1, data, size);
    checkFolder(folder);
    return 0;
}
