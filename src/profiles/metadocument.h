// SPDX-License-Identifier: MIT
#pragma once

#include "gamepadentry.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonObject>

#include <optional>

/// What a profile's "meta.json" tells the editor, with all defaults in place.
struct MetaDocument
{
    QUuid id; ///< never null
    QString name;
    QString image;       ///< plain file name
    QString overlayFile; ///< plain file name
    QString deviceName;

    bool operator==(const MetaDocument &) const = default;
};

/// Nothing where `type` is another or `id` is none. What is missing, of a wrong type or, as a file name,
/// would leave the folder, takes its default.
[[nodiscard]] std::optional<MetaDocument> readMetaDocument(const QJsonObject &json);

/// The document of a profile that is rewritten: nine keys, without the day of its making. `now` is in UTC.
[[nodiscard]] QJsonObject metaDocumentJson(const GamepadEntry &entry, const QDateTime &now);

/// The document of a profile that is new: the same and `createdAt`.
[[nodiscard]] QJsonObject newMetaDocumentJson(const GamepadEntry &entry, const QDateTime &now);
