// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QUuid>

/// The name of a mapping's file, from `config` of a profile's `meta.json`. One that is blank, or no plain
/// file name, counts as missing.
[[nodiscard]] QString mappingFileName(const QString &config);

/// Where the mapping of a profile below `root` lies, whether or not it exists; empty for a null `id`. Reads
/// the profile's `meta.json`, whose `config` counts with the blanks around it.
[[nodiscard]] QString mappingFilePath(const QString &root, const QUuid &id);

/// The object in a file. Where it cannot be read or is none, an empty one, `ok` false and the reason in
/// `error`; both can be null.
[[nodiscard]] QJsonObject readMappingFile(const QString &path, bool *ok, QString *error);

/// Gives the bridges of every profile below `root` the tasks that `actions` have now. A file is written where
/// any of them found its action, alike or not; one that cannot be read or written does not keep the others
/// from it. Here blanks around a `config` do not count.
void refreshMappings(const QString &root, const QJsonArray &actions);
