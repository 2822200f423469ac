// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

/// Writes a file below the profiles root of the test's home, folders included, and returns its path.
QString writeBelowRoot(const QString &path, const QByteArray &content = "{}");

/// Writes the `meta.json` of the profile in `folder`; the type is the right one unless `meta` has its own.
void writeMeta(const QString &folder, QJsonObject meta);
