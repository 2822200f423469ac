// SPDX-License-Identifier: MIT
#include "actionsfile.h"

#include "actionsdocument.h"
#include "openfile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

using namespace Qt::StringLiterals;

namespace
{
std::optional<QJsonArray> readActionsFile(const QString &path)
{
    QFile file(path);
    if (!openToRead(file))
        return {};
    return readActions(file.readAll());
}
} // namespace

QString userActionsPath()
{
    const QString location = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return location.isEmpty() ? QString() : QDir(location).filePath(u"Gamepads/actions.json"_s);
}

QString seedActionsPath(const QStringList &folders)
{
    const QString places[] = {
        u"plugins/DeviceInterface/GamepadInterface/configuration/Gamepads/actions.json"_s,
        u"configuration/Gamepads/actions.json"_s,
    };
    for (const QString &folder : folders) {
        for (const QString &place : places) {
            const QString path = QDir(folder).filePath(place);
            if (QFileInfo::exists(path))
                return QDir::cleanPath(path);
        }
    }
    return {};
}

LoadedActions loadActions(const QString &userPath, const QStringList &seedFolders)
{
    if (const auto actions = readActionsFile(userPath))
        return {*actions, userPath};
    const auto seed = readActionsFile(seedActionsPath(seedFolders));
    if (!seed)
        return {{}, userPath};
    if (!userPath.isEmpty() && !QFileInfo::exists(userPath))
        writeActions(userPath, *seed);
    return {*seed, userPath};
}

bool writeActions(const QString &path, const QJsonArray &actions)
{
    // Before the file is opened, which empties it.
    const QByteArray json = actionsJson(actions);
    QFile file(path);
    if (!openToWrite(file))
        return false;
    return file.write(json) == json.size();
}
