// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QString>

/// The function list of a system configuration: the document itself, or else the array under `ref`, under
/// `refs`, or under `ref` in the object `services`, whichever is the first that is an array. Empty without
/// one.
[[nodiscard]] QJsonArray extractRefs(const QJsonDocument &document);

/// What tells whether two entries are the same function: the name, trimmed and in lower case. Empty for an
/// entry that has none.
[[nodiscard]] QString refKey(const QJsonValue &entry);

/// The host's entries, then those of the system that name none of them. An entry without a key is always
/// taken. Without system entries the host's stand as they are, their own duplicates included.
[[nodiscard]] QJsonArray mergeRefs(const QJsonArray &host, const QJsonArray &system);
