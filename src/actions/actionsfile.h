// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What a start finds: the actions, and where they are saved from then on. The path is empty on a platform
/// without a place for the user's data.
struct LoadedActions
{
    QJsonArray actions;
    QString storagePath;

    bool operator==(const LoadedActions &) const = default;
};

/// "Gamepads/actions.json" below the application's data location; empty where there is no such location. The
/// path only: nothing is created.
[[nodiscard]] QString userActionsPath();

/// The actions that come with an installation: the first file that exists in `folders`, in their order, or an
/// empty text.
[[nodiscard]] QString seedActionsPath(const QStringList &folders);

/// Loads the user's file, or where that does not open or does not parse the seed in `seedFolders`, or
/// nothing. A seed becomes the user's file if there is none yet; a broken one of the user's is left alone.
[[nodiscard]] LoadedActions loadActions(const QString &userPath, const QStringList &seedFolders);

/// Writes the document of `actions` over the file at `path`, in place. False where it could not be opened or
/// not be written in full. Creates no folder.
bool writeActions(const QString &path, const QJsonArray &actions);
