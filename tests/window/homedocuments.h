// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The documents of the configuration window, as they lie in the home of a test.
namespace home
{
/// Writes a document, folders included.
void write(const QString &path, const QJsonObject &document);
QByteArray bytesOf(const QString &path);
/// Empty where the file is missing or broken.
QJsonObject documentAt(const QString &path);

/// The files of a profile, whose rows come in the order of the numbers, 1 to 9.
QString metaPath(int profile);
QString overlayPath(int profile);
QString mappingPath(int profile);
QString actionsPath();

/// Writes `meta.json` and `overlay.json` of a profile called "Profile %1", with a pastille of each title.
void storeProfile(int profile, const QStringList &titles);
/// Writes `actions.json`.
void storeActions(const QJsonArray &actions);
/// Writes a mapping that holds entries of a host's beside the bridges.
void storeMapping(int profile, const QJsonArray &bridges);

QJsonArray storedActions();
QJsonArray storedBridges(int profile);
/// The names of the stored actions.
QStringList storedNames();

/// Functions "F" (`p`, int), "G" (`t`, string; `l`, double; `o`, bool) and "H" without parameters.
QJsonObject services();
/// "A" runs "F" with its parameter `speed` (int, 1) on the condition "W"; "B" runs "G" with `text`, `level`
/// (double, 1.5) and `on` (bool); "C" runs "H".
QJsonArray actions();
/// Bridges of "A" and "B", at "but_1", "joy_2" and "but_4". No value in them is one that an empty field
/// would give.
QJsonArray bridges();
} // namespace home
