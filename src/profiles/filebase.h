// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// A base for the name of a file that is made from a profile's name: ASCII letters, digits, "_", "-" and
/// blanks, at most 64 characters, never empty and never a path.
[[nodiscard]] QString sanitizedFileBase(const QString &name);
