// SPDX-License-Identifier: MIT
#include "testhome.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
std::unique_ptr<QTemporaryDir> &home()
{
    static std::unique_ptr<QTemporaryDir> instance;
    return instance;
}
} // namespace

void enterTemporaryHome()
{
    home() = std::make_unique<QTemporaryDir>();
    const auto below = [](const char *variable, QLatin1StringView folder) {
        const QString path = home()->path() + folder;
        QDir().mkpath(path);
        qputenv(variable, QFile::encodeName(path));
    };
    below("HOME", ""_L1);
    below("XDG_DATA_HOME", "/data"_L1);
    below("XDG_CONFIG_HOME", "/config"_L1);
    below("XDG_CACHE_HOME", "/cache"_L1);
    qputenv("XDG_DATA_DIRS", QFile::encodeName(home()->path() + "/system"_L1));
}

QString temporaryHome()
{
    return home()->path();
}

void clearTemporaryHome()
{
    const QDir dir(temporaryHome() + "/data"_L1);
    const QStringList entries = dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        QDir(dir.filePath(entry)).removeRecursively();
        QFile::remove(dir.filePath(entry));
    }
}
