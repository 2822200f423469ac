// SPDX-License-Identifier: MIT
#include "openfile.h"

#include "nativepath.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

bool openToRead(QFile &file)
{
    return QFileInfo(file.fileName()).isFile() && file.open(QIODevice::ReadOnly);
}

bool openToWrite(QFile &file)
{
    if (file.fileName().isEmpty())
        return false;
    std::error_code failed; // a file that is not there yet is no pipe
    return !std::filesystem::is_fifo(std::filesystem::status(nativePath(file.fileName()), failed)) &&
           file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}
