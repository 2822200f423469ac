// SPDX-License-Identifier: MIT
#include "gamepadsfile.h"

#include "makepath.h"
#include "nativepath.h"
#include "openfile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

#include <system_error>

using namespace Qt::StringLiterals;

namespace
{
// Qt warns of such a name wherever it is used, and no disk takes it.
bool isNoName(const QString &path)
{
    return path.contains(QChar::Null);
}

bool isPipe(const QString &path)
{
    std::error_code ignored; // then it is none
    return std::filesystem::is_fifo(nativePath(path), ignored);
}

bool writeWhole(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const bool written = file.write(bytes) == bytes.size() && file.flush();
    file.close();
    // What a full disk refuses can show as late as here.
    if (written && file.error() == QFileDevice::NoError)
        return true;
    file.remove();
    return false;
}
} // namespace

QString gamepadsFilePath(const QString &context)
{
    // Cleaned, since a way up through a folder that is not there leads nowhere.
    const QString folder = QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                                           u'/' + context + "/VelorCom"_L1);
    makePath(folder);
    return folder + "/gamepads.json"_L1;
}

QByteArray readGamepadsFile(const QString &path)
{
    QFile file(path);
    return !isNoName(path) && openToRead(file) ? file.readAll() : QByteArray();
}

bool writeGamepadsFile(const QString &path, const QByteArray &json)
{
    if (isNoName(path))
        return false;
    const QString temporary = path + ".tmp"_L1;
    // To open a pipe is to wait for its reader.
    if (isPipe(temporary))
        QFile::remove(temporary);
    if (!writeWhole(temporary, json))
        return false;
    QFile::remove(path);
    return QFile::rename(temporary, path);
}
