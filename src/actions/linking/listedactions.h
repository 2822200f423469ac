// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QStringList>

/// The trimmed names of a catalogue's objects, in their order. Of names that differ only by case the first
/// one stands for all; blank ones are left out.
[[nodiscard]] QStringList listedActions(const QJsonArray &catalogue);
