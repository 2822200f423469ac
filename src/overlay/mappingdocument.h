// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

/// The first entry of `catalogue` whose trimmed name is `name` without regard to case, or an empty object.
/// `name` itself is not trimmed; a blank one finds nothing.
[[nodiscard]] QJsonObject findFunction(const QJsonArray &catalogue, const QString &name);

/// The tasks of a function, with the placeholders of `args` filled in: `tasks`, or `items` where that is
/// empty. What is no object is dropped.
[[nodiscard]] QJsonArray buildTaskList(const QJsonObject &function, const QJsonObject &args);

/// `value` with each text "param:NAME", at any depth, replaced by the argument of that name, whatever its
/// type. An exact name comes before one in another case; without either, the text stays.
[[nodiscard]] QJsonValue substituteParams(const QJsonValue &value, const QJsonObject &args);

/// What two catalogue entries of the same function have in common: an object's `name`, or a text, trimmed
/// and in lower case. Empty for all else.
[[nodiscard]] QString functionKey(const QJsonValue &entry);

/// The catalogue in a document: the document itself where it is an array, else its `ref`, else
/// `services.ref`.
[[nodiscard]] QJsonArray refArrayOf(const QJsonDocument &document);

/// `catalogue` with the entries of `added` behind it that it does not hold yet. Entries without a key are
/// always added.
[[nodiscard]] QJsonArray mergedCatalogue(const QJsonArray &catalogue, const QJsonArray &added);

/// A tool box's configuration as a task: `ref`, which may come from `action`, `action` where there is one,
/// and `args`.
[[nodiscard]] QJsonObject normalizedToolConfig(const QJsonObject &config);

/// A mapping of `bridges` alone, with the parts that a host expects around them left empty.
[[nodiscard]] QJsonObject mappingDocument(const QJsonArray &bridges);
