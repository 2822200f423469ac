// SPDX-License-Identifier: MIT
#include "makepath.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <filesystem>
#include <system_error>

bool makePath(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    std::error_code ignored; // the folder's presence is the answer
    std::filesystem::create_directories(std::filesystem::path(clean.toStdU16String()), ignored);
    return QFileInfo(clean).isDir();
}
