// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

/// Reads any JSON document. False, with the reason in `error` and `out` as it was, where the file cannot be
/// read or holds no JSON.
[[nodiscard]] bool loadMappingFile(const QString &path, QJsonDocument *out, QString *error);

/// Writes `doc` indented over the file. False, with the reason in `error`, where not all of it could be
/// written; what was written stays.
[[nodiscard]] bool writeMappingFile(const QString &path, const QJsonObject &doc, QString *error);
