// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Reads an input key, "joy_3" or "but_12", without regard to case and to blanks around it. False where it is
/// none, with `index` -1; `isJoy` then still says false for the prefix "but_" and true for all else.
[[nodiscard]] bool parseInputKey(const QString &text, bool *isJoy, int *index);

/// The key of an axis or of a button.
[[nodiscard]] QString inputKey(bool isJoy, int index);
