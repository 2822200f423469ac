// SPDX-License-Identifier: MIT
#pragma once

#include "editortraits.h"
#include "functiondef.h"

#include <QtCore/QJsonValue>

#include <optional>

/// The type that a catalogue's word stands for: "int", "double", "bool", "string", or the word itself,
/// trimmed and in lower case.
[[nodiscard]] QString normalizeType(const QString &word);

/// `text` with the escaped quotes of a "transform(" or "state(" expression made plain; other text as it is.
[[nodiscard]] QString normalizeExpression(const QString &text);

/// Whether `text` is for the host to evaluate: "arg_0" exactly, "transform(" first, or "state(" anywhere.
[[nodiscard]] bool isExpression(const QString &text);

/// What an empty field of the normalised `type` stands for when its catalogue entry says `value`.
[[nodiscard]] QString defaultValueText(const QJsonValue &value, const QString &type);

/// The value that `text` means under the normalised `type`: a string when it does not fit the type or does
/// not make a finite number.
[[nodiscard]] QJsonValue parseArgumentValue(const QString &text, const QString &type);

/// The text that a field shows for a stored `value`, empty for null, arrays and objects. Nothing for an
/// undefined value: the field stays as it is. Numbers beyond `int` saturate under "int".
[[nodiscard]] std::optional<QString> argumentText(const QJsonValue &value, const QString &type);

/// Whether a parameter of the normalised `type` can take the value of an axis (`inputKind` 0) or of a
/// button (1).
[[nodiscard]] bool takesInput(const QString &type, int inputKind);

/// The line that lists `function` in an editor's combo.
[[nodiscard]] QString signatureText(const FunctionDef &function, const EditorTraits &traits);
