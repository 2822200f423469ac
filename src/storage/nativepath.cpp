// SPDX-License-Identifier: MIT
#include "nativepath.h"

#include <QtCore/QFile>

std::filesystem::path nativePath(const QString &path)
{
#ifdef Q_OS_WIN
    return path.toStdWString();
#else
    return QFile::encodeName(path).constData();
#endif
}
