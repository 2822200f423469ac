// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <functional>
#include <optional>

/// Files that another process writes, waited for without an event loop. What is half written is no document
/// yet.
namespace written
{
/// The document at `path`, once `condition` takes it.
[[nodiscard]] std::optional<QJsonObject> document(const QString &path,
                                                  const std::function<bool(const QJsonObject &)> &condition);
/// The only folder in `folder`, once there is one that holds a file of that name.
[[nodiscard]] QString folderWith(const QString &folder, const QString &file);
/// The size of the file, once it has content; 0 without it.
[[nodiscard]] qint64 size(const QString &path);
} // namespace written
