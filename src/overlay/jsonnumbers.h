// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonValue>

#include <optional>

/// A number of a document as an `int`: cut toward zero, and saturated where it does not fit. Nothing for
/// what is no number.
[[nodiscard]] std::optional<int> wholeNumber(const QJsonValue &value);

/// The same, and also a text that holds a whole number in decimal, or in the bases that C marks by a prefix.
[[nodiscard]] std::optional<int> wholeNumberOrText(const QJsonValue &value);

/// A finite number of a document; 0 for all else.
[[nodiscard]] double finiteNumber(const QJsonValue &value);
