// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

class IComInterfaceModelProvider;

/// What came of loading a plugin file: the provider, or what is wrong and what to do about it. The provider
/// belongs to the loader and lives as long as the process.
struct LoadedProvider
{
    IComInterfaceModelProvider *provider = nullptr;
    QString problem;
};

/// Loads the plugin in `file` and asks it for the contract's interface.
[[nodiscard]] LoadedProvider loadProvider(const QString &file);
