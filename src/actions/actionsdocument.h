// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>

#include <optional>

class QJsonDocument;

/// The list that `document` holds: the document itself when it is an array, else the array under `ref`, else
/// the one under `refs`. Any other document holds an empty list.
[[nodiscard]] QJsonArray actionsOf(const QJsonDocument &document);

/// `actionsOf` a text; nothing when `json` does not parse.
[[nodiscard]] std::optional<QJsonArray> readActions(const QByteArray &json);

/// The document of `actions` as it is written: the list under `ref`, indented.
[[nodiscard]] QByteArray actionsJson(const QJsonArray &actions);

/// What an action is called: `text` trimmed, or its row number counted from 1 where that leaves nothing.
[[nodiscard]] QString displayName(const QString &text, int index);

/// The name of the action at `index`, which must be in range, as it is stored: empty for no text.
[[nodiscard]] QString storedName(const QJsonArray &actions, int index);

/// An action as it begins: with a name, without steps.
[[nodiscard]] QJsonObject newAction();

/// `tasks` as an action stores them: without those that call nothing, and without any `action` key.
[[nodiscard]] QJsonArray storedTasks(const QList<QJsonObject> &tasks);
