// SPDX-License-Identifier: MIT
#include "openfile.h"

#include "nativepath.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace
{
constexpr qint64 largestDocument = 512LL * 1024 * 1024; // a host cannot be made to hold whatever lies there
} // namespace

bool openToRead(QFile &file)
{
    const QFileInfo info(file.fileName());
    return info.isFile() && info.size() <= largestDocument && file.open(QIODevice::ReadOnly);
}

bool openToWrite(QFile &file)
{
    if (file.fileName().isEmpty())
        return false;
    std::error_code failed; // a file that is not there yet is no pipe
    return !std::filesystem::is_fifo(std::filesystem::status(nativePath(file.fileName()), failed)) &&
           file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}
