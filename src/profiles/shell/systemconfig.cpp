// SPDX-License-Identifier: MIT
#include "systemconfig.h"

#include "functionrefs.h"
#include "installationfolders.h"
#include "openfile.h"

#include <QtCore/QDateTime>
#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

using namespace Qt::StringLiterals;

namespace
{
struct LastRead
{
    QString path;
    QDateTime changed;
    QJsonArray refs;
};

/// A function's static, so that loading the plugin runs no constructor.
LastRead &lastRead()
{
    static LastRead last;
    return last;
}
} // namespace

QString findSystemConfigPath()
{
    const QString ofUser = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (!ofUser.isEmpty() && QFile::exists(ofUser + "/system/systemConfig.json"_L1))
        return QDir::cleanPath(ofUser + "/system/systemConfig.json"_L1);

    const QStringList folders = installationFolders();
    for (const QString &folder : folders) {
        const QString path = folder + "/configuration/system/systemConfig.json"_L1;
        if (QFile::exists(path))
            return QDir::cleanPath(path);
    }
    return {};
}

QJsonArray loadSystemConfigRefs()
{
    const QString path = findSystemConfigPath();
    if (path.isEmpty())
        return {};
    const QDateTime changed = QFileInfo(path).lastModified();
    LastRead &last = lastRead();
    if (last.path == path && changed.isValid() && last.changed == changed)
        return last.refs;

    QFile file(path);
    QJsonParseError parse;
    QJsonDocument document;
    if (openToRead(file))
        document = QJsonDocument::fromJson(file.readAll(), &parse);
    if (!file.isOpen() || parse.error != QJsonParseError::NoError) {
        qWarning() << "[Gamepad] Failed to read systemConfig.json:" << path;
        return {};
    }
    last = {.path = path, .changed = changed, .refs = extractRefs(document)};
    return last.refs;
}
