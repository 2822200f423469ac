// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

/// The object in a JSON file; an empty one, `*ok` false and the reason in `*error`, where the file cannot be
/// read or holds no object. Either pointer can be null.
[[nodiscard]] QJsonObject readJsonFile(const QString &path, bool *ok, QString *error);

/// Writes `object` over the file. False, with the reason in `*error`, only where the file cannot be opened:
/// whether the disk took all of it is not asked. `error` can be null.
[[nodiscard]] bool writeJsonFile(const QString &path, const QJsonObject &object, QString *error,
                                 bool indented);

/// Writes `bytes` over the file. False, with the reason in `*error`, also where the disk took only a part,
/// which stays. `error` can be null.
[[nodiscard]] bool writeBytesFile(const QString &path, const QByteArray &bytes, QString *error);
