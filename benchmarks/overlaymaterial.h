// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

/// What a host offers: `count` functions, each with a number, a switch and a task.
[[nodiscard]] QJsonArray catalogueOf(int count);

/// An overlay document of `count` pastilles in rows, each with a title of its own.
[[nodiscard]] QJsonObject overlayDocumentOf(int count);

/// A mapping that binds `nodes` pastilles of such a document, each to one of the catalogue's `functions`.
[[nodiscard]] QJsonObject mappingOf(int nodes, int functions);

/// Lets all that waits for the event loop happen, deletions included.
void settle();
