// SPDX-License-Identifier: MIT
#pragma once

#include "gamepadentry.h"

#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

/// The folder that all profiles lie in, made with what lies above it where it is missing. Where it cannot be
/// made, writing into it is what fails.
[[nodiscard]] QString makeProfilesRoot();

/// Paths of all folders in `root`, profiles or not, by name.
[[nodiscard]] QStringList profileFolders(const QString &root);

/// Whether `folder` is a profile; then `*entry`, which can be null, is filled in, without a list item.
[[nodiscard]] bool loadEntryFromDir(const QString &folder, GamepadEntry *entry);

/// A new profile's folder in `root`, empty so far, as an entry that holds its id and its path.
[[nodiscard]] GamepadEntry makeProfileFolder(const QString &root);

/// Removes a profile's folder with all that is in it. Of a link to a folder elsewhere only the link goes.
void removeProfileFolder(const QString &folder);

/// Path of the mapping document in a profile's folder.
[[nodiscard]] QString mappingPath(const QString &folder);

/// A mapping document that maps nothing.
[[nodiscard]] QJsonObject defaultMappingDocument();

/// Writes the default mapping document where the folder has none. False, with the reason in `*error`, where
/// that fails.
[[nodiscard]] bool ensureMapping(const QString &folder, QString *error);

/// Writes "meta.json" anew as of this moment: `writeMeta` for a profile that has one, `writeNewMeta` for a
/// new one. False, with the reason in `*error`, where that fails.
[[nodiscard]] bool writeMeta(const GamepadEntry &entry, QString *error);
[[nodiscard]] bool writeNewMeta(const GamepadEntry &entry, QString *error);
