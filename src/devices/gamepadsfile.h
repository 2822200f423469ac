// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Where the devices of a context are remembered: below the application's data location, `context`,
/// "VelorCom/gamepads.json". Creates the folders, so that a first run has somewhere to write.
[[nodiscard]] QString gamepadsFilePath(const QString &context);

/// All of the file, or nothing where it cannot be read.
[[nodiscard]] QByteArray readGamepadsFile(const QString &path);

/// Replaces the file whole, by way of `path` with ".tmp" behind it. False where that failed; the old file
/// goes only when the new text is on the disk in full.
[[nodiscard]] bool writeGamepadsFile(const QString &path, const QByteArray &json);
