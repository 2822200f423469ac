// SPDX-License-Identifier: MIT
#pragma once

#include "hostcopy.h"

#include <QtCore/QPluginLoader>

/// The built plugin file, loaded as a host loads it. The provider is null when loading failed; `loader`
/// then says why.
struct LoadedPlugin
{
    QPluginLoader loader{QStringLiteral(GAMEPAD_PLUGIN)};
    QObject *instance = loader.instance();
    IComInterfaceModelProvider *provider = qobject_cast<IComInterfaceModelProvider *>(instance);
};
