// SPDX-License-Identifier: MIT
#include "installationfolders.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

using namespace Qt::StringLiterals;

QStringList installationFolders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return {program.path(), program.filePath(u".."_s), program.filePath(u"../.."_s),
            program.filePath(u"../../.."_s), QDir::currentPath()};
}
