// SPDX-License-Identifier: MIT
#include "makepath.h"

#include "nativepath.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <system_error>

bool makePath(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (clean.contains(QChar::Null)) // would make the folder that the name's beginning names
        return false;
    std::error_code ignored; // the folder's presence is the answer
    std::filesystem::create_directories(nativePath(clean), ignored);
    return QFileInfo(clean).isDir();
}
