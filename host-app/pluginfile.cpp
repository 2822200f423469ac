// SPDX-License-Identifier: MIT
#include "pluginfile.h"

#include "icominterfacemodelprovider.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QPluginLoader>

using namespace Qt::StringLiterals;

LoadedProvider loadProvider(const QString &file)
{
    const QString shown = QDir::toNativeSeparators(file);
    if (!QFileInfo(file).isFile()) {
        return {.provider = nullptr,
                .problem =
                    u"There is no plugin file %1.\nBuild it with \"./dev build\", or name another with "
                    "--plugin FILE."_s.arg(shown)};
    }
    QPluginLoader loader(QFileInfo(file).absoluteFilePath());
    QObject *instance = loader.instance();
    if (!instance) {
        return {.provider = nullptr,
                .problem = u"The plugin %1 cannot be loaded:\n%2\nIt must be built for Qt %3 or an older one "
                           u"of the same major "
                           "version, and its libraries (SFML) where the system finds them."_s.arg(
                               shown, loader.errorString(), QString::fromLatin1(qVersion()))};
    }
    auto *provider = qobject_cast<IComInterfaceModelProvider *>(instance);
    if (!provider) {
        return {.provider = nullptr,
                .problem = u"%1 is a plugin, but no family of devices: it does not answer to %2."_s.arg(
                    shown, QLatin1StringView(IComInterfaceModelProvider_iid))};
    }
    return {.provider = provider, .problem = {}};
}
