// SPDX-License-Identifier: MIT
#include "profilesroot.h"

#include <QtCore/QDir>
#include <QtCore/QStandardPaths>

using namespace Qt::StringLiterals;

QString profilesBasePath()
{
    const QString location = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return location.isEmpty() ? QDir::homePath() + "/.velor"_L1 : location;
}

QString profilesRootPath()
{
    return profilesBasePath() + "/Gamepads"_L1;
}
