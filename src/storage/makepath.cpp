// SPDX-License-Identifier: MIT
#include "makepath.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <filesystem>
#include <system_error>

bool makePath(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    if (clean.contains(QChar::Null)) // would make the folder that the name's beginning names
        return false;
    std::error_code ignored; // the folder's presence is the answer
#ifdef Q_OS_WIN
    std::filesystem::create_directories(clean.toStdWString(), ignored);
#else
    // Qt's own bytes: the library's conversion throws on text that is no valid UTF-16.
    std::filesystem::create_directories(QFile::encodeName(clean).constData(), ignored);
#endif
    return QFileInfo(clean).isDir();
}
